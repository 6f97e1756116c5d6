#include "host/document/catalog.h"

#include <algorithm>

namespace refhost {
namespace {

using qmevents::text::sameName;

// A note stands between these in the definition of a query.
constexpr std::string_view noteBegin = "/*columns ";
constexpr std::string_view noteEnd = "*/";
constexpr char updatableMark = '+', fixedMark = '-';

bool isHidden(std::string_view name)
{
    const std::string lower = qmevents::text::lowerAscii(name);
    return lower.starts_with("host_") || lower.starts_with("sqlite_");
}

std::string quoted(std::string_view text, char mark)
{
    std::string result(1, mark);
    for (const char c : text) {
        if (c == mark) result += mark;
        result += c;
    }
    return result += mark;
}

const std::string& textOf(const HostValue& value)
{
    static const std::string none;
    const auto* text = std::get_if<std::string>(&value);
    return text ? *text : none;
}

bool isTrue(const HostValue& value)
{
    const auto* whole = std::get_if<std::int64_t>(&value);
    return whole && *whole != 0;
}

void readNote(std::string_view definition, CatalogTable& query)
{
    const std::size_t begin = definition.find(noteBegin);
    const std::size_t end = definition.find(noteEnd, begin);
    if (begin == std::string_view::npos || end == std::string_view::npos) return;
    std::string_view note =
        definition.substr(begin + noteBegin.size(), end - begin - noteBegin.size());
    query.updatable = note.starts_with(updatableMark);
    for (CatalogColumn& column : query.columns) {
        if (note.empty()) return;
        note.remove_prefix(1); // the mark or the separator before the column
        const std::size_t length = std::min(note.find('|'), note.size());
        column.type = declaredType(note.substr(0, length));
        note.remove_prefix(length);
    }
}

} // namespace

const CatalogColumn* CatalogTable::find(std::string_view column) const
{
    for (const CatalogColumn& candidate : columns) {
        if (sameName(candidate.name, column)) return &candidate;
    }
    return nullptr;
}

const CatalogTable* Catalog::find(std::string_view name)
{
    const auto known = tables_.find(name);
    if (known != tables_.end()) return &known->second;
    if (isHidden(name)) return nullptr;
    const auto found = connection_.rows("SELECT name, type, sql FROM sqlite_schema WHERE "
                                        "type IN ('table', 'view') AND name = ? COLLATE NOCASE",
                                        {std::string(name)});
    if (found.empty()) return nullptr;
    CatalogTable table;
    table.name = textOf(found[0][0]);
    table.stored = textOf(found[0][1]) == "table";
    const auto columns = connection_.rows(
        "SELECT name, type, pk FROM pragma_table_xinfo(?) WHERE hidden = 0", {table.name});
    const bool simpleKey = std::count_if(columns.begin(), columns.end(),
                                         [](const HostRow& row) { return isTrue(row[2]); }) == 1;
    for (const HostRow& row : columns) {
        const std::string& type = textOf(row[1]);
        // Exactly this declaration makes the engine number the rows.
        const bool counter = simpleKey && isTrue(row[2]) && sameName(type, "INTEGER");
        table.columns.push_back({textOf(row[0]), declaredType(type), counter});
    }
    if (!table.stored) readNote(textOf(found[0][2]), table);
    return &tables_.emplace(table.name, std::move(table)).first->second;
}

std::string Catalog::definition(const std::string& table)
{
    const auto rows = connection_.rows(
        "SELECT sql FROM sqlite_schema WHERE type = 'table' AND name = ?", {table});
    return rows.empty() ? "" : textOf(rows[0][0]);
}

std::vector<std::string> Catalog::indexDefinitions(const std::string& table)
{
    std::vector<std::string> definitions;
    for (const HostRow& row : connection_.rows("SELECT sql FROM sqlite_schema WHERE type = 'index' "
                                               "AND tbl_name = ? AND sql IS NOT NULL",
                                               {table})) {
        definitions.push_back(textOf(row[0]));
    }
    return definitions;
}

std::string queryNote(const std::vector<SqlType>& types, bool updatable)
{
    std::string note(noteBegin);
    char separator = updatable ? updatableMark : fixedMark;
    for (const SqlType& type : types) {
        note += separator;
        note += declaration(type);
        separator = '|';
    }
    return note.append(noteEnd);
}

std::string quotedName(std::string_view name) { return quoted(name, '"'); }
std::string quotedText(std::string_view text) { return quoted(text, '\''); }

} // namespace refhost
