#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "automation/value.h"

// The Automation conversions. Empty counts as zero, empty text and no object; null raises 94, a
// value that cannot be converted 13, one out of range 6. An object counts as its default member's
// value (438 when it has none, 91 for Nothing). Numbers in texts are plain: an optional sign,
// digits, a point, an exponent, blanks around; or "&H" and hexadecimal digits.
namespace qmevents {

std::string toText(const Value& value);
bool toBool(const Value& value);
std::int16_t toInt16(const Value& value);
std::int32_t toInt32(const Value& value); ///< Halves round to even.
double toDouble(const Value& value);
Currency toCurrency(const Value& value); ///< The fifth decimal rounds half to even.
Date toDate(const Value& value);         ///< Texts are read as `Locale::parseDate` does.
/// The object itself, Nothing for Empty; 424 for anything else.
Ref<Object> toObject(const Value& value);

/// A text as a number, or nothing when it is none.
std::optional<double> parseNumber(std::string_view text);
/// Shortest text with up to 15 significant digits, as scripts print it.
std::string numberText(double value);
/// Whether `value` is a date or a text that can be read as one.
bool isDate(const Value& value);
/// Whether `value` is a number, empty, or a text that can be read as one.
bool isNumeric(const Value& value);

/// `value` as a `T`: one of the types above.
template <typename T>
T convertTo(const Value& value);
template <>
std::string convertTo(const Value& value);
template <>
bool convertTo(const Value& value);
template <>
std::int16_t convertTo(const Value& value);
template <>
std::int32_t convertTo(const Value& value);
template <>
double convertTo(const Value& value);
template <>
Currency convertTo(const Value& value);
template <>
Date convertTo(const Value& value);
template <>
Value convertTo(const Value& value);

} // namespace qmevents
