#include "host/demo/row_writer.h"

#include <string>

#include "automation/conversions.h"

namespace refhost::demo {

void RowWriter::add(std::string_view table, std::initializer_list<Cell> cells)
{
    std::string columns, values;
    for (const Cell& cell : cells) {
        if (!columns.empty()) {
            columns += ", ";
            values += ", ";
        }
        columns.append("[").append(cell.column).append("]");
        values += sqlLiteral(sql_.dialect(), cell.value, cell.kind);
    }
    std::string statement = "INSERT INTO ";
    statement.append(table).append(" (").append(columns).append(") VALUES (");
    sql_.execute(statement.append(values).append(")"));
}

std::int32_t RowWriter::insert(std::string_view table, std::initializer_list<Cell> cells)
{
    add(table, cells);
    return qmevents::toInt32(sql_.query("SELECT @@IDENTITY")->value(0));
}

void RowWriter::update(std::string_view table, std::int32_t id, const Cell& cell)
{
    std::string statement = "UPDATE ";
    statement.append(table).append(" SET [").append(cell.column).append("] = ");
    statement += sqlLiteral(sql_.dialect(), cell.value, cell.kind);
    sql_.execute(statement.append(" WHERE id = ").append(std::to_string(id)));
}

} // namespace refhost::demo
