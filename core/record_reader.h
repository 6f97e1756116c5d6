#pragma once

#include <string>
#include <string_view>

#include "automation/object.h"

namespace qmevents {

/// Forward reader of a host record set. A column is bound once and then read row by row: one
/// late-bound call a cell. The set is closed when the reader goes.
class RecordReader {
public:
    /// One column of the current row.
    class Column {
    public:
        explicit Column(Ref<Object> field);
        Value value() const { return field_->invoke(value_, CallKind::get, {}); }
        /// The value as a `T`; `fallback` when it is null.
        template <typename T>
        T valueOr(T fallback) const
        {
            const Value cell = value();
            return cell.isNull() ? fallback : convertTo<T>(cell);
        }

    private:
        Ref<Object> field_;
        MemberId value_;
    };

    /// Runs `sql`, a SELECT.
    explicit RecordReader(const std::string& sql);
    /// Reads a record set that is open; it is left open.
    explicit RecordReader(Ref<Object> recordSet);
    RecordReader(const RecordReader&) = delete;
    RecordReader& operator=(const RecordReader&) = delete;
    ~RecordReader();

    /// True behind the last row, and when the host gave no record set.
    bool atEnd() const;
    void next();
    Column column(std::string_view name) const;
    Column firstColumn() const; ///< Whatever its name is.
    /// Whether the set has a column of this name.
    bool hasColumn(std::string_view name) const;
    const Ref<Object>& recordSet() const { return recordSet_; }

private:
    void bind();

    Ref<Object> recordSet_;
    MemberId atEnd_ = unknownMember;
    MemberId moveNext_ = unknownMember;
    bool closes_;
};

/// The first column of the first row of `sql` named `column`, or Empty when there is no row.
Value firstValue(const std::string& sql, std::string_view column);

} // namespace qmevents
