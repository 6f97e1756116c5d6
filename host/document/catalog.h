#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "automation/text.h"
#include "host/document/engine.h"
#include "host/document/sql_type.h"

namespace refhost {

struct CatalogColumn {
    std::string name;
    SqlType type;
    bool counter = false; ///< Numbered by the database.
};

/// A table or a stored query as statements see it.
struct CatalogTable {
    std::string name;
    bool stored = true;    ///< A table, no query.
    bool updatable = true; ///< A query that neither groups nor unites nor cuts.
    std::vector<CatalogColumn> columns;

    const CatalogColumn* find(std::string_view column) const;
};

/// What tables and queries a database has. Reads each from the database when it is first asked for.
class Catalog {
public:
    explicit Catalog(Connection& connection) : connection_(connection) {}

    /// Nothing when there is none, or when the name is the host's or the engine's own.
    const CatalogTable* find(std::string_view name);
    void forget() { tables_.clear(); }

    /// The statement that made a table, as the database keeps it.
    std::string definition(const std::string& table);
    /// The statements that made the indexes of a table.
    std::vector<std::string> indexDefinitions(const std::string& table);

private:
    Connection& connection_;
    std::unordered_map<std::string, CatalogTable, qmevents::text::NameHash,
                       qmevents::text::NameEqual>
        tables_;
};

/// What is noted about a query in its definition, and read back by the catalog.
std::string queryNote(const std::vector<SqlType>& types, bool updatable);

/// `name` quoted for the embedded engine.
std::string quotedName(std::string_view name);
/// `text` as a literal of the embedded engine.
std::string quotedText(std::string_view text);

} // namespace refhost
