#pragma once

#include <cstdint>
#include <initializer_list>
#include <string_view>

#include "automation/value.h"
#include "host/document/objects/sql_literal.h"
#include "host/document/sql_session.h"

namespace refhost::demo {

/// A cell of a new row, with the kind of literal that its column takes.
struct Cell {
    std::string_view column;
    qmevents::Value value;
    LiteralKind kind = LiteralKind::key;
};

inline Cell text(std::string_view column, std::string_view value)
{
    return {column, value, LiteralKind::text};
}
inline Cell key(std::string_view column, std::int32_t id) { return {column, id}; }
inline Cell date(std::string_view column, qmevents::Date value)
{
    return {column, value, LiteralKind::date};
}
inline Cell money(std::string_view column, qmevents::Currency value)
{
    return {column, value, LiteralKind::number};
}
inline Cell yesNo(std::string_view column, bool value)
{
    return {column, value, LiteralKind::yesNo};
}

/// Writes rows of the host's tables as the session's dialect stores them.
class RowWriter {
public:
    explicit RowWriter(SqlSession& sql) : sql_(sql) {}

    /// For a table whose rows have no key of their own.
    void add(std::string_view table, std::initializer_list<Cell> cells);
    /// Gives the key of the new row.
    std::int32_t insert(std::string_view table, std::initializer_list<Cell> cells);
    void update(std::string_view table, std::int32_t id, const Cell& cell);

    SqlSession& sql() { return sql_; }

private:
    SqlSession& sql_;
};

} // namespace refhost::demo
