#pragma once

#include <optional>
#include <string>

#include "store/table.h"

namespace qmevents {

/// A column that a query adds to a record's own by joining another table: `load` gets its cell when
/// it is not null.
template <typename C>
Column<C> joinedColumn(std::string name, std::function<void(C&, const Value&)> load)
{
    return {std::move(name), Kind::text, Written::always, nullptr, std::move(load)};
}

/// Makes stored records out of the rows of one query. The columns are bound once.
template <typename T>
class RecordLoader {
public:
    /// `joined` holds the columns beyond the record's own, where there are any. Rows of a table
    /// without keys of its own are read with `hasId` false.
    RecordLoader(const RecordReader& rows, const Table<T>& table, const Table<T>* joined,
                 bool hasId = true)
        : own_(table, rows)
    {
        if (hasId) id_.emplace(rows.column("Id"));
        if (joined) joined_.emplace(*joined, rows);
    }

    std::int32_t currentId() const { return toInt32(id_->value()); }
    /// The current row as a record.
    Ref<T> load() const
    {
        auto record = makeRef<T>();
        if (id_) StoreAccess::setId(*record, currentId());
        own_.load(*record);
        if (joined_) joined_->load(*record);
        StoreAccess::markStored(*record);
        return record;
    }

private:
    typename Table<T>::Loader own_;
    std::optional<RecordReader::Column> id_;
    std::optional<typename Table<T>::Loader> joined_;
};

/// All rows of `sql` as records under their keys.
template <typename Items, typename T>
Ref<Items> readAll(const std::string& sql, const Table<T>& table, const Table<T>* joined = nullptr,
                   bool hasId = true)
{
    auto items = makeRef<Items>();
    RecordReader rows(sql);
    if (rows.atEnd()) return items;
    const RecordLoader<T> loader(rows, table, joined, hasId);
    for (; !rows.atEnd(); rows.next()) items->add(loader.load());
    return items;
}

/// The first row of `sql` as a record, or nothing.
template <typename T>
Ref<T> readOne(const std::string& sql, const Table<T>& table)
{
    const RecordReader row(sql);
    return row.atEnd() ? Ref<T>() : RecordLoader<T>(row, table, nullptr).load();
}

} // namespace qmevents
