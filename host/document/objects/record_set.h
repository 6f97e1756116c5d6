#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "automation/members.h"
#include "host/document/cursor.h"

namespace refhost {

using qmevents::Members;
using qmevents::Ref;
using qmevents::Value;

/// The rows behind a record set, shared with its fields so that these stay usable as long as anyone
/// holds them. Errors: 3704 once closed, 3021 where there is no present row.
class OpenRows {
public:
    explicit OpenRows(std::unique_ptr<Cursor> cursor)
        : cursor_(std::move(cursor)), empty_(cursor_->eof())
    {
    }
    Cursor& cursor() const;
    Value cell(std::size_t column) const;
    bool isEmpty() const { return empty_; }
    bool isClosed() const { return !cursor_; }
    void close();

private:
    std::unique_ptr<Cursor> cursor_; // nothing once closed
    bool empty_;
};

/// One column of a record set; its value is the present row's.
class Field : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "Field";
    const Members& members() const override;
    /// Reads the value at once: a record set is read cell by cell through here.
    Value invoke(qmevents::MemberId member, qmevents::CallKind kind,
                 std::span<Value> arguments) override;

    Field(std::shared_ptr<OpenRows> rows, std::size_t column)
        : rows_(std::move(rows)), column_(column)
    {
    }
    Value value() const { return rows_->cell(column_); }
    std::string Name() const;

private:
    std::shared_ptr<OpenRows> rows_;
    std::size_t column_;
};

/// The columns of a record set, by name or by position from 0.
class Fields : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "Fields";
    const Members& members() const override;

    explicit Fields(std::shared_ptr<OpenRows> rows) : rows_(std::move(rows)) {}
    /// Error 3265 when there is no such column.
    Ref<Field> Item(const Value& index);
    std::int32_t Count() const;
    Ref<qmevents::Enumerator> NewEnum();

private:
    Ref<Field> at(std::size_t column);

    std::shared_ptr<OpenRows> rows_;
    std::vector<Ref<Field>> fields_; // made when they are first asked for
};

/// The rows of a query, read forward. They stay open until Close, or until nobody holds the set or
/// one of its fields any more.
class RecordSet : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "RecordSet";
    const Members& members() const override;

    explicit RecordSet(std::unique_ptr<Cursor> cursor);
    bool isAtEnd() const { return rows_->cursor().eof(); }
    bool isAtStart() const; ///< There is no row before the present one, nor a present one.
    Ref<Fields> fields() const { return fields_; }
    void MoveNext();
    void MoveFirst();
    std::int32_t RecordCount();
    void Close();

private:
    std::shared_ptr<OpenRows> rows_;
    Ref<Fields> fields_;
};

} // namespace refhost
