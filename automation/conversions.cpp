#include "automation/conversions.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

#include "automation/error.h"
#include "automation/locale.h"
#include "automation/object.h"
#include "automation/text.h"

namespace qmevents {
namespace {

[[noreturn]] void mismatch(const Value& value, std::string_view wanted)
{
    if (value.isNull()) throw Error(ErrorNumber::invalidNull);
    throw Error::with(ErrorNumber::typeMismatch,
                      typeName(value) + " where " + std::string(wanted) + " is needed");
}

// An object stands for the value of its default member.
Value defaultValue(const Ref<Object>& object)
{
    if (!object) throw Error(ErrorNumber::objectNotSet);
    Value value = object->invoke(defaultMember, CallKind::get, {});
    if (value.isObject()) throw Error::with(ErrorNumber::noSuchMember, object->className());
    return value;
}

template <typename Integer>
Integer toInteger(double number)
{
    const double rounded = std::nearbyint(number);
    if (!(rounded >= static_cast<double>(std::numeric_limits<Integer>::min()) &&
          rounded <= static_cast<double>(std::numeric_limits<Integer>::max()))) {
        throw Error(ErrorNumber::overflow);
    }
    return static_cast<Integer>(rounded);
}

std::optional<double> parseHexadecimal(std::string_view digits)
{
    if (digits.empty() || digits.size() > 8) return std::nullopt;
    std::uint32_t value = 0;
    for (const char c : digits) {
        const char lower = text::lowerAscii({&c, 1})[0];
        const bool isDigit = lower >= '0' && lower <= '9';
        if (!isDigit && !(lower >= 'a' && lower <= 'f')) return std::nullopt;
        value = value * 16 + static_cast<std::uint32_t>(isDigit ? lower - '0' : lower - 'a' + 10);
    }
    // As a 16-bit number when it fits in four digits, else as a 32-bit one.
    return digits.size() <= 4 ? static_cast<double>(static_cast<std::int16_t>(value))
                              : static_cast<double>(static_cast<std::int32_t>(value));
}

} // namespace

std::optional<double> parseNumber(std::string_view text)
{
    text = text::trim(text);
    if (text.size() > 2 && text[0] == '&' && (text[1] == 'H' || text[1] == 'h')) {
        return parseHexadecimal(text.substr(2));
    }
    if (!text.empty() && text[0] == '+') text.remove_prefix(1);
    // Only digits may come first: from_chars would read "inf" and "nan" as well.
    const std::size_t first = text.empty() || text[0] != '-' ? 0 : 1;
    if (first >= text.size() ||
        !((text[first] >= '0' && text[first] <= '9') || text[first] == '.')) {
        return std::nullopt;
    }
    double value = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (end != text.data() + text.size()) return std::nullopt;
    if (failure == std::errc::result_out_of_range) throw Error(ErrorNumber::overflow);
    if (failure != std::errc()) return std::nullopt;
    return value;
}

std::string numberText(double value)
{
    if (std::isnan(value)) return "NaN";
    if (std::isinf(value)) return value < 0 ? "-Infinity" : "Infinity";
    char buffer[40];
    const auto end =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 15).ptr;
    std::string text(buffer, end);
    for (char& c : text) {
        if (c == 'e') c = 'E';
    }
    return text == "-0" ? "0" : text;
}

std::string toText(const Value& value)
{
    switch (value.kind()) {
    case ValueKind::empty:
        return {};
    case ValueKind::boolean:
        return value.as<bool>() ? "True" : "False";
    case ValueKind::int16:
        return std::to_string(value.as<std::int16_t>());
    case ValueKind::int32:
        return std::to_string(value.as<std::int32_t>());
    case ValueKind::real:
        return numberText(value.as<double>());
    case ValueKind::currency:
        return value.as<Currency>().toString();
    case ValueKind::date:
        return Locale::current().text(value.as<Date>());
    case ValueKind::text:
        return value.text();
    case ValueKind::object:
        return toText(defaultValue(value.object()));
    case ValueKind::null:
    case ValueKind::missing:
    case ValueKind::array:
        break;
    }
    mismatch(value, "a text");
}

double toDouble(const Value& value)
{
    switch (value.kind()) {
    case ValueKind::empty:
        return 0;
    case ValueKind::boolean:
        return value.as<bool>() ? -1 : 0;
    case ValueKind::int16:
        return value.as<std::int16_t>();
    case ValueKind::int32:
        return value.as<std::int32_t>();
    case ValueKind::real:
        return value.as<double>();
    case ValueKind::currency:
        return value.as<Currency>().toDouble();
    case ValueKind::date:
        return value.as<Date>().serial();
    case ValueKind::text:
        if (const auto number = parseNumber(value.text())) return *number;
        break;
    case ValueKind::object:
        return toDouble(defaultValue(value.object()));
    case ValueKind::null:
    case ValueKind::missing:
    case ValueKind::array:
        break;
    }
    mismatch(value, "a number");
}

bool toBool(const Value& value)
{
    if (value.is(ValueKind::boolean)) return value.as<bool>();
    if (value.isText()) {
        if (text::sameName(value.text(), "True")) return true;
        if (text::sameName(value.text(), "False")) return false;
    }
    if (value.isObject()) return toBool(defaultValue(value.object()));
    return toDouble(value) != 0;
}

std::int16_t toInt16(const Value& value) { return toInteger<std::int16_t>(toDouble(value)); }

std::int32_t toInt32(const Value& value)
{
    if (value.is(ValueKind::int32)) return value.as<std::int32_t>();
    return toInteger<std::int32_t>(toDouble(value));
}

Currency toCurrency(const Value& value)
{
    if (value.is(ValueKind::currency)) return value.as<Currency>();
    Currency amount;
    if (value.isText() && Currency::parse(text::trim(value.text()), amount)) return amount;
    return Currency::fromDouble(toDouble(value));
}

Date toDate(const Value& value)
{
    if (value.is(ValueKind::date)) return value.as<Date>();
    if (value.isObject()) return toDate(defaultValue(value.object()));
    if (value.isText()) {
        if (const auto date = Locale::current().parseDate(value.text())) return *date;
        if (const auto number = parseNumber(value.text())) return Date::fromSerial(*number);
        mismatch(value, "a date");
    }
    return Date::fromSerial(toDouble(value));
}

Ref<Object> toObject(const Value& value)
{
    if (value.isObject()) return value.object();
    if (value.isEmpty()) return {};
    throw Error::with(ErrorNumber::objectRequired, typeName(value));
}

bool isDate(const Value& value)
{
    return value.is(ValueKind::date) ||
           (value.isText() && Locale::current().parseDate(value.text()).has_value());
}

bool isNumeric(const Value& value)
{
    return value.isNumber() || value.isEmpty() ||
           (value.isText() && parseNumber(value.text()).has_value());
}

template <>
std::string convertTo(const Value& value)
{
    return toText(value);
}
template <>
bool convertTo(const Value& value)
{
    return toBool(value);
}
template <>
std::int16_t convertTo(const Value& value)
{
    return toInt16(value);
}
template <>
std::int32_t convertTo(const Value& value)
{
    return toInt32(value);
}
template <>
double convertTo(const Value& value)
{
    return toDouble(value);
}
template <>
Currency convertTo(const Value& value)
{
    return toCurrency(value);
}
template <>
Date convertTo(const Value& value)
{
    return toDate(value);
}
template <>
Value convertTo(const Value& value)
{
    return value;
}

} // namespace qmevents
