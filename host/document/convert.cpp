#include "host/document/convert.h"

#include <charconv>
#include <cmath>

#include "automation/conversions.h"
#include "automation/currency.h"
#include "automation/locale.h"
#include "automation/text.h"
#include "host/document/format_text.h"

namespace refhost {
namespace {

using qmevents::Date;

// Day 0 of a number that stands for a date.
double firstDay(Dialect dialect) { return dialect == Dialect::sqlServer ? 2 : 0; }

[[noreturn]] void mismatch(std::string_view text, TypeKind to)
{
    constexpr std::size_t longest = 40;
    throw ConversionError(SqlErrorNumber::badValue, "'" + std::string(text.substr(0, longest)) +
                                                        "' is no " + std::string(kindName(to)));
}

[[noreturn]] void overflow(TypeKind to)
{
    throw ConversionError(SqlErrorNumber::overflow,
                          "the value is out of range for " + std::string(kindName(to)));
}

double numberOf(const HostValue& value, TypeKind from, TypeKind to, Dialect dialect)
{
    if (const auto* whole = std::get_if<std::int64_t>(&value)) return static_cast<double>(*whole);
    if (const auto* number = std::get_if<double>(&value)) return *number;
    const auto& text = std::get<std::string>(value);
    if (from == TypeKind::date) return storedDate(text).serial() - firstDay(dialect);
    const std::string_view trimmed = qmevents::text::trim(text);
    if (trimmed.empty() && dialect == Dialect::sqlServer) return 0;
    if (to == TypeKind::yesNo) {
        using qmevents::text::sameName;
        if (sameName(trimmed, "true")) return 1;
        if (sameName(trimmed, "false")) return 0;
    }
    const auto number = readNumber(trimmed);
    if (!number) mismatch(text, to);
    // SQL Server reads a whole number from digits only.
    const bool whole = to == TypeKind::int16 || to == TypeKind::int32;
    if (whole && dialect == Dialect::sqlServer &&
        trimmed.find_first_not_of("+-0123456789") != std::string_view::npos) {
        mismatch(text, to);
    }
    return *number;
}

std::int64_t toWhole(double number, TypeKind from, TypeKind to, Dialect dialect)
{
    // SQL Server cuts a floating number but rounds money; Jet rounds halves to even.
    double whole = std::nearbyint(number);
    if (dialect == Dialect::sqlServer) {
        whole = from == TypeKind::real ? std::trunc(number) : std::round(number);
    }
    const double limit = to == TypeKind::int16 ? 32768.0 : 2147483648.0;
    if (!(whole >= -limit && whole < limit)) overflow(to);
    return static_cast<std::int64_t>(whole);
}

std::string toText(const HostValue& value, TypeKind from, Dialect dialect)
{
    if (const auto* text = std::get_if<std::string>(&value)) {
        if (from != TypeKind::date) return *text;
        const Date date = storedDate(*text);
        if (dialect == Dialect::jet) return qmevents::Locale::current().text(date);
        return *styledDate(date, 0);
    }
    if (const auto* whole = std::get_if<std::int64_t>(&value)) return std::to_string(*whole);
    const double number = std::get<double>(value);
    if (from == TypeKind::currency && dialect == Dialect::sqlServer) {
        return formatNumber(number, "0.00");
    }
    return qmevents::numberText(number);
}

std::size_t utf16Length(std::string_view text)
{
    std::size_t units = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if ((byte & 0xC0) != 0x80) units += byte >= 0xF0 ? 2 : 1;
    }
    return units;
}

// Leaves `text` at most `length` units long.
std::string cutText(std::string_view text, std::size_t length)
{
    std::size_t units = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if ((byte & 0xC0) == 0x80) continue;
        units += byte >= 0xF0 ? 2 : 1;
        if (units > length) return std::string(text.substr(0, i));
    }
    return std::string(text);
}

std::string fitText(std::string text, const SqlType& to, Dialect dialect, Purpose purpose)
{
    const auto limit = static_cast<std::size_t>(to.length);
    if (limit == 0 || purpose == Purpose::compare || text.size() <= limit) return text;
    const std::size_t length = utf16Length(text);
    if (length <= limit) return text;
    std::string cut = cutText(text, limit);
    const bool onlyBlanks = text.find_first_not_of(' ', cut.size()) == std::string::npos;
    if (purpose == Purpose::cast || (onlyBlanks && dialect == Dialect::sqlServer)) return cut;
    throw ConversionError(SqlErrorNumber::overflow, "the text has " + std::to_string(length) +
                                                        " characters, at most " +
                                                        std::to_string(limit) + " fit");
}

