#include "host/document/schema_change.h"

#include <algorithm>

#include "host/document/table_rebuild.h"
#include "host/document/translator.h"

namespace refhost {

using qmevents::text::sameName;
using syntax::AlterTable;
using syntax::ColumnDefinition;
using syntax::CreateIndex;
using syntax::CreateTable;
using syntax::CreateView;
using syntax::Drop;
using syntax::IndexColumn;
using syntax::KeyConstraint;
using syntax::ObjectKind;
using syntax::Statement;
using syntax::TypeUse;

namespace {

constexpr int widestSqlServerKey = 900; // bytes

SqlType typeOf(const TypeUse& use)
{
    SqlType type{.kind = use.type->kind, .length = use.length};
    type.unlimited = use.unlimited;
    type.incomparable = use.type->incomparable;
    return type;
}

int keyBytes(const SqlType& type)
{
    switch (type.kind) {
    case TypeKind::yesNo:
        return 1;
    case TypeKind::int16:
        return 2;
    case TypeKind::int32:
        return 4;
    case TypeKind::text:
        return 2 * type.length;
    default:
        return 8;
    }
}

class SchemaChange {
public:
    SchemaChange(Dialect dialect, Catalog& catalog) : dialect_(dialect), catalog_(catalog) {}

    std::vector<std::string> operator()(const CreateTable& create)
    {
        requireFree(create.name);
        std::string body;
        std::vector<std::string> names;
        for (const ColumnDefinition& column : create.columns) {
            const std::string name = nameOf(column.name);
            const auto same = [&](const std::string& other) { return sameName(other, name); };
            if (std::any_of(names.begin(), names.end(), same)) {
                refuse(column.name, "two columns have this name");
            }
            names.push_back(name);
            body += (body.empty() ? "" : ", ") + definition(column);
        }
        for (const KeyConstraint& key : create.keys) { body += keyText(create, key); }
        return {"CREATE TABLE " + quotedName(nameOf(create.name)) + " (" + body + ")"};
    }

    std::vector<std::string> operator()(const CreateIndex& create)
    {
        const CatalogTable& table = storedTable(create.table);
        int bytes = 0;
        std::string columns;
        for (const IndexColumn& item : create.columns) {
            const CatalogColumn* column = table.find(nameOf(item.name));
            if (!column) refuse(item.name, "the table has no such column");
            requireIndexable(column->type, item.name);
            bytes += keyBytes(column->type);
            columns += (columns.empty() ? "" : ", ") + quotedName(column->name) +
                       (item.descending ? " DESC" : "");
        }
        if (bytes > widestSqlServerKey && dialect_ == Dialect::sqlServer) {
            refuse(create.name, "the key of an index stays under 900 bytes");
        }
        const bool unique = create.unique || create.primary;
        return {std::string(unique ? "CREATE UNIQUE INDEX " : "CREATE INDEX ") +
                indexName(nameOf(create.table), nameOf(create.name)) + " ON " +
                quotedName(table.name) + " (" + columns + ")"};
    }

    std::vector<std::string> operator()(const AlterTable& alter)
    {
        const CatalogTable& table = storedTable(alter.table);
        if (alter.changed) return changedColumn(table, *alter.changed);
        std::vector<std::string> statements;
        for (const ColumnDefinition& column : alter.added) {
            if (table.find(nameOf(column.name))) {
                refuse(column.name, "the table has a column of this name");
            }
            if (column.counter || column.primaryKey || column.unique) {
                refuse(column.name, "a column that is added is no key");
            }
            statements.push_back("ALTER TABLE " + quotedName(table.name) + " ADD COLUMN " +
                                 definition(column));
        }
        return statements;
    }

    std::vector<std::string> operator()(const CreateView& create)
    {
        requireFree(create.name);
        const QueryText query = Translator(dialect_, catalog_).view(*create.query);
        std::vector<SqlType> types;
        for (const Output& output : query.outputs) types.push_back(output.type);
        return {"CREATE VIEW " + quotedName(nameOf(create.name)) + " " +
                queryNote(types, query.updatable) + " AS " + query.sql};
    }

    std::vector<std::string> operator()(const Drop& drop)
    {
        if (drop.kind == ObjectKind::index) {
            return {"DROP INDEX " + indexName(nameOf(drop.table), nameOf(drop.name))};
        }
        const CatalogTable* found = catalog_.find(nameOf(drop.name));
        const bool table = drop.kind == ObjectKind::table;
        if (!found || found->stored != table) {
            refuse(drop.name,
                   std::string("there is no ") + (table ? "table" : "stored query") + " '" +
                       nameOf(drop.name) + "'",
                   SqlErrorNumber::noSuchTable);
        }
        return {(table ? "DROP TABLE " : "DROP VIEW ") + quotedName(found->name)};
    }

