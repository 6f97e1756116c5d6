#pragma once

#include <optional>
#include <string>

#include "automation/members.h"

namespace qmevents {

/// Short texts for dates in lists and pages.
class DateTimeUtil : public DescribedObject {
public:
    static constexpr std::string_view ClassName = "DateTimeUtil";
    const Members& members() const override;

    /// The short date, a blank, and the short time, which is empty at midnight.
    std::string GetShortDateTime(const Value& date);
    /// "Today", or month, day and two-digit year without leading zeros: "3/7/26".
    std::string GetShortDate(const Value& date);
    /// The long time without its last "00" and the mark before it: "3:45 PM" for 3:45:00 PM. Only
    /// the last "00" counts, wherever it stands: 3:00:15 PM gives "3:15 PM". Empty at midnight when
    /// `ignoreEmptyTime` is set.
    std::string GetShortTime(const Value& date, bool ignoreEmptyTime = true);
    /// Whether the time of day is other than midnight.
    bool HasTime(const Value& date);
};

/// The value helpers that the add-in shows pages.
class Utils : public DescribedObject {
public:
    static constexpr std::string_view ClassName = "Utils";
    const Members& members() const override;
    Ref<DateTimeUtil> dateTimeUtil();
};

} // namespace qmevents
