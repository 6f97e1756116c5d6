#pragma once

#include <compare>
#include <cstdint>
#include <string>
#include <string_view>

namespace qmevents {

/// An exact amount of money with four decimals. Arithmetic that leaves the range
/// (about 922 trillion either way) raises overflow (6).
class Currency {
public:
    constexpr Currency() = default;
    /// `amount` whole currency units.
    static Currency fromUnits(std::int64_t amount);
    /// Rounds half to even at the fourth decimal; overflow (6) outside the range or when not a
    /// finite number.
    static Currency fromDouble(double amount);
    static constexpr Currency fromScaled(std::int64_t scaled)
    {
        Currency result;
        result.scaled_ = scaled;
        return result;
    }
    /// Reads "-12.5" and the like exactly; further decimals are rounded half to even. Returns false
    /// when `text` is no plain decimal number; overflow (6) when it is out of range.
    static bool parse(std::string_view text, Currency& result);

    constexpr std::int64_t scaled() const { return scaled_; } ///< Ten-thousandths of a unit.
    double toDouble() const { return static_cast<double>(scaled_) / 10000.0; }
    /// Shortest plain text, a point as the decimal mark: "12.5", "-3", "0.0001".
    std::string toString() const;

    Currency operator-() const;
    Currency operator+(Currency other) const;
    Currency operator-(Currency other) const;
    Currency operator*(std::int32_t count) const;
    Currency operator*(Currency other) const; ///< Rounded half to even at the fourth decimal.
    Currency& operator+=(Currency other) { return *this = *this + other; }
    Currency& operator-=(Currency other) { return *this = *this - other; }
    /// This amount shared evenly over `count` (not 0), computed in floating point.
    Currency dividedBy(std::int32_t count) const;

    constexpr auto operator<=>(const Currency&) const = default;

private:
    std::int64_t scaled_ = 0;
};

} // namespace qmevents
