#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "automation/currency.h"
#include "automation/date.h"

namespace qmevents {

/// How dates and amounts are written for people and read from what they type. One per thread, as a
/// signed-in user has one thread; numbers in conversions never depend on it.
class Locale {
public:
    enum class DateOrder { monthDayYear, dayMonthYear, yearMonthDay };

    DateOrder order = DateOrder::monthDayYear;
    char dateSeparator = '/';
    bool twelveHours = true;
    std::string currencySymbol = "$";
    bool symbolLeads = true; ///< "$5.00" rather than "5.00 kr".
    std::string decimalMark = ".";
    std::string groupMark = ",";
    int moneyDecimals = 2; ///< 0 to 4.

    /// The locale of this thread, to read or to replace.
    static Locale& current();

    std::string shortDate(Date date) const; ///< "3/7/2026".
    std::string longTime(Date date) const;  ///< "3:45:00 PM".
    /// Date and long time; the part that is the zero date or midnight is left out, and the zero
    /// date itself is written as its time.
    std::string text(Date date) const;
    std::string money(Currency amount) const; ///< "$1,234.50", "-$3.00".

    /// What a user typed as a date, a time or both: in the order of this locale, as
    /// "yyyy-mm-dd ...", or with the month's English name. Two-digit years 00 to 29 are 2000 to
    /// 2029, others 1930 to 1999. Nothing when it is no valid date.
    std::optional<Date> parseDate(std::string_view text) const;
};

} // namespace qmevents
