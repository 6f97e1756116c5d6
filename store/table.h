#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/host_provider.h"
#include "core/record_reader.h"
#include "store/store_access.h"

namespace qmevents {

/// When a column is written.
enum class Written { always, onInsert, onUpdate };

/// One column of a record's table: its name, how it is written into statements, and the field that
/// it fills.
template <typename T>
struct Column {
    std::string name;
    Kind kind = Kind::number;
    Written written = Written::always;
    std::function<Value(const T&)> read;
    std::function<void(T&, const Value&)> load;
};

/// A column of `C` over a field that `C` has or inherits.
template <typename C, typename F, typename B>
Column<C> column(std::string name, Kind kind, F B::*field, Written written = Written::always)
{
    using T = typename detail::FieldValue<F>::type;
    return {std::move(name), kind, written,
            [field](const C& record) { return detail::asValue(record.*field); },
            [field](C& record, const Value& value) {
                StoreAccess::load(record.*field, convertTo<T>(value));
            }};
}
/// The same where the field names the record's class itself.
template <typename F, typename C>
Column<C> column(std::string name, Kind kind, F C::*field)
{
    return column<C, F, C>(std::move(name), kind, field);
}

/// A record type's table: the columns in the order in which they are written. It drives INSERT,
/// UPDATE and the reading of rows.
template <typename T>
class Table {
public:
    Table(std::string name, std::vector<Column<T>> columns)
        : name_(std::move(name)), columns_(std::move(columns))
    {
    }

    const std::string& name() const { return name_; }

    /// "INSERT INTO table (columns) VALUES (literals)".
    std::string insertText(const T& record) const
    {
        std::string names;
        std::string values;
        for (const auto& column : columns_) {
            if (column.written == Written::onUpdate) continue;
            if (!names.empty()) {
                names += ", ";
                values += ", ";
            }
            names += column.name;
            values += literal(column.read(record), column.kind, bareName(column.name));
        }
        return "INSERT INTO " + name_ + " (" + names + ") VALUES (" + values + ")";
    }

    /// "UPDATE table SET column = literal, ... WHERE keyColumn = key".
    std::string updateText(const T& record, const std::string& keyColumn, std::int32_t key) const
    {
        std::string assignments;
        for (const auto& column : columns_) {
            if (column.written == Written::onInsert) continue;
            if (!assignments.empty()) assignments += ", ";
            assignments += column.name + " = " +
                           literal(column.read(record), column.kind, bareName(column.name));
        }
        return "UPDATE " + name_ + " SET " + assignments + " WHERE " + keyColumn + " = " +
               literal(key, Kind::number);
    }

    /// A reader's columns bound to the record's fields.
    class Loader {
    public:
        Loader(const Table& table, const RecordReader& rows)
        {
            for (const auto& column : table.columns_) {
                cells_.push_back({rows.column(bareName(column.name)), &column});
            }
        }
        /// Copies the current row's non-null cells into `record`; a null leaves the default.
        void load(T& record) const
        {
            for (const auto& [cell, column] : cells_) {
                const Value value = cell.value();
                if (!value.isNull()) column->load(record, value);
            }
        }

    private:
        struct Cell {
            RecordReader::Column cell;
            const Column<T>* column;
        };
        std::vector<Cell> cells_;
    };

private:
    // "[Order]" is the column Order, bracketed because the name is reserved.
    static std::string bareName(const std::string& name)
    {
        return name.front() == '[' ? name.substr(1, name.size() - 2) : name;
    }

    std::string name_;
    std::vector<Column<T>> columns_;
};

/// The key of the row inserted last.
inline std::int32_t newIdentity()
{
    const RecordReader row(std::string("SELECT @@IDENTITY"));
    return toInt32(row.firstColumn().value());
}

} // namespace qmevents
