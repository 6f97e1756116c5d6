#include "host/reports/figures.h"

#include <limits>

#include "automation/conversions.h"
#include "automation/error.h"

namespace refhost::reporting {

using qmevents::Currency;
using qmevents::Value;
using qmevents::ValueKind;

namespace {

bool isFigure(const Value& value) { return value.isNumber(); }

// A quotient as people round it: halves away from zero.
std::int64_t roundedQuotient(std::int64_t part, std::int64_t whole, std::int64_t times)
{
    __extension__ using Wide = __int128;
    const bool negative = (part < 0) != (whole < 0);
    const Wide a = (part < 0 ? -Wide{part} : Wide{part}) * times;
    const Wide b = whole < 0 ? -Wide{whole} : Wide{whole};
    const Wide quotient = (2 * a + b) / (2 * b);
    if (quotient > std::numeric_limits<std::int64_t>::max())
        throw qmevents::Error(qmevents::ErrorNumber::overflow);
    return static_cast<std::int64_t>(negative ? -quotient : quotient);
}

} // namespace

void Figure::add(const Value& cell, CellKind kind)
{
    if (!isFigure(cell)) return;
    hasAny_ = true;
    if (kind == CellKind::money) {
        money_ += qmevents::toCurrency(cell);
    } else if (cell.is(ValueKind::real) || cell.is(ValueKind::currency)) {
        real_ += qmevents::toDouble(cell);
        hasReal_ = true;
    } else {
        whole_ += qmevents::toInt32(cell);
    }
}

void Figure::add(const Figure& other)
{
    money_ += other.money_;
    whole_ += other.whole_;
    real_ += other.real_;
    hasReal_ = hasReal_ || other.hasReal_;
    hasAny_ = hasAny_ || other.hasAny_;
}

Value Figure::value(CellKind kind, Totalled total, std::size_t rows) const
{
    if (total == Totalled::sum && rows > 0 && !hasAny_) return qmevents::Null{};
    if (total == Totalled::nothing) return qmevents::Null{};
    if (total == Totalled::sum && kind == CellKind::money) return money_;
    if (hasReal_) return real_ + static_cast<double>(whole_);
    constexpr auto most = std::numeric_limits<std::int32_t>::max();
    if (whole_ > most || whole_ < -most) return static_cast<double>(whole_);
    return static_cast<std::int32_t>(whole_);
}

Value ratio(const Value& part, const Value& whole, CellKind kind)
{
    if (!isFigure(part) || !isFigure(whole)) return qmevents::Null{};
    const std::int64_t of = qmevents::toCurrency(whole).scaled();
    if (of == 0) return qmevents::Null{};
    const std::int64_t is = qmevents::toCurrency(part).scaled();
    if (kind == CellKind::percent) return static_cast<double>(roundedQuotient(is, of, 1000)) / 10;
    // To the cent, as an average is read.
    return Currency::fromScaled(roundedQuotient(is, of, 100) * 100);
}

} // namespace refhost::reporting
