#include "core/fiscal_year.h"

#include <utility>

#include "automation/clock.h"
#include "automation/conversions.h"
#include "automation/text.h"
#include "core/host_provider.h"

namespace qmevents {
namespace {

// A month or day as a whole number, or 0 when it is none.
int wholeNumber(const Value& value)
{
    if (value.isNull() || value.isMissing() || value.isObject()) return 0;
    const std::string text(text::trim(toText(value)));
    if (text.empty() || text.size() > 2) return 0;
    int number = 0;
    for (const char c : text) {
        if (c < '0' || c > '9') return 0;
        number = number * 10 + (c - '0');
    }
    return number;
}

} // namespace

Date fiscalYearStart(const Value& startMonth, const Value& startDay)
{
    const int year = Clock::today().civil().year;
    int month = wholeNumber(startMonth);
    int day = wholeNumber(startDay);
    if (!Date::isValidDay(year, month, day)) month = day = 1;
    const Date start = Date::of(year, month, day);
    return start > Clock::today() ? start.plusMonths(-12) : start;
}

std::string withFiscalYears(const std::string& text, const Value& startMonth, const Value& startDay)
{
    const Date start = fiscalYearStart(startMonth, startDay);
    const std::pair<const char*, Date> placeholders[] = {
        {"{CURRENTFISCALYEARSTART}", start},
        {"{CURRENTFISCALYEAREND}", start.plusMonths(12).plusSeconds(-1)},
        {"{PREVIOUSFISCALYEARSTART}", start.plusMonths(-12)},
        {"{PREVIOUSFISCALYEAREND}", start.plusSeconds(-1)},
    };
    std::string result = text;
    for (const auto& [placeholder, date] : placeholders) {
        result = text::replaceAll(result, placeholder, literal(date, Kind::date));
    }
    return result;
}

} // namespace qmevents
