#include "host/document/cursor.h"

#include "automation/text.h"
#include "host/document/cursor_source.h"

namespace refhost {

Cursor::Cursor(std::shared_ptr<CursorSource> source) : source_(std::move(source)) {}

Cursor::~Cursor() = default;

std::size_t Cursor::columnCount() const { return source_->columns().size(); }

const std::string& Cursor::columnName(std::size_t column) const
{
    return source_->columns().at(column).name;
}

const SqlType& Cursor::columnType(std::size_t column) const
{
    return source_->columns().at(column).type;
}

std::optional<std::size_t> Cursor::columnIndex(std::string_view name) const
{
    const auto& columns = source_->columns();
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (qmevents::text::sameName(columns[i].name, name)) return i;
    }
    return std::nullopt;
}

bool Cursor::eof() const { return source_->eof(); }
void Cursor::next() { source_->next(); }
void Cursor::moveFirst() { source_->moveFirst(); }
std::int64_t Cursor::recordCount() { return source_->count(); }
qmevents::Value Cursor::value(std::size_t column) const { return source_->cell(column); }
void Cursor::close() { source_->close(); }

} // namespace refhost
