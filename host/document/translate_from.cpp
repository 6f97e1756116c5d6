#include "host/document/translator.h"

#include <algorithm>

namespace refhost {

using qmevents::text::sameName;
using syntax::JoinKind;
using syntax::TableRef;
using syntax::TableRefPtr;

namespace {

constexpr std::string_view joinWord(JoinKind kind)
{
    switch (kind) {
    case JoinKind::inner:
        return " INNER JOIN ";
    case JoinKind::left:
        return " LEFT JOIN ";
    case JoinKind::right:
        return " RIGHT JOIN ";
    case JoinKind::full:
        return " FULL JOIN ";
    case JoinKind::cross:
        return " CROSS JOIN ";
    }
    return "";
}

bool holdsInnerJoin(const TableRef& ref)
{
    if (ref.kind != TableRef::Kind::join) return false;
    return ref.join == JoinKind::inner || holdsInnerJoin(*ref.left) || holdsInnerJoin(*ref.right);
}

} // namespace

std::string Translator::from(const std::vector<TableRefPtr>& tables, Scope& scope)
{
    std::string sql;
    for (const TableRefPtr& ref : tables) {
        const bool first = ref == tables.front();
        const std::string text = table(*ref, scope);
        const bool wrapped = !first && ref->kind == TableRef::Kind::join;
        sql += first ? "" : ", ";
        sql += wrapped ? "(" + text + ")" : text;
    }
    scope.visibleFrom = 0;
    return sql;
}

std::string Translator::table(const TableRef& ref, Scope& scope)
{
    switch (ref.kind) {
    case TableRef::Kind::table:
        return namedTable(ref, scope);
    case TableRef::Kind::derived:
        return derivedTable(ref, scope);
    case TableRef::Kind::join:
        return join(ref, scope);
    }
    return "";
}

std::string Translator::namedTable(const TableRef& ref, Scope& scope)
{
    const CatalogTable& table = tableNamed(ref.at);
    const std::string& alias = ref.alias.empty() ? table.name : ref.alias;
    addSource(scope,
              {.alias = alias,
               .table = table.name,
               .columns = table.columns,
               .stored = table.stored,
               .updatable = table.updatable},
              ref.at);
    return quotedName(table.name) + " AS " + quotedName(alias);
}

std::string Translator::derivedTable(const TableRef& ref, Scope& scope)
{
    const QueryText text = query(*ref.query, scope.parent, Use::derived);
    Source source{.alias = ref.alias};
    if (source.alias.empty()) {
        // Jet lets it go without a name; the marks keep this one out of every statement's reach.
        source.alias = "[" + std::to_string(scope.sources.size()) + "]";
    }
    for (const Output& output : text.outputs) {
        source.columns.push_back({output.name, output.type, false});
    }
    const std::string alias = source.alias;
    addSource(scope, std::move(source), ref.at);
    return "(" + text.sql + ") AS " + quotedName(alias);
}

void Translator::addSource(Scope& scope, Source source, const Token& at) const
{
    for (const Source& other : scope.sources) {
        if (sameName(other.alias, source.alias)) {
            refuse(at, "two tables of the query have the name '" + source.alias + "'");
        }
    }
    scope.sources.push_back(std::move(source));
}

// A join whose left side is a join needs no brackets around it; one on the right side does.
std::string Translator::join(const TableRef& ref, Scope& scope)
{
    const std::size_t outerVisible = scope.visibleFrom;
    const std::size_t begin = scope.sources.size();
    const std::string left = table(*ref.left, scope);
    const std::size_t middle = scope.sources.size();
    std::string right = table(*ref.right, scope);
    if (ref.right->kind == TableRef::Kind::join) right = "(" + right + ")";
    std::string sql = left + std::string(joinWord(ref.join)) + right;

    if (ref.on) {
        scope.visibleFrom = begin;
        scope.usedSources.clear();
        sql += " ON " + condition(*ref.on, scope);
        scope.visibleFrom = outerVisible;
        if (!sqlServer()) checkJetJoin(ref, scope, scope.usedSources);
    }
    const bool leftNullable = ref.join == JoinKind::right || ref.join == JoinKind::full;
    const bool rightNullable = ref.join == JoinKind::left || ref.join == JoinKind::full;
    for (std::size_t i = begin; i < scope.sources.size(); ++i) {
        if (i < middle ? leftNullable : rightNullable) scope.sources[i].nullable = true;
    }
    return sql;
}

void Translator::checkJetJoin(const TableRef& ref, const Scope& scope,
                              const std::vector<std::size_t>& joined) const
{
    constexpr std::string_view hint =
        "ambiguous outer joins: put the inner join into a derived table";
    const bool innerInside = (ref.join == JoinKind::left && holdsInnerJoin(*ref.right)) ||
                             (ref.join == JoinKind::right && holdsInnerJoin(*ref.left));
    const bool innerOnOuterSide =
        ref.join == JoinKind::inner &&
        std::any_of(joined.begin(), joined.end(),
                    [&](std::size_t source) { return scope.sources[source].nullable; });
    if (innerInside || innerOnOuterSide) refuse(ref.at, std::string(hint));
}

const CatalogTable& Translator::tableNamed(const Token& name)
{
    const CatalogTable* table = catalog_.find(nameOf(name));
    if (!table) {
        refuse(name, "there is no table or query '" + nameOf(name) + "'",
               SqlErrorNumber::noSuchTable);
    }
    return *table;
}

const CatalogTable& Translator::storedTable(const Token& name)
{
    const CatalogTable& table = tableNamed(name);
    if (!table.stored) refuse(name, "a stored query cannot be changed");
    return table;
}

} // namespace refhost
