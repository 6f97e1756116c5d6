#include "host/lists/list_rows.h"

#include <bit>
#include <cmath>
#include <limits>

#include "automation/conversions.h"

namespace refhost {

using qmevents::Currency;
using qmevents::Date;
using qmevents::Value;

namespace {

constexpr std::int64_t none = std::numeric_limits<std::int64_t>::min();

} // namespace

ListRows::ListRows(const std::vector<ListKind>& kinds)
{
    for (const ListKind kind : kinds) columns_.push_back({kind});
}

void ListRows::add(const Value& value)
{
    Column& column = columns_[next_];
    column.cells.push_back(cellOf(column.kind, value));
    next_ = (next_ + 1) % columns_.size();
}

std::int64_t ListRows::cellOf(ListKind kind, const Value& value)
{
    if (value.isNull()) return none;
    switch (kind) {
    case ListKind::money:
        return qmevents::toCurrency(value).scaled();
    case ListKind::number:
        return std::bit_cast<std::int64_t>(qmevents::toDouble(value) + 0.0); // never minus zero
    case ListKind::date: {
        const Date date = qmevents::toDate(value);
        if (!date.hasDate() && !date.hasTime()) return none;
        return std::bit_cast<std::int64_t>(date.serial());
    }
    default: {
        const auto place = static_cast<std::int64_t>(texts_.size());
        const std::string text = qmevents::toText(value);
        texts_.append(text, 0, text.find('\0')).push_back('\0');
        return place;
    }
    }
}

Value ListRows::at(std::size_t row, std::size_t column) const
{
    const Column& from = columns_[column];
    const std::int64_t cell = from.cells[row];
    if (cell == none) return qmevents::Null{};
    switch (from.kind) {
    case ListKind::money:
        return Currency::fromScaled(cell);
    case ListKind::date:
        return Date::fromSerial(std::bit_cast<double>(cell));
    case ListKind::number: {
        const auto number = std::bit_cast<double>(cell);
        constexpr double most = std::numeric_limits<std::int32_t>::max();
        const bool isWhole = std::abs(number) <= most && std::trunc(number) == number;
        return isWhole ? Value(static_cast<std::int32_t>(number)) : Value(number);
    }
    default:
        return {texts_.c_str() + cell};
    }
}

} // namespace refhost
