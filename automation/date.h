#pragma once

#include <compare>
#include <optional>
#include <string>
#include <string_view>

namespace qmevents {

/// A calendar date with a time of day, to the second.
struct CivilTime {
    int year = 1899, month = 12, day = 30;
    int hour = 0, minute = 0, second = 0;
    bool operator==(const CivilTime&) const = default;
};

/// A date as Automation counts it: days since 30 December 1899, the time of day as the fraction.
/// Before that day the fraction still counts forward from midnight (-1.25 is 29 December, 06:00).
/// The zero date stands for "none". Valid years are 100 to 9999.
class Date {
public:
    constexpr Date() = default;
    /// The day number `serial`; overflow (6) outside the years 100 to 9999.
    static Date fromSerial(double serial);
    /// Overflow (6) outside the valid years; invalid call (5) when there is no such day or time.
    static Date fromCivil(const CivilTime& civil);
    static Date of(int year, int month, int day, int hour = 0, int minute = 0, int second = 0)
    {
        return fromCivil({year, month, day, hour, minute, second});
    }
    /// As DateSerial: months and days outside their range carry over (month 13, day 0).
    static Date carried(int year, int month, int day);
    static bool isValidDay(int year, int month, int day);

    constexpr double serial() const { return serial_; }
    /// Split at the nearest second.
    CivilTime civil() const;
    Date datePart() const; ///< Midnight of the day.
    Date timePart() const; ///< The time of day on the zero date.
    bool hasDate() const;  ///< The day is not the zero date's.
    bool hasTime() const;  ///< The time of day is not midnight, at a resolution of a second.
    int weekday() const;   ///< 1 for Sunday to 7 for Saturday.

    Date plusDays(double days) const;
    Date plusSeconds(long long seconds) const;
    /// The same day of the month `months` later, or that month's last day.
    Date plusMonths(int months) const;

    /// "yyyy-mm-dd hh:nn:ss".
    std::string iso() const;
    /// Reads exactly "yyyy-mm-dd", optionally followed by a blank or "T" and "hh:nn[:ss[.fff]]".
    static std::optional<Date> parseIso(std::string_view text);

    /// Order in time, to the second.
    std::strong_ordering operator<=>(const Date& other) const;
    bool operator==(const Date& other) const { return (*this <=> other) == 0; }

private:
    long long seconds() const; // since the zero date's midnight, in order of time
    static Date fromSeconds(long long seconds);

    double serial_ = 0;
};

} // namespace qmevents