    template <typename Other>
    std::vector<std::string> operator()(const Other&)
    {
        return {};
    }

private:
    void requireFree(const Token& name)
    {
        const std::string lower = qmevents::text::lowerAscii(nameOf(name));
        if (lower.starts_with("host_") || lower.starts_with("sqlite_")) {
            refuse(name, "names that begin so belong to the host");
        }
        if (catalog_.find(nameOf(name))) {
            refuse(name, "there is a table or query of this name already");
        }
    }

    const CatalogTable& storedTable(const Token& name)
    {
        const CatalogTable* table = catalog_.find(nameOf(name));
        if (!table || !table->stored) {
            refuse(name, "there is no table '" + nameOf(name) + "'", SqlErrorNumber::noSuchTable);
        }
        return *table;
    }

    // Each table has index names of its own; the file has one space of names.
    static std::string indexName(const std::string& table, const std::string& index)
    {
        return quotedName(qmevents::text::lowerAscii(table + "/" + index));
    }

    void requireIndexable(const SqlType& type, const Token& at) const
    {
        if (type.is(TypeKind::text) && type.unlimited) {
            refuse(at, "a text without a limit cannot be indexed");
        }
    }

    std::string definition(const ColumnDefinition& column)
    {
        const SqlType type = typeOf(column.type);
        std::string sql = quotedName(nameOf(column.name)) + " ";
        if (column.counter) return sql + "INTEGER PRIMARY KEY AUTOINCREMENT";
        sql += declaration(type);
        if (type.is(TypeKind::text)) sql += " COLLATE " + std::string(collationName(dialect_));
        // A yes/no column of Jet holds No where nothing was written.
        const bool jetYesNo = type.is(TypeKind::yesNo) && dialect_ == Dialect::jet;
        std::string defaultValue(jetYesNo ? "0" : "");
        if (column.defaultValue) {
            const CatalogColumn target{nameOf(column.name), type, false};
            defaultValue =
                Translator(dialect_, catalog_).defaultValue(*column.defaultValue, target);
        }
        if (jetYesNo) {
            sql += " NOT NULL ON CONFLICT REPLACE";
        } else if (column.notNull || column.primaryKey) {
            sql += " NOT NULL";
        }
        if (!defaultValue.empty()) sql += " DEFAULT (" + defaultValue + ")";
        if (column.primaryKey || column.unique) {
            requireIndexable(type, column.name);
            sql += column.primaryKey ? " PRIMARY KEY" : " UNIQUE";
        }
        return sql;
    }

    std::string keyText(const CreateTable& create, const KeyConstraint& key) const
    {
        std::string columns;
        bool counter = false;
        for (const Token& name : key.columns) {
            const auto column =
                std::find_if(create.columns.begin(), create.columns.end(),
                             [&](const ColumnDefinition& candidate) {
                                 return sameName(nameOf(candidate.name), nameOf(name));
                             });
            if (column == create.columns.end()) refuse(name, "the table has no such column");
            requireIndexable(typeOf(column->type), name);
            counter = counter || column->counter;
            columns += (columns.empty() ? "" : ", ") + quotedName(nameOf(column->name));
        }
        // A counter is the engine's primary key in any case.
        if (counter && key.columns.size() == 1) return "";
        const bool counted = std::any_of(create.columns.begin(), create.columns.end(),
                                         [](const ColumnDefinition& c) { return c.counter; });
        return std::string(key.primary && !counted ? ", PRIMARY KEY (" : ", UNIQUE (") + columns +
               ")";
    }

    std::vector<std::string> changedColumn(const CatalogTable& table,
                                           const ColumnDefinition& changed)
    {
        const CatalogColumn* column = table.find(nameOf(changed.name));
        if (!column) refuse(changed.name, "the table has no such column");
        if (column->counter || changed.counter) {
            refuse(changed.name, "a column that numbers the rows stays as it is");
        }
        if (changed.defaultValue && dialect_ == Dialect::sqlServer) {
            refuse(changed.defaultValue->at, "SQL Server changes a default by a constraint only");
        }
        if (changed.primaryKey || changed.unique) {
            refuse(changed.name, "a key is not changed with the column");
        }
        return rebuildStatements(catalog_, table,
                                 {column, definition(changed), typeOf(changed.type)}, dialect_);
    }

    Dialect dialect_;
    Catalog& catalog_;
};

} // namespace

Plan schemaPlan(Dialect dialect, Catalog& catalog, const Statement& statement)
{
    Plan plan;
    plan.kind = Plan::Kind::schema;
    plan.sql = std::visit(SchemaChange(dialect, catalog), statement);
    return plan;
}

} // namespace refhost
