#include "automation/currency.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "automation/error.h"

namespace qmevents {
namespace {

constexpr std::int64_t scale = 10000;

std::int64_t added(std::int64_t a, std::int64_t b)
{
    std::int64_t result = 0;
    if (__builtin_add_overflow(a, b, &result)) throw Error(ErrorNumber::overflow);
    return result;
}
std::int64_t multiplied(std::int64_t a, std::int64_t b)
{
    std::int64_t result = 0;
    if (__builtin_mul_overflow(a, b, &result)) throw Error(ErrorNumber::overflow);
    return result;
}

// `dividend` / 10,000, half to even.
std::int64_t unscaled(std::int64_t dividend)
{
    std::int64_t quotient = dividend / scale;
    const std::int64_t rest = std::abs(dividend % scale);
    if (rest * 2 > scale || (rest * 2 == scale && quotient % 2 != 0)) {
        quotient += dividend < 0 ? -1 : 1;
    }
    return quotient;
}

bool isDigits(std::string_view text)
{
    return text.find_first_not_of("0123456789") == std::string_view::npos;
}

// Whether the decimals that are cut off round the last one kept up: half goes to even.
bool roundsUp(std::string_view dropped, bool keptIsOdd)
{
    if (dropped[0] != '5') return dropped[0] > '5';
    return keptIsOdd || dropped.find_first_not_of('0', 1) != std::string_view::npos;
}

} // namespace

Currency Currency::fromUnits(std::int64_t amount) { return fromScaled(multiplied(amount, scale)); }

Currency Currency::fromDouble(double amount)
{
    const double scaled = std::nearbyint(amount * static_cast<double>(scale));
    constexpr double limit = 9223372036854775808.0; // 2^63
    if (!(scaled >= -limit && scaled < limit)) throw Error(ErrorNumber::overflow);
    return fromScaled(static_cast<std::int64_t>(scaled));
}

bool Currency::parse(std::string_view text, Currency& result)
{
    const bool negative = !text.empty() && text.front() == '-';
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) text.remove_prefix(1);
    const auto point = std::min(text.find('.'), text.size());
    const std::string_view whole = text.substr(0, point);
    const std::string_view decimals = text.substr(std::min(point + 1, text.size()));
    if ((whole.empty() && decimals.empty()) || !isDigits(whole) || !isDigits(decimals))
        return false;

    std::string kept(whole);
    kept += decimals.substr(0, 4);
    if (decimals.size() < 4) kept.append(4 - decimals.size(), '0');
    // Summed up on its own side of zero, which the smallest amount needs.
    std::int64_t scaled = 0;
    for (const char c : kept) scaled = added(multiplied(scaled, 10), negative ? '0' - c : c - '0');
    if (decimals.size() > 4 && roundsUp(decimals.substr(4), scaled % 2 != 0)) {
        scaled = added(scaled, negative ? -1 : 1);
    }
    result = fromScaled(scaled);
    return true;
}

std::string Currency::toString() const
{
    // Digits are taken from the negative side, which holds the smallest amount as well.
    const std::int64_t negative = scaled_ < 0 ? scaled_ : -scaled_;
    std::string text = std::to_string(-(negative / scale));
    std::string decimals = std::to_string(scale - negative % scale).substr(1);
    while (!decimals.empty() && decimals.back() == '0') decimals.pop_back();
    if (!decimals.empty()) text += "." + decimals;
    return scaled_ < 0 ? "-" + text : text;
}

Currency Currency::operator-() const
{
    if (scaled_ == std::numeric_limits<std::int64_t>::min()) throw Error(ErrorNumber::overflow);
    return fromScaled(-scaled_);
}
Currency Currency::operator+(Currency other) const
{
    return fromScaled(added(scaled_, other.scaled_));
}
Currency Currency::operator-(Currency other) const
{
    std::int64_t result = 0;
    if (__builtin_sub_overflow(scaled_, other.scaled_, &result)) throw Error(ErrorNumber::overflow);
    return fromScaled(result);
}
Currency Currency::operator*(std::int32_t count) const
{
    return fromScaled(multiplied(scaled_, count));
}

// With a = a1 * 10,000 + a0 and b alike, a * b / 10,000 = a1 * b + a0 * b1 + a0 * b0 / 10,000: no
// product leaves 64 bits unless the result does.
Currency Currency::operator*(Currency other) const
{
    const std::int64_t a1 = scaled_ / scale;
    const std::int64_t a0 = scaled_ % scale;
    const std::int64_t b1 = other.scaled_ / scale;
    const std::int64_t b0 = other.scaled_ % scale;
    return fromScaled(
        added(added(multiplied(a1, other.scaled_), multiplied(a0, b1)), unscaled(a0 * b0)));
}

Currency Currency::dividedBy(std::int32_t count) const
{
    if (count == 0) throw Error(ErrorNumber::divisionByZero);
    return fromDouble(toDouble() / count);
}

} // namespace qmevents
