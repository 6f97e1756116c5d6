#include "core/date_time_util.h"

#include "automation/clock.h"
#include "automation/describe.h"
#include "automation/locale.h"

namespace qmevents {

const Members& DateTimeUtil::members() const
{
    static const Members table =
        describe<DateTimeUtil>("Short texts for dates in lists and pages.")
            .method("GetShortDateTime", &DateTimeUtil::GetShortDateTime, {arg("Datein")},
                    "The short date, a blank, and the short time, which is empty at midnight.")
            .method("GetShortDate", &DateTimeUtil::GetShortDate, {arg("Datein")},
                    "\"Today\", or month, day and two-digit year without leading zeros.")
            .method("GetShortTime", &DateTimeUtil::GetShortTime,
                    {arg("Dt"), optional("IgnoreEmptyTime", true)},
                    "The time without its seconds when they are zero; empty at midnight when "
                    "IgnoreEmptyTime is set.")
            .method("HasTime", &DateTimeUtil::HasTime, {arg("Dt")},
                    "Whether the time of day is other than midnight.");
    return table;
}

std::string DateTimeUtil::GetShortDateTime(const Value& date)
{
    return GetShortDate(date) + " " + GetShortTime(date);
}

std::string DateTimeUtil::GetShortDate(const Value& date)
{
    const Date day = toDate(date).datePart();
    if (day == Clock::today()) return "Today";
    const CivilTime civil = day.civil();
    return std::to_string(civil.month) + "/" + std::to_string(civil.day) + "/" +
           std::to_string(100 + civil.year % 100).substr(1);
}

std::string DateTimeUtil::GetShortTime(const Value& date, bool ignoreEmptyTime)
{
    const Date moment = toDate(date);
    if (ignoreEmptyTime && !moment.hasTime()) return {};
    const std::string time = Locale::current().longTime(moment);
    const auto zeros = time.rfind("00");
    // At the first or second position there is no mark and figure before it to cut.
    if (zeros == std::string::npos || zeros < 2) return time;
    return time.substr(0, zeros - 1) + time.substr(zeros + 2);
}

bool DateTimeUtil::HasTime(const Value& date) { return toDate(date).hasTime(); }

const Members& Utils::members() const
{
    static const Members table =
        describe<Utils>("Value helpers for pages.")
            .readOnly("DateTimeUtil", &Utils::dateTimeUtil, "Short texts for dates.");
    return table;
}

Ref<DateTimeUtil> Utils::dateTimeUtil() { return makeRef<DateTimeUtil>(); }

} // namespace qmevents
