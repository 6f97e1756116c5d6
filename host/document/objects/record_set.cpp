#include "host/document/objects/record_set.h"

#include "automation/describe.h"

namespace refhost {

using qmevents::arg;
using qmevents::CallKind;
using qmevents::describe;
using qmevents::Enumerator;
using qmevents::Error;
using qmevents::makeRef;
using qmevents::MemberId;

namespace {

// The numbers under which record sets of this kind report misuse.
constexpr int noPresentRow = 3021;
constexpr int noSuchColumn = 3265;
constexpr int closed = 3704;

[[noreturn]] void fail(int number, const std::string& description)
{
    throw Error(number, "RecordSet", description);
}

class FieldWalk : public Enumerator {
public:
    explicit FieldWalk(Ref<Fields> fields) : fields_(std::move(fields)) {}
    bool next(Value& item) override
    {
        if (position_ >= fields_->Count()) return false;
        item = Value(fields_->Item(position_++));
        return true;
    }

private:
    Ref<Fields> fields_;
    std::int32_t position_ = 0;
};

} // namespace

Cursor& OpenRows::cursor() const
{
    if (!cursor_) fail(closed, "The record set is closed.");
    return *cursor_;
}

Value OpenRows::cell(std::size_t column) const
{
    Cursor& rows = cursor();
    if (rows.eof()) {
        fail(noPresentRow, "There is no row to read \"" + rows.columnName(column) +
                               "\" from: the record set is at its end.");
    }
    return rows.value(column);
}

void OpenRows::close()
{
    if (cursor_) cursor_->close();
    cursor_.reset();
}

const Members& Field::members() const
{
    static const Members table =
        describe<Field>("One column of a record set.")
            .readOnly("Value", &Field::value, "The present row's value; Null where there is none.")
            .asDefault()
            .readOnly("Name", &Field::Name, "The column's name.");
    return table;
}

Value Field::invoke(MemberId member, CallKind kind, std::span<Value> arguments)
{
    static const MemberId valueMember = members().id("Value");
    const bool isRead = kind == CallKind::get || kind == CallKind::method;
    if (isRead && arguments.empty() &&
        (member == valueMember || member == qmevents::defaultMember)) {
        return rows_->cell(column_);
    }
    return DescribedObject::invoke(member, kind, arguments);
}

std::string Field::Name() const { return rows_->cursor().columnName(column_); }

const Members& Fields::members() const
{
    static const Members table =
        describe<Fields>("The columns of a record set.")
            .readOnly("Item", &Fields::Item, {arg("Index")},
                      "The column of this name, in any case, or at this position from 0.")
            .asDefault()
            .readOnly("Count", &Fields::Count, "Number of columns.")
            .enumerator("NewEnum", &Fields::NewEnum);
    return table;
}

Ref<Field> Fields::Item(const Value& index)
{
    const Cursor& rows = rows_->cursor();
    if (!index.isText()) {
        const std::int32_t position = qmevents::toInt32(index);
        if (position < 0 || position >= Count()) {
            fail(noSuchColumn, "The record set has " + std::to_string(Count()) +
                                   " columns, none at position " + std::to_string(position) + ".");
        }
        return at(static_cast<std::size_t>(position));
    }
    if (const auto column = rows.columnIndex(index.text())) return at(*column);
    std::string names;
    for (std::size_t i = 0; i < rows.columnCount(); ++i) {
        names += (i == 0 ? "" : ", ") + rows.columnName(i);
    }
    fail(noSuchColumn,
         "The record set has no column \"" + index.text() + "\", but: " + names + ".");
}

Ref<Field> Fields::at(std::size_t column)
{
    fields_.resize(static_cast<std::size_t>(Count()));
    Ref<Field>& field = fields_[column];
    if (!field) field = makeRef<Field>(rows_, column);
    return field;
}

std::int32_t Fields::Count() const
{
    return static_cast<std::int32_t>(rows_->cursor().columnCount());
}

Ref<Enumerator> Fields::NewEnum() { return makeRef<FieldWalk>(Ref<Fields>(this)); }

const Members& RecordSet::members() const
{
    static const Members table =
        describe<RecordSet>("The rows of a query, read forward.")
            .readOnly("Fields", &RecordSet::fields, "The columns.")
            .asDefault()
            .readOnly("EOF", &RecordSet::isAtEnd, "Behind the last row.")
            .readOnly("BOF", &RecordSet::isAtStart, "Before the first row: only with no rows.")
            .method("MoveNext", &RecordSet::MoveNext, "Goes to the next row.")
            .method("MoveFirst", &RecordSet::MoveFirst, "Goes back to the first row.")
            .readOnly("RecordCount", &RecordSet::RecordCount, "Number of rows.")
            .method("Close", &RecordSet::Close, "Gives the rows back.");
    return table;
}

RecordSet::RecordSet(std::unique_ptr<Cursor> cursor)
    : rows_(std::make_shared<OpenRows>(std::move(cursor))), fields_(makeRef<Fields>(rows_))
{
}

bool RecordSet::isAtStart() const
{
    rows_->cursor();
    return rows_->isEmpty();
}

void RecordSet::MoveNext()
{
    Cursor& rows = rows_->cursor();
    if (rows.eof()) fail(noPresentRow, "There is no next row: the record set is at its end.");
    rows.next();
}

void RecordSet::MoveFirst()
{
    Cursor& rows = rows_->cursor();
    if (rows_->isEmpty()) fail(noPresentRow, "There is no first row: the record set is empty.");
    rows.moveFirst();
}

std::int32_t RecordSet::RecordCount()
{
    return static_cast<std::int32_t>(rows_->cursor().recordCount());
}

void RecordSet::Close()
{
    rows_->cursor(); // closing twice is an error of the caller
    rows_->close();
}

} // namespace refhost
