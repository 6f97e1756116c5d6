#include "host/script/calendar.h"

#include <array>
#include <cmath>
#include <limits>
#include <utility>

#include "automation/error.h"
#include "automation/text.h"

namespace refhost::script {
namespace {

using qmevents::Date;

constexpr std::array<std::string_view, 12> monthNames{
    "January", "February", "March",     "April",   "May",      "June",
    "July",    "August",   "September", "October", "November", "December"};
constexpr std::array<std::string_view, 7> weekdayNames{"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                       "Thursday", "Friday", "Saturday"};

long long dayNumber(Date date) { return std::llround(date.datePart().serial()); }

long long secondNumber(Date date)
{
    const auto civil = date.civil();
    return dayNumber(date) * 86400 + civil.hour * 3600LL + civil.minute * 60LL + civil.second;
}

long long floorDivide(long long dividend, long long divisor)
{
    return dividend / divisor - (dividend % divisor < 0 ? 1 : 0);
}

// The day on which the first week of `year` begins.
long long firstWeekOf(int year, WeekRule rule)
{
    const Date january = Date::of(year, 1, 1);
    const int offset = weekday(january, rule.firstDay) - 1; // days of the week in the year before
    const bool counts = rule.firstWeek == 1 || offset == 0 || (rule.firstWeek == 2 && offset <= 3);
    return dayNumber(january) - offset + (counts ? 0 : 7);
}

std::int64_t weekOfYear(Date date, WeekRule rule)
{
    const int year = date.civil().year;
    const long long day = dayNumber(date);
    // The last days of a year may belong to the next one's first week when that has its own rule.
    if (rule.firstWeek != 1 && year < 9999 && day >= firstWeekOf(year + 1, rule)) return 1;
    long long start = firstWeekOf(year, rule);
    if (day < start && year > 100) start = firstWeekOf(year - 1, rule);
    return floorDivide(day - start, 7) + 1;
}

int monthsFor(Interval interval)
{
    return interval == Interval::year ? 12 : interval == Interval::quarter ? 3 : 1;
}

} // namespace

std::optional<Interval> parseInterval(std::string_view text)
{
    constexpr std::array<std::pair<std::string_view, Interval>, 10> names{{
        {"yyyy", Interval::year},
        {"q", Interval::quarter},
        {"m", Interval::month},
        {"y", Interval::dayOfYear},
        {"d", Interval::day},
        {"w", Interval::weekday},
        {"ww", Interval::week},
        {"h", Interval::hour},
        {"n", Interval::minute},
        {"s", Interval::second},
    }};
    for (const auto& [name, interval] : names) {
        if (qmevents::text::sameName(name, text)) return interval;
    }
    return std::nullopt;
}

int weekday(Date date, int firstDay) { return (date.weekday() - firstDay + 7) % 7 + 1; }
std::string_view monthName(int month) { return monthNames.at(static_cast<std::size_t>(month) - 1); }
std::string_view weekdayName(int weekday)
{
    return weekdayNames.at(static_cast<std::size_t>(weekday) - 1);
}

Date added(Interval interval, long long count, Date date)
{
    switch (interval) {
    case Interval::year:
    case Interval::quarter:
    case Interval::month: {
        const long long months = count * monthsFor(interval);
        // More months than there are between the first and the last date.
        if (std::abs(months) > 12LL * 10000) {
            throw qmevents::Error(qmevents::ErrorNumber::overflow);
        }
        return date.plusMonths(static_cast<int>(months));
    }
    case Interval::dayOfYear:
    case Interval::day:
    case Interval::weekday:
        return date.plusDays(static_cast<double>(count));
    case Interval::week:
        return date.plusDays(static_cast<double>(count) * 7);
    case Interval::hour:
        return date.plusSeconds(count * 3600);
    case Interval::minute:
        return date.plusSeconds(count * 60);
    case Interval::second:
        break;
    }
    return date.plusSeconds(count);
}

long long between(Interval interval, Date from, Date to, int firstDay)
{
    const auto first = from.civil();
    const auto last = to.civil();
    switch (interval) {
    case Interval::year:
        return last.year - first.year;
    case Interval::quarter:
        return (last.year - first.year) * 4 + (last.month - 1) / 3 - (first.month - 1) / 3;
    case Interval::month:
        return (last.year - first.year) * 12 + last.month - first.month;
    case Interval::dayOfYear:
    case Interval::day:
        return dayNumber(to) - dayNumber(from);
    case Interval::weekday:
        return (dayNumber(to) - dayNumber(from)) / 7;
    case Interval::week:
        return (dayNumber(to) - weekday(to, firstDay) - dayNumber(from) + weekday(from, firstDay)) /
               7;
    case Interval::hour:
        return floorDivide(secondNumber(to), 3600) - floorDivide(secondNumber(from), 3600);
    case Interval::minute:
        return floorDivide(secondNumber(to), 60) - floorDivide(secondNumber(from), 60);
    case Interval::second:
        break;
    }
    return secondNumber(to) - secondNumber(from);
}

std::int64_t part(Interval interval, Date date, WeekRule rule)
{
    const auto civil = date.civil();
    switch (interval) {
    case Interval::year:
        return civil.year;
    case Interval::quarter:
        return (civil.month - 1) / 3 + 1;
    case Interval::month:
        return civil.month;
    case Interval::dayOfYear:
        return dayNumber(date) - dayNumber(Date::of(civil.year, 1, 1)) + 1;
    case Interval::day:
        return civil.day;
    case Interval::weekday:
        return weekday(date, rule.firstDay);
    case Interval::week:
        return weekOfYear(date, rule);
    case Interval::hour:
        return civil.hour;
    case Interval::minute:
        return civil.minute;
    case Interval::second:
        break;
    }
    return civil.second;
}

} // namespace refhost::script
