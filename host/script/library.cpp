#include "host/script/library.h"

#include <unordered_map>

#include "automation/text.h"
#include "host/script/operators.h"
#include "host/script/script_error.h"

namespace refhost::script {
namespace {

using qmevents::ErrorNumber;
using qmevents::Value;

template <typename T>
using ByName =
    std::unordered_map<std::string_view, T, qmevents::text::NameHash, qmevents::text::NameEqual>;

ByName<const Builtin*> gatherBuiltins()
{
    ByName<const Builtin*> all;
    for (const auto& group : {textFunctions(), numberFunctions(), dateFunctions(), valueFunctions(),
                              formatFunctions()}) {
        for (const Builtin& builtin : group) all.emplace(builtin.name, &builtin);
    }
    return all;
}

ByName<Value> gatherConstants()
{
    ByName<Value> all{
        {"vbCr", "\r"},          {"vbLf", "\n"},
        {"vbCrLf", "\r\n"},      {"vbNewLine", "\r\n"},
        {"vbTab", "\t"},         {"vbNullChar", std::string(1, '\0')},
        {"vbNullString", ""},    {"vbFormFeed", "\f"},
        {"vbVerticalTab", "\v"}, {"vbObjectError", std::int32_t{-2147221504}},
    };
    constexpr struct {
        std::string_view name;
        std::int16_t value;
    } numbers[] = {
        // Buttons asked for, and pressed.
        {"vbOKOnly", 0},
        {"vbOKCancel", 1},
        {"vbAbortRetryIgnore", 2},
        {"vbYesNoCancel", 3},
        {"vbYesNo", 4},
        {"vbRetryCancel", 5},
        {"vbCritical", 16},
        {"vbQuestion", 32},
        {"vbExclamation", 48},
        {"vbInformation", 64},
        {"vbOK", 1},
        {"vbCancel", 2},
        {"vbAbort", 3},
        {"vbRetry", 4},
        {"vbIgnore", 5},
        {"vbYes", 6},
        {"vbNo", 7},
        // Comparison, calendar and date forms.
        {"vbBinaryCompare", 0},
        {"vbTextCompare", 1},
        {"vbUseSystem", 0},
        {"vbUseSystemDayOfWeek", 0},
        {"vbSunday", 1},
        {"vbMonday", 2},
        {"vbTuesday", 3},
        {"vbWednesday", 4},
        {"vbThursday", 5},
        {"vbFriday", 6},
        {"vbSaturday", 7},
        {"vbFirstJan1", 1},
        {"vbFirstFourDays", 2},
        {"vbFirstFullWeek", 3},
        {"vbGeneralDate", 0},
        {"vbLongDate", 1},
        {"vbShortDate", 2},
        {"vbLongTime", 3},
        {"vbShortTime", 4},
        // Yes, no and "as the user's settings say" in formats.
        {"vbTrue", -1},
        {"vbFalse", 0},
        {"vbUseDefault", -2},
        // Results of VarType.
        {"vbEmpty", 0},
        {"vbNull", 1},
        {"vbInteger", 2},
        {"vbLong", 3},
        {"vbDouble", 5},
        {"vbCurrency", 6},
        {"vbDate", 7},
        {"vbString", 8},
        {"vbObject", 9},
        {"vbError", 10},
        {"vbBoolean", 11},
        {"vbVariant", 12},
        {"vbArray", 8192},
    };
    for (const auto& [name, value] : numbers) all.emplace(name, value);
    return all;
}

} // namespace

std::size_t Arguments::count(std::size_t index, std::int32_t least) const
{
    const std::int32_t number = whole(index);
    if (number < least) throw scriptError(ErrorNumber::invalidCall);
    return static_cast<std::size_t>(number);
}

const Builtin* findBuiltin(std::string_view name)
{
    static const auto all = gatherBuiltins();
    const auto found = all.find(name);
    return found == all.end() ? nullptr : found->second;
}

const Value* findConstant(std::string_view name)
{
    static const auto all = gatherConstants();
    const auto found = all.find(name);
    return found == all.end() ? nullptr : &found->second;
}

Value callBuiltin(const Builtin& builtin, std::span<Value> arguments, LibraryState& state)
{
    if (arguments.size() < builtin.least || arguments.size() > builtin.most) {
        throw scriptError(ErrorNumber::wrongArgumentCount, builtin.name);
    }
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        Value& argument = arguments[i];
        if (builtin.takes == Builtin::Takes::objects) continue;
        if (argument.isMissing() && i < builtin.least) {
            throw scriptError(ErrorNumber::argumentNotOptional, builtin.name);
        }
        argument = plainValue(std::move(argument));
        if (argument.isNull() && builtin.takes == Builtin::Takes::nullable) return argument;
    }
    return asScript([&] { return builtin.function(Arguments(arguments, state)); });
}

} // namespace refhost::script
