#include "host/script/arrays.h"
#include "host/script/library.h"
#include "host/script/operators.h"
#include "host/script/script_error.h"

namespace refhost::script {
namespace {

using qmevents::ErrorNumber;
using qmevents::Value;
using qmevents::ValueKind;

// An object's plain value; the object itself when it has no default member.
Value plainOrObject(const Value& value)
{
    if (!value.isObject()) return value;
    try {
        return plainValue(value);
    } catch (const qmevents::Error& error) {
        // Asking what something is must not fail because it is an object.
        if (error.is(ErrorNumber::noSuchMember) || error.is(ErrorNumber::objectNotSet) ||
            error.is(ErrorNumber::wrongArgumentCount) ||
            error.is(ErrorNumber::argumentNotOptional)) {
            return value;
        }
        throw;
    }
}

template <typename Test>
Value answer(const Arguments& arguments, Test test)
{
    return static_cast<bool>(test(plainOrObject(arguments[0])));
}

Value variableType(const Arguments& arguments)
{
    constexpr std::int16_t array = 8192 + 12;
    constexpr std::int16_t types[] = {0, 1, 10, 11, 2, 3, 5, 6, 7, 8, 9, array};
    static_assert(std::size(types) == static_cast<std::size_t>(ValueKind::array) + 1);
    return types[static_cast<std::size_t>(plainOrObject(arguments[0]).kind())];
}

const qmevents::Array::Dimension& dimensionOf(const Arguments& arguments)
{
    const Value& value = arguments[0];
    if (!value.is(ValueKind::array)) {
        throw scriptError(ErrorNumber::typeMismatch, typeName(value) + " where an array is needed");
    }
    const std::int32_t number = arguments.whole(1, 1);
    const auto& dimensions = value.array()->dimensions;
    if (number < 1 || static_cast<std::size_t>(number) > dimensions.size()) {
        throw scriptError(ErrorNumber::subscriptOutOfRange);
    }
    return dimensions[static_cast<std::size_t>(number) - 1];
}

Value upperBound(const Arguments& arguments)
{
    const auto& dimension = dimensionOf(arguments);
    return dimension.lower + dimension.count - 1;
}

Value list(const Arguments& arguments)
{
    std::vector<Value> items;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        checkNesting(arguments[i]);
        items.push_back(arguments[i]);
    }
    return qmevents::Array::list(std::move(items));
}

using Takes = Builtin::Takes;
constexpr std::size_t anyNumber = 100000;
constexpr Builtin functions[] = {
    {"IsNull", 1, 1, Takes::objects,
     [](const Arguments& a) { return answer(a, [](const Value& v) { return v.isNull(); }); }},
    {"IsEmpty", 1, 1, Takes::objects,
     [](const Arguments& a) { return answer(a, [](const Value& v) { return v.isEmpty(); }); }},
    {"IsNumeric", 1, 1, Takes::objects,
     [](const Arguments& a) { return answer(a, qmevents::isNumeric); }},
    {"IsDate", 1, 1, Takes::objects,
     [](const Arguments& a) { return answer(a, qmevents::isDate); }},
    {"IsObject", 1, 1, Takes::objects, [](const Arguments& a) -> Value { return a[0].isObject(); }},
    {"IsArray", 1, 1, Takes::objects,
     [](const Arguments& a) -> Value { return a[0].is(ValueKind::array); }},
    {"TypeName", 1, 1, Takes::objects, [](const Arguments& a) -> Value { return typeName(a[0]); }},
    {"VarType", 1, 1, Takes::objects, variableType},
    {"UBound", 1, 2, Takes::values, upperBound},
    {"LBound", 1, 2, Takes::values,
     [](const Arguments& a) -> Value { return dimensionOf(a).lower; }},
    {"Array", 0, anyNumber, Takes::objects, list},
};

} // namespace

std::span<const Builtin> valueFunctions() { return functions; }

} // namespace refhost::script
