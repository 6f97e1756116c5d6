#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "automation/date.h"

// Calendar arithmetic of DateAdd, DateDiff and DatePart.
namespace refhost::script {

enum class Interval : std::uint8_t {
    year,
    quarter,
    month,
    dayOfYear,
    day,
    weekday,
    week,
    hour,
    minute,
    second,
};

/// "yyyy", "q", "m", "y", "d", "w", "ww", "h", "n" or "s"; nothing for any other text.
std::optional<Interval> parseInterval(std::string_view text);

/// How weeks are counted: the weekday that begins one (1 is Sunday), and which week is a year's
/// first: 1 the one with January 1, 2 the first with four days of the year, 3 the first whole one.
struct WeekRule {
    int firstDay = 1;
    int firstWeek = 1;
};

/// 1 for the weekday `firstDay` to 7 for the one before it.
int weekday(qmevents::Date date, int firstDay);
std::string_view monthName(int month);     ///< 1 to 12.
std::string_view weekdayName(int weekday); ///< 1 for Sunday.

/// `date` so many intervals later; months end on their last day.
qmevents::Date added(Interval interval, long long count, qmevents::Date date);
/// How many borders of the interval lie between two dates; weekdays count whole weeks.
long long between(Interval interval, qmevents::Date from, qmevents::Date to, int firstDay);
std::int64_t part(Interval interval, qmevents::Date date, WeekRule rule);

} // namespace refhost::script
