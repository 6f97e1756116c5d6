#include "com/regional.h"

#include <optional>

#include "com/platform.h"
#include "com/text.h"

namespace qmevents::com {
namespace {

std::optional<std::string> setting(LCTYPE type)
{
    wchar_t value[128];
    const int length = GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, type, value, 128);
    if (length < 2) return std::nullopt; // absent or empty; the count takes in the ending NUL
    return utf8(std::wstring_view(value, static_cast<std::size_t>(length) - 1));
}

} // namespace

Locale userLocale()
{
    Locale locale;
    if (const auto order = setting(LOCALE_IDATE)) {
        locale.order = *order == "1"   ? Locale::DateOrder::dayMonthYear
                       : *order == "2" ? Locale::DateOrder::yearMonthDay
                                       : Locale::DateOrder::monthDayYear;
    }
    if (const auto separator = setting(LOCALE_SDATE)) locale.dateSeparator = separator->front();
    if (const auto hours = setting(LOCALE_ITIME)) locale.twelveHours = *hours == "0";
    if (const auto symbol = setting(LOCALE_SCURRENCY)) locale.currencySymbol = *symbol;
    // "2" is before the amount with a blank between, "0" without; "1" and "3" are behind it.
    if (const auto place = setting(LOCALE_ICURRENCY)) {
        locale.symbolLeads = *place == "0" || *place == "2";
    }
    if (const auto mark = setting(LOCALE_SMONDECIMALSEP)) locale.decimalMark = *mark;
    if (const auto mark = setting(LOCALE_SMONTHOUSANDSEP)) locale.groupMark = *mark;
    // Amounts have four decimals at most.
    if (const auto digits = setting(LOCALE_ICURRDIGITS);
        digits && digits->size() == 1 && *digits <= "4") {
        locale.moneyDecimals = digits->front() - '0';
    }
    return locale;
}

} // namespace qmevents::com
