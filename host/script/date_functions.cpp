#include <array>
#include <cmath>

#include "automation/clock.h"
#include "automation/locale.h"
#include "automation/text.h"
#include "host/script/calendar.h"
#include "host/script/library.h"
#include "host/script/script_error.h"

namespace refhost::script {
namespace {

using qmevents::CivilTime;
using qmevents::Clock;
using qmevents::Date;
using qmevents::ErrorNumber;
using qmevents::Value;

Value small(std::int64_t number) { return static_cast<std::int16_t>(number); }

template <int CivilTime::*field>
Value partOf(const Arguments& arguments)
{
    return small(qmevents::toDate(arguments[0]).civil().*field);
}

int firstDay(const Arguments& arguments, std::size_t index)
{
    const std::int32_t day = arguments.whole(index, 1);
    if (day < 0 || day > 7) throw scriptError(ErrorNumber::invalidCall);
    return day == 0 ? 1 : day;
}

Value weekdayOf(const Arguments& arguments)
{
    return small(weekday(qmevents::toDate(arguments[0]), firstDay(arguments, 1)));
}

std::string shortened(std::string_view name, bool abbreviate)
{
    return std::string(abbreviate ? name.substr(0, 3) : name);
}

Value monthNameOf(const Arguments& arguments)
{
    const std::size_t month = arguments.count(0, 1);
    if (month > 12) throw scriptError(ErrorNumber::invalidCall);
    return shortened(monthName(static_cast<int>(month)), arguments.flag(1, false));
}

Value weekdayNameOf(const Arguments& arguments)
{
    const std::size_t day = arguments.count(0, 1);
    if (day > 7) throw scriptError(ErrorNumber::invalidCall);
    const int fromSunday = (static_cast<int>(day) + firstDay(arguments, 2) - 2) % 7 + 1;
    return shortened(weekdayName(fromSunday), arguments.flag(1, false));
}

Value dateSerial(const Arguments& arguments)
{
    int year = arguments.whole(0);
    if (year >= 0 && year < 100) year += year < 30 ? 2000 : 1900;
    const std::int32_t day = arguments.whole(2);
    // More days than there are dates.
    if (std::abs(std::int64_t{day}) > 4'000'000) throw scriptError(ErrorNumber::overflow);
    return Date::carried(year, arguments.whole(1), day);
}

Value timeSerial(const Arguments& arguments)
{
    return Date().plusSeconds(arguments.whole(0) * 3600LL + arguments.whole(1) * 60LL +
                              arguments.whole(2));
}

Interval intervalOf(const Arguments& arguments)
{
    const auto interval = parseInterval(arguments.text(0));
    if (!interval) throw scriptError(ErrorNumber::invalidCall, arguments.text(0));
    return *interval;
}

Value dateAdd(const Arguments& arguments)
{
    // Parts of a whole step do not count.
    const double steps = std::trunc(arguments.number(1));
    if (!(std::abs(steps) < 1e12)) throw scriptError(ErrorNumber::overflow);
    return added(intervalOf(arguments), static_cast<long long>(steps),
                 qmevents::toDate(arguments[2]));
}

WeekRule weekRule(const Arguments& arguments, std::size_t index)
{
    const std::int32_t firstWeek = arguments.whole(index + 1, 1);
    if (firstWeek < 0 || firstWeek > 3) throw scriptError(ErrorNumber::invalidCall);
    return {firstDay(arguments, index), firstWeek == 0 ? 1 : firstWeek};
}

Value dateDiff(const Arguments& arguments)
{
    const long long difference = between(intervalOf(arguments), qmevents::toDate(arguments[1]),
                                         qmevents::toDate(arguments[2]), firstDay(arguments, 3));
    return qmevents::toInt32(static_cast<double>(difference));
}

Value datePart(const Arguments& arguments)
{
    return small(
        part(intervalOf(arguments), qmevents::toDate(arguments[1]), weekRule(arguments, 2)));
}

Date dateFromText(const Arguments& arguments) { return qmevents::toDate(arguments[0]); }

Value timer(const Arguments&)
{
    const CivilTime now = Clock::now().civil();
    return static_cast<double>(now.hour * 3600 + now.minute * 60 + now.second);
}

using Takes = Builtin::Takes;
constexpr Builtin functions[] = {
    {"Date", 0, 0, Takes::values, [](const Arguments&) -> Value { return Clock::today(); }},
    {"Time", 0, 0, Takes::values,
     [](const Arguments&) -> Value { return Clock::now().timePart(); }},
    {"Now", 0, 0, Takes::values, [](const Arguments&) -> Value { return Clock::now(); }},
    {"Timer", 0, 0, Takes::values, timer},
    {"Year", 1, 1, Takes::nullable, partOf<&CivilTime::year>},
    {"Month", 1, 1, Takes::nullable, partOf<&CivilTime::month>},
    {"Day", 1, 1, Takes::nullable, partOf<&CivilTime::day>},
    {"Hour", 1, 1, Takes::nullable, partOf<&CivilTime::hour>},
    {"Minute", 1, 1, Takes::nullable, partOf<&CivilTime::minute>},
    {"Second", 1, 1, Takes::nullable, partOf<&CivilTime::second>},
    {"Weekday", 1, 2, Takes::nullable, weekdayOf},
    {"MonthName", 1, 2, Takes::values, monthNameOf},
    {"WeekdayName", 1, 3, Takes::values, weekdayNameOf},
    {"DateSerial", 3, 3, Takes::values, dateSerial},
    {"TimeSerial", 3, 3, Takes::values, timeSerial},
    {"DateAdd", 3, 3, Takes::nullable, dateAdd},
    {"DateDiff", 3, 5, Takes::nullable, dateDiff},
    {"DatePart", 2, 4, Takes::nullable, datePart},
    {"DateValue", 1, 1, Takes::nullable,
     [](const Arguments& a) -> Value { return dateFromText(a).datePart(); }},
    {"TimeValue", 1, 1, Takes::nullable,
     [](const Arguments& a) -> Value { return dateFromText(a).timePart(); }},
};

} // namespace

std::span<const Builtin> dateFunctions() { return functions; }

} // namespace refhost::script