std::string toDate(const HostValue& value, TypeKind from, Dialect dialect)
{
    try {
        const auto* text = std::get_if<std::string>(&value);
        if (text && from == TypeKind::date) return *text;
        if (text) return readDate(*text, dialect).iso();
        const double days = numberOf(value, from, TypeKind::date, dialect);
        return Date::fromSerial(days + firstDay(dialect)).iso();
    } catch (const qmevents::Error&) { // no day of the calendar
        overflow(TypeKind::date);
    }
}

int digitsAt(std::string_view text, std::size_t at, std::size_t count)
{
    int value = -1;
    if (at + count > text.size()) return value;
    const char* const end = text.data() + at + count;
    const auto read = std::from_chars(text.data() + at, end, value);
    return read.ec == std::errc{} && read.ptr == end ? value : -1;
}

} // namespace

HostValue convert(HostValue value, TypeKind from, const SqlType& to, Dialect dialect,
                  Purpose purpose)
{
    if (std::holds_alternative<std::nullptr_t>(value)) return value;
    switch (to.kind) {
    case TypeKind::unknown:
        return value;
    case TypeKind::yesNo: {
        const std::int64_t truth = dialect == Dialect::sqlServer ? 1 : -1;
        return numberOf(value, from, to.kind, dialect) != 0 ? truth : std::int64_t{0};
    }
    case TypeKind::int16:
    case TypeKind::int32:
        return toWhole(numberOf(value, from, to.kind, dialect), from, to.kind, dialect);
    case TypeKind::currency:
        return roundedMoney(numberOf(value, from, to.kind, dialect));
    case TypeKind::real:
        return numberOf(value, from, to.kind, dialect);
    case TypeKind::date:
        return toDate(value, from, dialect);
    case TypeKind::text:
        return fitText(toText(value, from, dialect), to, dialect, purpose);
    }
    return value;
}

std::string convertedSql(const std::string& sql, TypeKind from, const SqlType& to, Dialect dialect,
                         Purpose purpose)
{
    const int mode = static_cast<int>(purpose) + (dialect == Dialect::jet ? 4 : 0);
    return "host_convert(" + sql + "," + std::to_string(static_cast<int>(from)) + "," +
           std::to_string(static_cast<int>(to.kind)) + "," + std::to_string(to.length) + "," +
           std::to_string(mode) + ")";
}

std::optional<double> readNumber(std::string_view text)
{
    try {
        return qmevents::parseNumber(text);
    } catch (const qmevents::Error&) { // an overflow
        overflow(TypeKind::real);
    }
}

Date readDate(std::string_view text, Dialect dialect)
{
    if (dialect == Dialect::jet) {
        const auto date = qmevents::Locale::current().parseDate(text);
        if (!date) mismatch(text, TypeKind::date);
        return *date;
    }
    text = qmevents::text::trim(text);
    if (text.empty()) return Date::of(1900, 1, 1);
    std::string iso(text);
    if (digitsAt(text, 0, 8) >= 0 && (text.size() == 8 || text[8] == ' ')) {
        iso.assign(text.substr(0, 4)).append("-").append(text.substr(4, 2)).append("-");
        iso.append(text.substr(6));
    } else if (text.size() < 19 || text[10] != 'T') {
        if (readsAsDate(text, dialect)) {
            throw ConversionError(SqlErrorNumber::badValue,
                                  "what this date means depends on the server's language; write "
                                  "'yyyy-mm-ddThh:nn:ss' or 'yyyymmdd'");
        }
        mismatch(text, TypeKind::date);
    }
    const auto date = Date::parseIso(iso);
    if (!date) mismatch(text, TypeKind::date);
    constexpr int firstYear = 1753;
    if (date->civil().year < firstYear) overflow(TypeKind::date);
    return *date;
}

bool readsAsDate(std::string_view text, Dialect dialect)
{
    const std::string_view trimmed = qmevents::text::trim(text);
    if (qmevents::Locale::current().parseDate(trimmed)) return true;
    return dialect == Dialect::sqlServer && trimmed.size() == 8 && digitsAt(trimmed, 0, 8) >= 0 &&
           Date::isValidDay(digitsAt(trimmed, 0, 4), digitsAt(trimmed, 4, 2),
                            digitsAt(trimmed, 6, 2));
}

std::optional<Date> readJetDate(std::string_view content)
{
    content = qmevents::text::trim(content);
    if (const auto date = Date::parseIso(content)) return date;
    // Jet reads month/day/year between number signs wherever its user lives.
    static const qmevents::Locale american;
    if (content.find('/') == std::string_view::npos) return std::nullopt;
    return american.parseDate(content);
}

Date storedDate(std::string_view text)
{
    const auto date = Date::parseIso(text);
    if (!date) mismatch(text, TypeKind::date);
    return *date;
}

double roundedMoney(double amount)
{
    constexpr double limit = 922337203685477.0;
    if (!(std::abs(amount) < limit)) overflow(TypeKind::currency);
    return std::nearbyint(amount * 10000.0) / 10000.0;
}

} // namespace refhost
