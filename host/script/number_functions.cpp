#include <bit>
#include <cmath>

#include "automation/clock.h"
#include "host/script/library.h"
#include "host/script/operators.h"
#include "host/script/script_error.h"

namespace refhost::script {
namespace {

using qmevents::Currency;
using qmevents::Date;
using qmevents::ErrorNumber;
using qmevents::Value;
using qmevents::ValueKind;

bool isWhole(const Value& value)
{
    return value.is(ValueKind::int16) || value.is(ValueKind::int32);
}

Value zeroOrWhole(const Value& value)
{
    if (value.isEmpty()) return std::int16_t{0};
    return value.is(ValueKind::boolean) ? Value(qmevents::toInt16(value)) : value;
}

Value absolute(const Arguments& arguments)
{
    const Value value = zeroOrWhole(arguments[0]);
    return qmevents::toDouble(value) < 0 ? applyUnary(Operator::negate, value)
           : value.isText()              ? Value(qmevents::toDouble(value))
                                         : value;
}

// Int and Fix: a whole number of the same kind.
Value cut(const Arguments& arguments, double (*round)(double))
{
    const Value value = zeroOrWhole(arguments[0]);
    if (isWhole(value)) return value;
    if (value.is(ValueKind::currency)) {
        // Exact, as a double holds fewer digits.
        constexpr std::int64_t unit = 10000;
        const std::int64_t scaled = value.as<Currency>().scaled();
        const bool below = scaled % unit != 0 && scaled < 0 && round(-0.5) < 0;
        return Currency::fromUnits(scaled / unit - (below ? 1 : 0));
    }
    const double number = round(qmevents::toDouble(value));
    return value.is(ValueKind::date) ? Value(Date::fromSerial(number)) : Value(number);
}

Value sign(const Arguments& arguments)
{
    const double number = arguments.number(0);
    return static_cast<std::int16_t>(number < 0 ? -1 : number > 0 ? 1 : 0);
}

// Halves round to even.
Value rounded(const Arguments& arguments)
{
    const Value value = zeroOrWhole(arguments[0]);
    const std::size_t places = arguments.given(1) ? arguments.count(1) : 0;
    if (places > 22) throw scriptError(ErrorNumber::invalidCall);
    if (isWhole(value)) return value;
    if (value.is(ValueKind::currency)) {
        std::int64_t unit = 1;
        for (std::size_t i = places; i < 4; ++i) unit *= 10;
        const std::int64_t scaled = value.as<Currency>().scaled();
        const std::int64_t rest = scaled % unit;
        const std::int64_t whole = scaled / unit;
        const bool away = std::abs(rest) * 2 > unit || (std::abs(rest) * 2 == unit && whole % 2);
        const std::int64_t step = away ? (scaled < 0 ? -1 : 1) : 0;
        return Currency::fromScaled(whole * unit) + Currency::fromScaled(step * unit);
    }
    const double scale = std::pow(10.0, static_cast<double>(places));
    const double number = qmevents::toDouble(value);
    const double scaled = std::nearbyint(number * scale) / scale;
    return std::isfinite(scaled) ? scaled : number;
}

Value squareRoot(const Arguments& arguments)
{
    const double number = arguments.number(0);
    if (number < 0) throw scriptError(ErrorNumber::invalidCall);
    return std::sqrt(number);
}

constexpr std::uint32_t randomBits = 0xFFFFFF;

std::uint32_t seedFrom(double number)
{
    const auto bits = std::bit_cast<std::uint64_t>(number);
    return static_cast<std::uint32_t>((bits >> 32U) ^ bits) & randomBits;
}

// Rnd([n]): below 0 always the number that belongs to n, 0 the last one again, else the next one.
Value random(const Arguments& arguments)
{
    LibraryState& state = arguments.state();
    const double wish = arguments.given(0) ? arguments.number(0) : 1;
    if (wish == 0) return state.lastRandom;
    if (wish < 0) { state.random = seedFrom(wish); }
    state.random = (state.random * 1140671485U + 12820163U) & randomBits;
    return state.lastRandom = state.random / (randomBits + 1.0);
}

Value randomize(const Arguments& arguments)
{
    const double seed = arguments.given(0) ? arguments.number(0) : qmevents::Clock::now().serial();
    arguments.state().random = seedFrom(seed);
    return {};
}

template <typename T>
Value converted(const Arguments& arguments)
{
    return qmevents::convertTo<T>(arguments[0]);
}

using Takes = Builtin::Takes;
constexpr Builtin functions[] = {
    {"Abs", 1, 1, Takes::nullable, absolute},
    {"Int", 1, 1, Takes::nullable, [](const Arguments& a) { return cut(a, std::floor); }},
    {"Fix", 1, 1, Takes::nullable, [](const Arguments& a) { return cut(a, std::trunc); }},
    {"Sgn", 1, 1, Takes::values, sign},
    {"Round", 1, 2, Takes::nullable, rounded},
    {"Sqr", 1, 1, Takes::values, squareRoot},
    {"Rnd", 0, 1, Takes::values, random},
    {"Randomize", 0, 1, Takes::values, randomize},
    {"CStr", 1, 1, Takes::values, converted<std::string>},
    {"CInt", 1, 1, Takes::values, converted<std::int16_t>},
    {"CLng", 1, 1, Takes::values, converted<std::int32_t>},
    {"CDbl", 1, 1, Takes::values, converted<double>},
    {"CCur", 1, 1, Takes::values, converted<Currency>},
    {"CDate", 1, 1, Takes::values, converted<Date>},
    {"CBool", 1, 1, Takes::values, converted<bool>},
};

} // namespace

std::span<const Builtin> numberFunctions() { return functions; }

} // namespace refhost::script
