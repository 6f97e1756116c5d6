#include "host/document/objects/sql_literal.h"

#include <charconv>
#include <cmath>

#include "automation/conversions.h"
#include "automation/error.h"
#include "automation/text.h"

namespace refhost {
namespace {

using qmevents::Currency;
using qmevents::Error;
using qmevents::ErrorNumber;
using qmevents::Value;
using qmevents::ValueKind;

constexpr const char* nullLiteral = "NULL";

bool isBlankText(const Value& value)
{
    return value.isText() && qmevents::text::trim(value.text()).empty();
}

std::string dateLiteral(Dialect dialect, const Value& value)
{
    if (value.isEmpty() || isBlankText(value)) return nullLiteral;
    const qmevents::Date date = qmevents::toDate(value);
    if (!date.hasDate() && !date.hasTime()) return nullLiteral;
    std::string text = date.iso();
    if (dialect == Dialect::jet) return "#" + text + "#";
    text[text.find(' ')] = 'T';
    return "'" + text + "'";
}

// The shortest digits that stand for exactly this number.
std::string digitsOf(double number)
{
    if (!std::isfinite(number)) throw Error(ErrorNumber::overflow);
    char buffer[40];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, number).ptr;
    std::string digits(buffer, end);
    for (char& c : digits) {
        if (c == 'e') c = 'E';
    }
    return digits == "-0" ? "0" : digits;
}

std::string numberLiteral(const Value& value)
{
    switch (value.kind()) {
    case ValueKind::empty:
        return "0";
    case ValueKind::boolean: // the engine's own number for "yes", not the -1 of Automation
        return value.as<bool>() ? "1" : "0";
    case ValueKind::int16:
    case ValueKind::int32:
        return std::to_string(qmevents::toInt32(value));
    case ValueKind::currency:
        return value.as<Currency>().toString();
    case ValueKind::text:
        return isBlankText(value) ? "0" : digitsOf(qmevents::toDouble(value));
    default:
        return digitsOf(qmevents::toDouble(value));
    }
}

std::string textLiteral(Dialect dialect, const Value& value)
{
    const std::string text = qmevents::toText(value);
    if (text.find('\0') != std::string::npos) {
        throw Error::with(ErrorNumber::invalidCall, "a text with a NUL character cannot be stored");
    }
    return (dialect == Dialect::sqlServer ? "N'" : "'") +
           qmevents::text::replaceAll(text, "'", "''") + "'";
}

std::string yesNoLiteral(Dialect dialect, const Value& value)
{
    const bool yes = qmevents::toBool(value);
    if (dialect == Dialect::sqlServer) return yes ? "1" : "0";
    return yes ? "True" : "False";
}

} // namespace

std::string sqlLiteral(Dialect dialect, const Value& value, LiteralKind kind)
{
    const bool isNull = value.isNull() || value.isMissing();
    switch (kind) {
    case LiteralKind::date:
        return isNull ? nullLiteral : dateLiteral(dialect, value);
    case LiteralKind::key:
    case LiteralKind::number:
        return isNull ? nullLiteral : numberLiteral(value);
    case LiteralKind::text:
    case LiteralKind::listName:
        return isNull ? nullLiteral : textLiteral(dialect, value);
    case LiteralKind::yesNo:
        return isNull ? nullLiteral : yesNoLiteral(dialect, value);
    }
    throw Error::with(ErrorNumber::invalidCall,
                      "no literal has the kind " + std::to_string(static_cast<int>(kind)));
}

std::string likeText(std::string_view text)
{
    // The engines read these characters as wildcards unless they stand in brackets.
    std::string pattern;
    for (const char c : text) {
        const bool isWildcard = c == '%' || c == '_' || c == '[';
        pattern += isWildcard ? std::string{'[', c, ']'} : std::string(1, c);
    }
    return pattern;
}

} // namespace refhost
