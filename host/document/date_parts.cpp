#include "host/document/date_parts.h"

#include <algorithm>
#include <cmath>

namespace refhost {
namespace {

using qmevents::Date;

std::int64_t dayNumber(Date date) { return std::llround(date.datePart().serial()); }

std::int64_t secondNumber(Date date)
{
    const auto civil = date.civil();
    return dayNumber(date) * 86400 + civil.hour * 3600L + civil.minute * 60L + civil.second;
}

std::int64_t floorDivide(std::int64_t a, std::int64_t b) { return a / b - (a % b < 0 ? 1 : 0); }

// A number that grows by one from part to part.
std::int64_t ordinal(Date date, std::string_view code)
{
    const auto civil = date.civil();
    if (code == "yyyy") return civil.year;
    if (code == "q") return civil.year * 4LL + (civil.month - 1) / 3;
    if (code == "m") return civil.year * 12LL + civil.month;
    if (code == "h") return floorDivide(secondNumber(date), 3600);
    if (code == "n") return floorDivide(secondNumber(date), 60);
    if (code == "s") return secondNumber(date);
    // Calendar weeks begin on Sunday.
    if (code == "ww") return floorDivide(dayNumber(date) - date.weekday() + 1, 7);
    return dayNumber(date);
}

} // namespace

std::int64_t partOf(Date date, std::string_view code)
{
    const auto civil = date.civil();
    if (code == "yyyy") return civil.year;
    if (code == "q") return (civil.month - 1) / 3 + 1;
    if (code == "m") return civil.month;
    if (code == "d") return civil.day;
    if (code == "w") return date.weekday();
    if (code == "h") return civil.hour;
    if (code == "n") return civil.minute;
    if (code == "s") return civil.second;
    const Date newYear = Date::of(civil.year, 1, 1);
    const std::int64_t dayOfYear = dayNumber(date) - dayNumber(newYear);
    if (code == "y") return dayOfYear + 1;
    return (dayOfYear + newYear.weekday() - 1) / 7 + 1; // "ww"
}

Date addParts(Date date, std::string_view code, std::int64_t count)
{
    constexpr std::int64_t most = 400'000'000'000; // seconds; more leaves the calendar anyway
    count = std::clamp(count, -most, most);
    const auto months = [&](std::int64_t each) {
        return date.plusMonths(
            static_cast<int>(std::clamp<std::int64_t>(count * each, -200000, 200000)));
    };
    if (code == "yyyy") return months(12);
    if (code == "q") return months(3);
    if (code == "m") return months(1);
    if (code == "h") return date.plusSeconds(count * 3600);
    if (code == "n") return date.plusSeconds(count * 60);
    if (code == "s") return date.plusSeconds(count);
    const std::int64_t days = code == "ww" ? count * 7 : count;
    return date.plusDays(static_cast<double>(days));
}

std::int64_t countParts(Date from, Date to, std::string_view code, Dialect dialect)
{
    const std::int64_t count = ordinal(to, code) - ordinal(from, code);
    // Jet's "w" counts whole weeks; the other engine counts days there.
    return code == "w" && dialect == Dialect::jet ? count / 7 : count;
}

} // namespace refhost
