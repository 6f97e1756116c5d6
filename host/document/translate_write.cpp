#include "host/document/translator.h"

#include <algorithm>

namespace refhost {

using qmevents::text::sameName;
using syntax::Assignment;
using syntax::Delete;
using syntax::Expr;
using syntax::ExprKind;
using syntax::ExprPtr;
using syntax::Insert;
using syntax::Query;
using syntax::QueryPtr;
using syntax::Statement;
using syntax::TableRef;
using syntax::Update;

namespace {

// The tables that a statement which names only one works on.
Source sourceOf(const CatalogTable& table)
{
    return {.alias = table.name, .table = table.name, .columns = table.columns, .stored = true};
}

} // namespace

Plan Translator::plan(const Statement& statement)
{
    if (const auto* read = std::get_if<QueryPtr>(&statement)) {
        QueryText text = query(**read, nullptr, Use::result);
        Plan plan = finish(Plan::Kind::read, std::move(text.sql));
        for (Output& output : text.outputs) {
            plan.columns.push_back({std::move(output.name), output.type});
        }
        return plan;
    }
    if (const auto* added = std::get_if<Insert>(&statement)) return insert(*added);
    if (const auto* changed = std::get_if<Update>(&statement)) return update(*changed);
    return deletion(std::get<Delete>(statement));
}

QueryText Translator::view(const Query& stored)
{
    const WrittenOut writtenOut(*this, true);
    return query(stored, nullptr, Use::view);
}

std::string Translator::defaultValue(const Expr& expr, const CatalogColumn& column)
{
    const WrittenOut writtenOut(*this, true);
    Scope nothing;
    return assigned(value(expr, nothing), column, expr.at);
}

Plan Translator::finish(Plan::Kind kind, std::string sql)
{
    Plan plan;
    plan.kind = kind;
    plan.sql.push_back(std::move(sql));
    plan.parameters = std::move(parameters_);
    plan.fixedTokens = std::move(fixedTokens_);
    return plan;
}

Plan Translator::insert(const Insert& insert)
{
    const CatalogTable& table = storedTable(insert.table);
    const auto columns = insertColumns(insert, table);
    std::string names;
    for (const CatalogColumn* column : columns) {
        names += (names.empty() ? "" : ", ") + quotedName(column->name);
    }
    const std::string values =
        insert.query ? insertedQuery(insert, columns) : insertedRows(insert, columns);
    Plan plan = finish(Plan::Kind::write,
                       "INSERT INTO " + quotedName(table.name) + " (" + names + ") " + values);
    const bool counted = std::any_of(table.columns.begin(), table.columns.end(),
                                     [](const CatalogColumn& column) { return column.counter; });
    plan.identity = counted ? Plan::Identity::counted : Plan::Identity::uncounted;
    return plan;
}

std::vector<const CatalogColumn*> Translator::insertColumns(const Insert& insert,
                                                            const CatalogTable& table) const
{
    std::vector<const CatalogColumn*> columns;
    for (const Token& name : insert.columns) {
        const CatalogColumn* column = table.find(nameOf(name));
        if (!column) {
            refuse(name, "table '" + table.name + "' has no column '" + nameOf(name) + "'");
        }
        if (column->counter && sqlServer()) {
            refuse(name, "the database itself numbers this IDENTITY column");
        }
        if (std::find(columns.begin(), columns.end(), column) != columns.end()) {
            refuse(name, "the column is named twice");
        }
        columns.push_back(column);
    }
    if (!insert.columns.empty()) return columns;
    for (const CatalogColumn& column : table.columns) {
        if (!column.counter || !sqlServer()) columns.push_back(&column);
    }
    return columns;
}

std::string Translator::insertedRows(const Insert& insert,
                                     const std::vector<const CatalogColumn*>& columns)
{
    Scope nothing;
    std::string sql;
    for (const std::vector<ExprPtr>& row : insert.rows) {
        if (row.size() != columns.size()) {
            refuse(insert.table, "there are " + std::to_string(columns.size()) + " columns and " +
                                     std::to_string(row.size()) + " values");
        }
        sql += sql.empty() ? "VALUES (" : ", (";
        for (std::size_t i = 0; i < row.size(); ++i) {
            if (i > 0) sql += ", ";
            sql += assigned(value(*row[i], nothing), *columns[i], row[i]->at);
        }
        sql += ")";
    }
    return sql;
}

std::string Translator::insertedQuery(const Insert& insert,
                                      const std::vector<const CatalogColumn*>& columns)
{
    const QueryText text = query(*insert.query, nullptr, Use::rows);
    if (text.outputs.size() != columns.size()) {
        refuse(insert.table, "there are " + std::to_string(columns.size()) +
                                 " columns and the query gives " +
                                 std::to_string(text.outputs.size()));
    }
    std::string list;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const Piece piece{.sql = numberedColumn(i), .type = text.outputs[i].type};
        list += (i > 0 ? ", " : "") + assigned(piece, *columns[i], insert.table);
    }
    return "SELECT " + list + " FROM (" + text.sql + ")";
}

std::string Translator::where(const ExprPtr& where, Scope& scope)
{
    return where ? " WHERE " + condition(*where, scope) : "";
}

Plan Translator::update(const Update& update)
{
    const bool alone = update.from.size() == 1 && update.from[0]->kind == TableRef::Kind::table &&
                       update.from[0]->alias.empty();
    const bool simple = update.from.empty() || (alone && !sqlServer());
    std::string sql =
        simple ? simpleUpdate(update, storedTable(update.target)) : joinedUpdate(update);
    return finish(Plan::Kind::write, std::move(sql));
}

