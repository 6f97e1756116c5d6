#include "host/document/table_rebuild.h"

#include <algorithm>

#include "host/document/convert.h"

namespace refhost {
namespace {

const std::string rebuilt = "\"host_rebuilt\"";

// The column and key definitions of a CREATE TABLE as the document writes it.
std::vector<std::string> definitionsOf(std::string_view create)
{
    std::vector<std::string> definitions;
    const std::size_t open = create.find('(');
    std::string current;
    int depth = 0;
    char quote = '\0';
    for (std::size_t i = open; i < create.size(); ++i) {
        const char c = create[i];
        if (quote != '\0') {
            if (c == quote) quote = '\0'; // a doubled one opens again at once
        } else if (c == '"' || c == '\'') {
            quote = c;
        } else if (c == '(' && depth++ == 0) {
            continue;
        } else if ((c == ')' && --depth == 0) || (c == ',' && depth == 1)) {
            definitions.push_back(
                current.substr(std::min(current.find_first_not_of(' '), current.size())));
            current.clear();
            if (depth == 0) break;
            continue;
        }
        current += c;
    }
    return definitions;
}

} // namespace

std::vector<std::string> rebuildStatements(Catalog& catalog, const CatalogTable& table,
                                           const ChangedColumn& changed, Dialect dialect)
{
    const std::string name = quotedName(table.name);
    const std::string column = quotedName(changed.before->name);
    std::string body;
    for (std::string& definition : definitionsOf(catalog.definition(table.name))) {
        if (definition.starts_with(column + " ")) {
            std::string replaced = changed.definition;
            for (const std::string_view key : {" PRIMARY KEY", " UNIQUE"}) {
                if (definition.ends_with(key)) replaced += key;
            }
            definition = std::move(replaced);
        }
        body += (body.empty() ? "" : ", ") + definition;
    }

    std::string columns, values;
    for (const CatalogColumn& other : table.columns) {
        const std::string quoted = quotedName(other.name);
        columns += (columns.empty() ? "" : ", ") + quoted;
        values += values.empty() ? "" : ", ";
        values += quoted == column ? convertedSql(quoted, other.type.kind, changed.type, dialect,
                                                  Purpose::assign)
                                   : quoted;
    }
    std::vector<std::string> statements = {
        // Stored queries that read the table are left as they are.
        "PRAGMA legacy_alter_table = ON",
        "CREATE TABLE " + rebuilt + " (" + body + ")",
        "INSERT INTO " + rebuilt + " (" + columns + ") SELECT " + values + " FROM " + name,
    };
    const bool counted = std::any_of(table.columns.begin(), table.columns.end(),
                                     [](const CatalogColumn& other) { return other.counter; });
    if (counted) {
        statements.emplace_back("DELETE FROM sqlite_sequence WHERE name = 'host_rebuilt'");
        statements.push_back("INSERT INTO sqlite_sequence (name, seq) SELECT 'host_rebuilt', seq "
                             "FROM sqlite_sequence WHERE name = " +
                             quotedText(table.name));
    }
    statements.push_back("DROP TABLE " + name);
    statements.push_back("ALTER TABLE " + rebuilt + " RENAME TO " + name);
    for (std::string& index : catalog.indexDefinitions(table.name)) {
        statements.push_back(std::move(index));
    }
    statements.emplace_back("PRAGMA legacy_alter_table = OFF");
    return statements;
}

} // namespace refhost
