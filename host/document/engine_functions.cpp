#include <array>
#include <cmath>
#include <functional>
#include <span>

#include "automation/clock.h"
#include "automation/conversions.h"
#include "automation/text.h"
#include "host/document/convert.h"
#include "host/document/date_parts.h"
#include "host/document/engine.h"
#include "host/document/format_text.h"
#include "host/document/text_functions.h"

namespace refhost {
namespace {

using qmevents::Clock;
using qmevents::Date;

/// The arguments of a call; which types they have was settled when the statement was translated.
class Arguments {
public:
    Arguments(int count, sqlite3_value** values) : values_(values, static_cast<std::size_t>(count))
    {
    }
    std::size_t size() const { return values_.size(); }
    bool isNull(std::size_t i) const { return sqlite3_value_type(values_[i]) == SQLITE_NULL; }
    bool anyNull() const
    {
        for (std::size_t i = 0; i < size(); ++i) {
            if (isNull(i)) return true;
        }
        return false;
    }
    std::string_view text(std::size_t i) const
    {
        const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(values_[i]));
        return {text ? text : "", static_cast<std::size_t>(sqlite3_value_bytes(values_[i]))};
    }
    std::int64_t whole(std::size_t i) const { return sqlite3_value_int64(values_[i]); }
    double number(std::size_t i) const { return sqlite3_value_double(values_[i]); }
    bool isWhole(std::size_t i) const { return sqlite3_value_type(values_[i]) == SQLITE_INTEGER; }
    Date date(std::size_t i) const { return storedDate(text(i)); }
    HostValue value(std::size_t i) const
    {
        if (isNull(i)) return nullptr;
        if (isWhole(i)) return whole(i);
        if (sqlite3_value_type(values_[i]) == SQLITE_FLOAT) return number(i);
        return std::string(text(i));
    }

private:
    std::span<sqlite3_value*> values_;
};

[[noreturn]] void refuseValue(const std::string& reason)
{
    throw ConversionError(SqlErrorNumber::badValue, reason);
}

double divisor(const Arguments& args)
{
    const double value = args.number(1);
    if (value == 0) refuseValue("Division by zero");
    return value;
}

HostValue wholeDivision(std::int64_t dividend, std::int64_t by)
{
    if (by == 0) refuseValue("Division by zero");
    return by == -1 ? -dividend : dividend / by;
}

// host_round: halves away from zero; the kind of number stays.
HostValue rounded(const Arguments& args, double (*rule)(double))
{
    const std::int64_t places = args.size() > 1 ? args.whole(1) : 0;
    if (args.isWhole(0) && places >= 0) return args.whole(0);
    const double scale =
        std::pow(10.0, static_cast<double>(std::clamp<std::int64_t>(places, -15, 15)));
    // The decimal that was meant may lie a little below its binary form.
    const double scaled = std::abs(args.number(0) * scale) * (1 + 1e-15);
    const double result = std::copysign(rule(scaled) / scale, args.number(0));
    if (args.isWhole(0)) return static_cast<std::int64_t>(result);
    return result;
}

double halfToEven(double scaled)
{
    const double nearest = std::nearbyint(scaled);
    const double below = std::floor(scaled);
    // A tie up to the noise of the binary form.
    if (std::abs(scaled - below - 0.5) < 1e-9) {
        return std::fmod(below, 2.0) == 0 ? below : below + 1;
    }
    return nearest;
}

HostValue converted(const Arguments& args)
{
    SqlType to{.kind = static_cast<TypeKind>(args.whole(2))};
    to.length = static_cast<std::int32_t>(args.whole(3));
    const std::int64_t mode = args.whole(4);
    const Dialect dialect = mode >= 4 ? Dialect::jet : Dialect::sqlServer;
    return convert(args.value(0), static_cast<TypeKind>(args.whole(1)), to, dialect,
                   static_cast<Purpose>(mode % 4));
}

HostValue styledText(const Arguments& args)
{
    return *styledDate(args.date(0), static_cast<int>(args.whole(1)));
}

HostValue dateOfStyle(const Arguments& args)
{
    const auto date = readStyledDate(args.text(0), static_cast<int>(args.whole(1)));
    if (!date) refuseValue("'" + std::string(args.text(0)) + "' is no date of this style");
    return date->iso();
}

struct EngineFunction {
    const char* name = nullptr;
    int arguments = 0; ///< -1: any number.
    HostValue (*compute)(EngineContext&, const Arguments&) = nullptr;
    bool takesNull = false; ///< Otherwise a Null argument makes the result Null.
};

using Context = EngineContext&;
using Args = const Arguments&;

constexpr EngineFunction engineFunctions[] = {
    {"host_now", 0, [](Context, Args) -> HostValue { return Clock::now().iso(); }},
    {"host_today", 0, [](Context, Args) -> HostValue { return Clock::today().iso(); }},
    {"host_identity", 0,
     [](Context context, Args) -> HostValue {
         if (!context.identity) return nullptr;
         return *context.identity;
     }},
    {"host_datepart", 2,
     [](Context, Args args) -> HostValue { return partOf(args.date(1), args.text(0)); }},
    {"host_dateadd", 3,
     [](Context, Args args) -> HostValue {
         return addParts(args.date(2), args.text(0), args.whole(1)).iso();
     }},
    {"host_datediff", 3,
     [](Context context, Args args) -> HostValue {
         return countParts(args.date(1), args.date(2), args.text(0), context.dialect);
     }},
    {"host_dateserial", 3,
     [](Context, Args args) -> HostValue {
         const auto part = [&](std::size_t i) {
             return static_cast<int>(std::clamp<std::int64_t>(args.whole(i), -99999, 99999));
         };
         return Date::carried(part(0), part(1), part(2)).iso();
     }},
    {"host_dateplus", 2,
     [](Context, Args args) -> HostValue { return args.date(0).plusDays(args.number(1)).iso(); }},
    {"host_dateminus", 2,
     [](Context, Args args) -> HostValue { return args.date(0).serial() - args.date(1).serial(); }},
    {"host_isdate", 2,
     [](Context, Args args) -> HostValue {
         const Dialect dialect = args.whole(1) != 0 ? Dialect::jet : Dialect::sqlServer;
         return std::int64_t{!args.isNull(0) && readsAsDate(args.text(0), dialect)};
     },
     true},
    {"host_format_date", 2,
     [](Context, Args args) -> HostValue { return formatDate(args.date(0), args.text(1)); }},
    {"host_format_number", 2,
     [](Context, Args args) -> HostValue { return formatNumber(args.number(0), args.text(1)); }},
    {"host_styled", 2, [](Context, Args args) -> HostValue { return styledText(args); }},
    {"host_read_styled", 2, [](Context, Args args) -> HostValue { return dateOfStyle(args); }},
    {"host_convert", 5, [](Context, Args args) -> HostValue { return converted(args); }},
    {"host_required", 1,
     [](Context, Args args) -> HostValue {
         if (args.isNull(0)) refuseValue("Invalid use of Null");
         return args.value(0);
     },
     true},
    {"host_money", 1, [](Context, Args args) -> HostValue { return roundedMoney(args.number(0)); }},
    {"host_quotient", 2,
     [](Context, Args args) -> HostValue { return args.number(0) / divisor(args); }},
    {"host_divide", 2,
     [](Context, Args args) -> HostValue { return wholeDivision(args.whole(0), args.whole(1)); }},
    {"host_remainder", 2,
     [](Context, Args args) -> HostValue {
         const std::int64_t by = args.whole(1);
         if (by == 0) refuseValue("Division by zero");
         return by == -1 ? 0 : args.whole(0) % by;
     }},
    {"host_like", 3,
     [](Context, Args args) -> HostValue {
         return std::int64_t{matchesPattern(args.text(1), args.text(0), args.text(2).front())};
     }},
    {"host_right", 2,
     [](Context, Args args) -> HostValue { return rightPart(args.text(0), args.whole(1)); }},
    {"host_substring", -1,
     [](Context, Args args) -> HostValue {
         const std::int64_t length = args.size() > 2 ? args.whole(2) : INT32_MAX;
         if (length < 0) refuseValue("The length of a part of a text is negative");
         return middlePart(args.text(0), args.whole(1), length);
     }},
    {"host_upper", 1,
     [](Context, Args args) -> HostValue { return qmevents::text::upper(args.text(0)); }},
    {"host_lower", 1,
     [](Context, Args args) -> HostValue { return qmevents::text::lower(args.text(0)); }},
    {"host_replace", 3,
     [](Context, Args args) -> HostValue {
         return replaceText(args.text(0), args.text(1), args.text(2));
     }},
    {"host_charindex", -1,
     [](Context, Args args) -> HostValue {
         return positionOf(args.text(0), args.text(1), args.size() > 2 ? args.whole(2) : 1);
     }},
    {"host_round", 2,
     [](Context, Args args) -> HostValue {
         return rounded(args, [](double scaled) { return std::round(scaled); });
     }},
    {"host_round_even", -1,
     [](Context, Args args) -> HostValue { return rounded(args, halfToEven); }},
};

struct Bound {
    const EngineFunction* function;
    EngineContext* context;
};

// The embedded engine calls this for every function; exceptions stop here and become its errors.
void call(sqlite3_context* result, int count, sqlite3_value** values)
{
    const auto* bound = static_cast<const Bound*>(sqlite3_user_data(result));
    const Arguments arguments(count, values);
    if (!bound->function->takesNull && arguments.anyNull()) return sqlite3_result_null(result);
    try {
        const HostValue value = bound->function->compute(*bound->context, arguments);
        if (const auto* whole = std::get_if<std::int64_t>(&value)) {
            sqlite3_result_int64(result, *whole);
        } else if (const auto* number = std::get_if<double>(&value)) {
            sqlite3_result_double(result, *number);
        } else if (const auto* text = std::get_if<std::string>(&value)) {
            sqlite3_result_text64(result, text->data(), text->size(), SQLITE_TRANSIENT,
                                  SQLITE_UTF8);
        } else {
            sqlite3_result_null(result);
        }
    } catch (const ConversionError& error) {
        bound->context->failure = error.number;
        sqlite3_result_error(result, error.what(), -1);
    } catch (const std::exception& error) {
        bound->context->failure = SqlErrorNumber::overflow;
        sqlite3_result_error(result, error.what(), -1);
    }
}

// The value of a query that may give one row at most.
void addToSingle(sqlite3_context* result, int, sqlite3_value** values)
{
    auto** only = static_cast<sqlite3_value**>(
        sqlite3_aggregate_context(result, static_cast<int>(sizeof(sqlite3_value*))));
    if (!only) return sqlite3_result_error_nomem(result);
    if (*only)
        return sqlite3_result_error(result, "A query used as a value gives several rows", -1);
    *only = sqlite3_value_dup(values[0]);
}

void finishSingle(sqlite3_context* result)
{
    auto** only = static_cast<sqlite3_value**>(sqlite3_aggregate_context(result, 0));
    if (!only || !*only) return sqlite3_result_null(result);
    sqlite3_result_value(result, *only);
    sqlite3_value_free(*only);
}

} // namespace

void registerFunctions(sqlite3* connection, EngineContext& context)
{
    for (const EngineFunction& function : engineFunctions) {
        auto* bound = new Bound{&function, &context};
        sqlite3_create_function_v2(connection, function.name, function.arguments,
                                   SQLITE_UTF8 | SQLITE_INNOCUOUS, bound, call, nullptr, nullptr,
                                   [](void* data) { delete static_cast<Bound*>(data); });
    }
    sqlite3_create_function_v2(connection, "host_single", 1, SQLITE_UTF8 | SQLITE_INNOCUOUS,
                               nullptr, nullptr, addToSingle, finishSingle, nullptr);
}

} // namespace refhost
