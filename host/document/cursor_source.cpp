#include "host/document/cursor_source.h"

#include "host/document/convert.h"

namespace refhost {
namespace {

using qmevents::Currency;
using qmevents::Date;
using qmevents::Value;

constexpr auto twoDigits = [](const char* at) { return (at[0] - '0') * 10 + (at[1] - '0'); };

// Dates are always written "yyyy-mm-dd hh:nn:ss"; anything else goes the slow, checking way.
Date readDate(const char* text, int size)
{
    if (size == 19) {
        return Date::of(twoDigits(text) * 100 + twoDigits(text + 2), twoDigits(text + 5),
                        twoDigits(text + 8), twoDigits(text + 11), twoDigits(text + 14),
                        twoDigits(text + 17));
    }
    try {
        return storedDate({text, static_cast<std::size_t>(size)});
    } catch (const ConversionError& error) {
        throw sqlError(error.number, error.what());
    }
}

std::int64_t within(std::int64_t value, std::int64_t limit)
{
    if (value < -limit || value >= limit) {
        throw sqlError(SqlErrorNumber::overflow, "Arithmetic overflow: " + std::to_string(value) +
                                                     " is no value of an integer column");
    }
    return value;
}

std::string_view textOf(sqlite3_stmt* statement, int column)
{
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
    const int size = sqlite3_column_bytes(statement, column);
    return {text ? text : "", static_cast<std::size_t>(size)};
}

// A value whose type only its content tells.
Value untyped(sqlite3_stmt* statement, int column)
{
    switch (sqlite3_column_type(statement, column)) {
    case SQLITE_INTEGER:
        return static_cast<std::int32_t>(
            within(sqlite3_column_int64(statement, column), 1LL << 31));
    case SQLITE_FLOAT:
        return sqlite3_column_double(statement, column);
    default:
        return textOf(statement, column);
    }
}

Value readCell(sqlite3_stmt* statement, int column, TypeKind kind)
{
    if (sqlite3_column_type(statement, column) == SQLITE_NULL) return qmevents::Null{};
    switch (kind) {
    case TypeKind::unknown:
        return untyped(statement, column);
    case TypeKind::yesNo:
        return sqlite3_column_int64(statement, column) != 0;
    case TypeKind::int16:
        return static_cast<std::int16_t>(
            within(sqlite3_column_int64(statement, column), 1LL << 15));
    case TypeKind::int32:
        return static_cast<std::int32_t>(
            within(sqlite3_column_int64(statement, column), 1LL << 31));
    case TypeKind::currency:
        return Currency::fromDouble(sqlite3_column_double(statement, column));
    case TypeKind::real:
        return sqlite3_column_double(statement, column);
    case TypeKind::date: {
        const std::string_view text = textOf(statement, column);
        return readDate(text.data(), static_cast<int>(text.size()));
    }
    case TypeKind::text:
        return textOf(statement, column);
    }
    return {};
}

} // namespace

CursorSource::CursorSource(Connection& connection, std::shared_ptr<PreparedPlan> plan,
                           std::vector<HostValue> parameters, std::uint64_t writes)
    : connection_(&connection), plan_(std::move(plan)), parameters_(std::move(parameters)),
      writes_(writes)
{
    statement_ = run();
    advance();
}

EngineStatement CursorSource::run()
{
    if (!connection_) throw sqlError(SqlErrorNumber::notOpen, "The session has ended");
    EngineStatement statement = plan_->acquire(*connection_);
    int index = 0;
    for (const HostValue& value : parameters_) statement.bind(++index, value);
    return statement;
}

void CursorSource::advance()
{
    try {
        if (connection_->step(statement_)) return;
    } catch (...) {
        atEnd_ = true;
        plan_->release(std::move(statement_));
        throw;
    }
    atEnd_ = true;
    plan_->release(std::move(statement_));
}

void CursorSource::next()
{
    if (atEnd_) throw sqlError(SqlErrorNumber::notOpen, "The cursor is at the end of its rows");
    ++position_;
    if (isKept_) {
        atEnd_ = position_ >= keptCount();
    } else {
        advance();
    }
}

void CursorSource::moveFirst()
{
    if (position_ == 0) return;
    if (isKept_) {
        atEnd_ = kept_.empty();
    } else {
        // The running statement holds the rows as they were until the new one has begun.
        EngineStatement again = run();
        const bool any = connection_->step(again);
        plan_->release(std::exchange(statement_, std::move(again)));
        atEnd_ = !any;
        if (atEnd_) plan_->release(std::move(statement_));
    }
    position_ = 0;
}

std::int64_t CursorSource::count()
{
    if (!isKept_ && atEnd_) return static_cast<std::int64_t>(position_);
    keepRows();
    return static_cast<std::int64_t>(keptCount());
}

void CursorSource::readRow(const EngineStatement& statement)
{
    int index = 0;
    for (const ResultColumn& column : columns()) {
        kept_.push_back(readCell(statement.handle(), index++, column.type.kind));
    }
}

void CursorSource::keepRows()
{
    if (!isStreaming()) return;
    // Rows already passed are read once more, while the running statement still holds the state
    // of the database that it began with.
    EngineStatement again;
    bool any = true;
    if (position_ > 0) {
        again = run();
        any = connection_->step(again);
    }
    const EngineStatement& statement = again ? again : statement_;
    while (any) {
        readRow(statement);
        any = connection_->step(statement);
    }
    isKept_ = true;
    plan_->release(std::move(again));
    plan_->release(std::move(statement_));
}

Value CursorSource::cell(std::size_t column) const
{
    if (atEnd_) throw sqlError(SqlErrorNumber::notOpen, "The cursor stands on no row");
    if (column >= columns().size()) {
        throw sqlError(SqlErrorNumber::notOpen, "The cursor has no column of this number");
    }
    if (isKept_) return kept_[position_ * columns().size() + column];
    return readCell(statement_.handle(), static_cast<int>(column), columns()[column].type.kind);
}

void CursorSource::close()
{
    atEnd_ = true;
    plan_->release(std::move(statement_));
    kept_.clear();
    isKept_ = true;
    position_ = 0;
}

void CursorSource::abandon()
{
    close();
    plan_->idle.clear();
    connection_ = nullptr;
}

} // namespace refhost