std::string Translator::simpleUpdate(const Update& update, const CatalogTable& table)
{
    Scope scope;
    scope.sources.push_back(sourceOf(table));
    std::vector<std::string> columns;
    const std::vector<std::string> values = assignments(update, 0, scope, columns);
    std::string list;
    for (std::size_t i = 0; i < values.size(); ++i) {
        list += (i > 0 ? ", " : "") + columns[i] + " = " + values[i];
    }
    return "UPDATE " + quotedName(table.name) + " SET " + list + where(update.where, scope);
}

// The rows to change and their new values are found by a query over the join.
std::string Translator::joinedUpdate(const Update& update)
{
    Scope scope;
    const std::string tables = from(update.from, scope);
    const std::size_t target =
        sqlServer() ? targetNamed(update.target, scope) : jetUpdateTarget(update, scope);
    const Source& source = scope.sources[target];
    if (!source.stored) refuse(update.target, "only a table can be changed");
    std::vector<std::string> columns;
    const std::vector<std::string> values = assignments(update, target, scope, columns);
    std::string set, found = quotedName(source.alias) + ".rowid AS \"row\"";
    for (std::size_t i = 0; i < values.size(); ++i) {
        set += (i > 0 ? ", " : "") + columns[i] + " = \"new\"." + numberedColumn(i);
        found += ", " + values[i] + " AS " + numberedColumn(i);
    }
    const std::string table = quotedName(source.table);
    return "UPDATE " + table + " SET " + set + " FROM (SELECT " + found + " FROM " + tables +
           where(update.where, scope) + ") AS \"new\" WHERE " + table + ".rowid = \"new\".\"row\"";
}

// Jet finds the table to change by the columns that are set.
std::size_t Translator::jetUpdateTarget(const Update& update, const Scope& scope) const
{
    for (const Source& source : scope.sources) {
        if (!source.updatable) {
            refuse(update.target, "the operation must use an updateable query: no derived table, "
                                  "no grouped query and no UNION stands in an UPDATE");
        }
    }
    std::optional<std::size_t> target;
    for (const Assignment& assignment : update.assignments) {
        std::optional<std::size_t> found;
        for (std::size_t i = 0; i < scope.sources.size(); ++i) {
            const Source& source = scope.sources[i];
            if (!assignment.qualifier.empty() && !sameName(source.alias, assignment.qualifier)) {
                continue;
            }
            const bool has = std::any_of(
                source.columns.begin(), source.columns.end(),
                [&](const CatalogColumn& c) { return sameName(c.name, assignment.column); });
            if (!has) continue;
            if (found) refuse(assignment.at, "the column is in more than one table");
            found = i;
        }
        if (!found) refuse(assignment.at, "none of the tables has this column");
        if (target && *target != *found) refuse(assignment.at, "one table is changed at a time");
        target = found;
    }
    return *target;
}

std::vector<std::string> Translator::assignments(const Update& update, std::size_t target,
                                                 Scope& scope, std::vector<std::string>& columns)
{
    const Source source = scope.sources[target];
    std::vector<std::string> values;
    for (const Assignment& assignment : update.assignments) {
        const auto column =
            std::find_if(source.columns.begin(), source.columns.end(), [&](const CatalogColumn& c) {
                return sameName(c.name, assignment.column);
            });
        const bool elsewhere =
            !assignment.qualifier.empty() && !sameName(assignment.qualifier, source.alias);
        if (column == source.columns.end() || elsewhere) {
            refuse(assignment.at, "table '" + source.alias + "' has no such column to change");
        }
        if (column->counter) refuse(assignment.at, "the database itself numbers this column");
        const std::string name = quotedName(column->name);
        if (std::find(columns.begin(), columns.end(), name) != columns.end()) {
            refuse(assignment.at, "the column is set twice");
        }
        if (!sqlServer() && assignment.value->kind == ExprKind::subquery) {
            refuse(assignment.value->at, "the operation must use an updateable query: Jet sets no "
                                         "column to a subquery");
        }
        columns.push_back(name);
        values.push_back(assigned(value(*assignment.value, scope), *column, assignment.value->at));
    }
    return values;
}

Plan Translator::deletion(const Delete& deletion)
{
    Scope scope;
    std::string sql;
    if (deletion.from.empty()) {
        const CatalogTable& table = storedTable(deletion.target);
        scope.sources.push_back(sourceOf(table));
        sql = "DELETE FROM " + quotedName(table.name) + where(deletion.where, scope);
    } else {
        const std::string tables = from(deletion.from, scope);
        const Source& source = scope.sources[targetNamed(deletion.target, scope)];
        if (!source.stored) refuse(deletion.target, "only rows of a table can be deleted");
        sql = "DELETE FROM " + quotedName(source.table) + " WHERE rowid IN (SELECT " +
              quotedName(source.alias) + ".rowid FROM " + tables + where(deletion.where, scope) +
              ")";
    }
    return finish(Plan::Kind::write, std::move(sql));
}

std::size_t Translator::targetNamed(const Token& name, const Scope& scope) const
{
    for (std::size_t i = 0; i < scope.sources.size(); ++i) {
        if (sameName(scope.sources[i].alias, nameOf(name))) return i;
    }
    refuse(name, "the table to change is not among the tables of FROM");
}

} // namespace refhost
