#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "automation/value.h"
#include "host/document/sql_type.h"

namespace refhost {

class CursorSource;

/// The rows of a query, read forward. Rows stream from the engine; as soon as the session is about
/// to write, the rest is kept in memory, so that a cursor never sees changes made after it was
/// opened. A cursor may outlive its session: it then stands at its end.
class Cursor {
public:
    explicit Cursor(std::shared_ptr<CursorSource> source);
    Cursor(const Cursor&) = delete;
    Cursor& operator=(const Cursor&) = delete;
    ~Cursor();

    std::size_t columnCount() const;
    /// As the engine names it: a Jet column that two tables share is "table.column", an unnamed
    /// one "Expr1000" in Jet and "" in SQL Server.
    const std::string& columnName(std::size_t column) const;
    const SqlType& columnType(std::size_t column) const;
    /// The first column called `name`, without regard to case; nothing when there is none.
    std::optional<std::size_t> columnIndex(std::string_view name) const;

    bool eof() const;
    /// Goes to the next row; an error when the cursor is at its end already.
    void next();
    /// Goes back to the first row. The rows are the same, unless the end was reached while they
    /// streamed: then nothing holds them any more and the query runs again.
    void moveFirst();
    /// The number of rows; reads the rest into memory when they were still streaming.
    std::int64_t recordCount();

    /// The cell of the present row in its column's type: boolean, int16, int32, double, currency,
    /// date, text or null. An error at the end of the rows.
    qmevents::Value value(std::size_t column) const;

    /// Gives the rows back to the engine; the cursor stands at its end from then on.
    void close();

private:
    std::shared_ptr<CursorSource> source_;
};

} // namespace refhost
