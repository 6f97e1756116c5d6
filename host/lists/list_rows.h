#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "automation/value.h"
#include "host/lists/list_fields.h"

namespace refhost {

/// The rows of a list, kept column by column: many rows are read once and shown range by range, so
/// they take as little room as can be.
class ListRows {
public:
    explicit ListRows(const std::vector<ListKind>& kinds);

    /// Adds the next cell of the present row; the cells of a row follow each other. Error 13 when
    /// the value is none of the column's kind.
    void add(const qmevents::Value& value);
    std::size_t count() const { return columns_.empty() ? 0 : columns_.back().cells.size(); }
    /// The cell as its column's kind gives it, or Null.
    qmevents::Value at(std::size_t row, std::size_t column) const;

private:
    struct Column {
        ListKind kind;
        /// A number, a day or an amount as its bits, the place of a text; `none` for Null.
        std::vector<std::int64_t> cells = {};
    };
    std::int64_t cellOf(ListKind kind, const qmevents::Value& value);

    std::vector<Column> columns_;
    std::size_t next_ = 0;
    std::string texts_; // each ends in a NUL
};

} // namespace refhost
