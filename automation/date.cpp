#include "automation/date.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "automation/error.h"

namespace qmevents {
namespace {

constexpr long long secondsPerDay = 86400;
constexpr long long zeroDay = 693593;   // days from 1 January of year 1 to the zero date
constexpr double firstSerial = -657435; // 1 January 100
constexpr double endSerial = 2958466;   // 1 January 10000

bool isLeap(int year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

int daysIn(int year, int month)
{
    constexpr int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && isLeap(year) ? 29 : days[month - 1];
}

// Days since 1 January of year 1, in the proleptic Gregorian calendar (year at least 1).
long long dayNumber(int year, int month, int day)
{
    const long long y = month <= 2 ? year - 1 : year;
    const long long era = y / 400;
    const long long yearOfEra = y - era * 400;
    const long long shifted = (month + 9) % 12; // March is 0
    const long long dayOfYear = (153 * shifted + 2) / 5 + day - 1;
    return era * 146097 + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear - 306;
}

void splitDay(long long number, CivilTime& civil)
{
    const long long z = number + 306;
    const long long era = z / 146097;
    const long long dayOfEra = z - era * 146097;
    const long long yearOfEra =
        (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const long long dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const long long shifted = (5 * dayOfYear + 2) / 153;
    civil.day = static_cast<int>(dayOfYear - (153 * shifted + 2) / 5 + 1);
    civil.month = static_cast<int>(shifted < 10 ? shifted + 3 : shifted - 9);
    civil.year = static_cast<int>(era * 400 + yearOfEra + (civil.month <= 2 ? 1 : 0));
}

long long floorDivide(long long a, long long b) { return a / b - (a % b < 0 ? 1 : 0); }

// The two or four digits at `at`, or -1.
int digits(std::string_view text, std::size_t at, std::size_t count)
{
    if (at + count > text.size()) return -1;
    int value = 0;
    for (std::size_t i = at; i < at + count; ++i) {
        if (text[i] < '0' || text[i] > '9') return -1;
        value = value * 10 + (text[i] - '0');
    }
    return value;
}

} // namespace

Date Date::fromSerial(double serial)
{
    // A day before the first has no negative fraction, so -657434 and something is still year 100.
    if (!(serial > firstSerial && serial < endSerial)) {
        throw Error::with(ErrorNumber::overflow, "a date must lie in the years 100 to 9999");
    }
    Date result;
    result.serial_ = serial;
    return result;
}

Date Date::fromSeconds(long long seconds)
{
    const long long day = floorDivide(seconds, secondsPerDay);
    const double fraction =
        static_cast<double>(seconds - day * secondsPerDay) / static_cast<double>(secondsPerDay);
    const auto whole = static_cast<double>(day);
    return fromSerial(day < 0 ? whole - fraction : whole + fraction);
}

Date Date::fromCivil(const CivilTime& civil)
{
    if (civil.year < 100 || civil.year > 9999) {
        throw Error::with(ErrorNumber::overflow, "a date must lie in the years 100 to 9999");
    }
    if (!isValidDay(civil.year, civil.month, civil.day) || civil.hour < 0 || civil.hour > 23 ||
        civil.minute < 0 || civil.minute > 59 || civil.second < 0 || civil.second > 59) {
        throw Error::with(ErrorNumber::invalidCall, "no such date or time");
    }
    const long long day = dayNumber(civil.year, civil.month, civil.day) - zeroDay;
    return fromSeconds(day * secondsPerDay + civil.hour * 3600LL + civil.minute * 60LL +
                       civil.second);
}

Date Date::carried(int year, int month, int day)
{
    const long long months = static_cast<long long>(year) * 12 + month - 1;
    const long long carriedYear = floorDivide(months, 12);
    if (carriedYear < 100 || carriedYear > 9999) {
        throw Error::with(ErrorNumber::overflow, "a date must lie in the years 100 to 9999");
    }
    return of(static_cast<int>(carriedYear), static_cast<int>(months - carriedYear * 12) + 1, 1)
        .plusDays(static_cast<double>(day) - 1);
}

bool Date::isValidDay(int year, int month, int day)
{
    return year >= 100 && year <= 9999 && month >= 1 && month <= 12 && day >= 1 &&
           day <= daysIn(year, month);
}

long long Date::seconds() const
{
    const double day = std::trunc(serial_);
    const double fraction = std::abs(serial_ - day);
    return static_cast<long long>(day) * secondsPerDay +
           std::llround(fraction * static_cast<double>(secondsPerDay));
}

CivilTime Date::civil() const
{
    const long long total = seconds();
    const long long day = floorDivide(total, secondsPerDay);
    const auto time = static_cast<int>(total - day * secondsPerDay);
    CivilTime civil;
    splitDay(day + zeroDay, civil);
    civil.hour = time / 3600;
    civil.minute = time / 60 % 60;
    civil.second = time % 60;
    return civil;
}

Date Date::datePart() const
{
    Date result;
    result.serial_ = static_cast<double>(floorDivide(seconds(), secondsPerDay));
    return result;
}

Date Date::timePart() const
{
    const long long total = seconds();
    return fromSeconds(total - floorDivide(total, secondsPerDay) * secondsPerDay);
}

bool Date::hasDate() const { return floorDivide(seconds(), secondsPerDay) != 0; }
bool Date::hasTime() const { return seconds() % secondsPerDay != 0; }

int Date::weekday() const
{
    // The zero date was a Saturday.
    const long long day = floorDivide(seconds(), secondsPerDay);
    return static_cast<int>((day % 7 + 7 + 6) % 7) + 1;
}

Date Date::plusDays(double days) const
{
    // Bounded first, so that the conversion to whole seconds cannot overflow.
    if (!(std::abs(days) < 1e7)) throw Error(ErrorNumber::overflow);
    return plusSeconds(std::llround(days * static_cast<double>(secondsPerDay)));
}

Date Date::plusSeconds(long long count) const
{
    long long total = 0;
    if (__builtin_add_overflow(seconds(), count, &total)) throw Error(ErrorNumber::overflow);
    return fromSeconds(total);
}

Date Date::plusMonths(int months) const
{
    CivilTime civil = this->civil();
    const long long total = civil.year * 12LL + civil.month - 1 + months;
    const long long year = floorDivide(total, 12);
    if (year < 100 || year > 9999) throw Error(ErrorNumber::overflow);
    civil.year = static_cast<int>(year);
    civil.month = static_cast<int>(total - year * 12) + 1;
    civil.day = std::min(civil.day, daysIn(civil.year, civil.month));
    return fromCivil(civil);
}

std::string Date::iso() const
{
    const CivilTime c = civil();
    char buffer[48];
    const int written = std::snprintf(buffer, sizeof buffer, "%04d-%02d-%02d %02d:%02d:%02d",
                                      c.year, c.month, c.day, c.hour, c.minute, c.second);
    return {buffer, static_cast<std::size_t>(written)};
}

std::optional<Date> Date::parseIso(std::string_view text)
{
    CivilTime c{digits(text, 0, 4), digits(text, 5, 2), digits(text, 8, 2)};
    if (text.size() < 10 || text[4] != '-' || text[7] != '-' ||
        !isValidDay(c.year, c.month, c.day)) {
        return std::nullopt;
    }
    if (text.size() > 10) {
        if ((text[10] != ' ' && text[10] != 'T') || text.size() < 16 || text[13] != ':') {
            return std::nullopt;
        }
        c.hour = digits(text, 11, 2);
        c.minute = digits(text, 14, 2);
        std::string_view rest = text.substr(16);
        if (!rest.empty()) {
            c.second = rest[0] == ':' ? digits(rest, 1, 2) : -1;
            rest = rest.substr(std::min<std::size_t>(rest.size(), 3));
            if (!rest.empty() && (rest[0] != '.' || rest.size() < 2 ||
                                  rest.find_first_not_of("0123456789", 1) != rest.npos)) {
                return std::nullopt;
            }
        }
        if (c.hour < 0 || c.hour > 23 || c.minute < 0 || c.minute > 59 || c.second < 0 ||
            c.second > 59) {
            return std::nullopt;
        }
    }
    return fromCivil(c);
}

std::strong_ordering Date::operator<=>(const Date& other) const
{
    return seconds() <=> other.seconds();
}

} // namespace qmevents
