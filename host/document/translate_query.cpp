#include "host/document/translator.h"

#include <algorithm>

namespace refhost {

using syntax::Expr;
using syntax::ExprKind;
using syntax::ExprPtr;
using syntax::OrderItem;
using syntax::Query;
using syntax::Select;
using syntax::SelectItem;

namespace {

constexpr std::size_t mostJetColumns = 255;

bool holdsAggregate(const Expr* expr, Dialect dialect)
{
    if (!expr) return false;
    if (expr->kind == ExprKind::call && findFunction(dialect, expr->name)->aggregate) return true;
    return std::any_of(expr->arguments.begin(), expr->arguments.end(),
                       [&](const ExprPtr& child) { return holdsAggregate(child.get(), dialect); });
}

bool isNamed(Translator::Use use)
{
    return use == Translator::Use::derived || use == Translator::Use::view;
}

} // namespace

QueryText Translator::query(const Query& query, Scope* parent, Use use)
{
    const bool inner = isNamed(use) || use == Use::value || use == Use::exists;
    const Select& first = query.selects[0];
    if (sqlServer() && inner && !query.orderBy.empty() && !first.top) {
        refuse(query.orderBy[0].expr->at, "an inner query has no ORDER BY without TOP");
    }
    QueryText text = query.selects.size() == 1 ? select(first, query.orderBy, parent, use)
                                               : unionOf(query, parent, use);
    if (!sqlServer() && text.outputs.size() > mostJetColumns) {
        refuse(first.at, "a Jet query has at most 255 columns");
    }
    return text;
}

QueryText Translator::unionOf(const Query& query, Scope* parent, Use use)
{
    QueryText result;
    const bool collates =
        std::find(query.unionAll.begin(), query.unionAll.end(), false) != query.unionAll.end();
    for (std::size_t i = 0; i < query.selects.size(); ++i) {
        const Select& part = query.selects[i];
        QueryText text =
            select(part, {}, parent, i == 0 || use == Use::rows ? use : Use::result, collates);
        // A cut belongs to its own SELECT.
        if (part.top) text.sql = "SELECT * FROM (" + text.sql + ")";
        if (i == 0) {
            result = std::move(text);
        } else {
            unite(result.outputs, text.outputs, part.at);
            result.sql += (query.unionAll[i - 1] ? " UNION ALL " : " UNION ") + text.sql;
        }
        for (const Output& output : result.outputs) {
            if (collates) requireDistinct(output.type, part.at, "UNION");
        }
    }
    std::string order;
    for (const OrderItem& item : query.orderBy) {
        const auto output = orderedOutput(*item.expr, nullptr, result.outputs);
        if (!output) refuse(item.expr->at, "united queries are ordered by their columns");
        const SqlType& type = result.outputs[*output].type;
        requireComparable(type, item.expr->at, "sorted");
        order += order.empty() ? " ORDER BY " : ", ";
        order += collated(std::to_string(*output + 1), type) + (item.descending ? " DESC" : "");
    }
    result.sql += order;
    result.updatable = false;
    return result;
}

// Columns that are united have one kind of value.
void Translator::unite(std::vector<Output>& outputs, const std::vector<Output>& next,
                       const Token& at) const
{
    if (outputs.size() != next.size()) refuse(at, "united queries have the same number of columns");
    for (std::size_t i = 0; i < outputs.size(); ++i) {
        const SqlType& first = outputs[i].type;
        const SqlType& second = next[i].type;
        const bool known = !first.is(TypeKind::unknown) && !second.is(TypeKind::unknown);
        if (known && first.is(TypeKind::text) != second.is(TypeKind::text)) {
            refuse(at, "column " + std::to_string(i + 1) + " of the united queries is " +
                           std::string(kindName(first.kind)) + " before and " +
                           std::string(kindName(second.kind)) + " here");
        }
        outputs[i].type = unify(first, second, at);
    }
}

bool Translator::isGrouped(const Select& select) const
{
    return !select.groupBy.empty() || holdsAggregate(select.having.get(), dialect_) ||
           std::any_of(select.items.begin(), select.items.end(), [&](const SelectItem& item) {
               return holdsAggregate(item.expr.get(), dialect_);
           });
}

QueryText Translator::select(const Select& select, const std::vector<OrderItem>& orderBy,
                             Scope* parent, Use use, bool collates)
{
    Scope scope;
    scope.parent = parent;
    std::string rest;
    if (!select.from.empty()) rest = " FROM " + from(select.from, scope);
    if (select.where) rest += " WHERE " + condition(*select.where, scope);

    const bool grouped = isGrouped(select);
    // Where expressions are compared with each other, the values of their literals decide.
    const WrittenOut writtenOut(*this, grouped || select.distinct);
    rest += groupBy(select, scope);
    scope.aggregates = true;
    scope.checksGroups = grouped;
    scope.usedSources.clear();
    QueryText result;
    result.outputs = outputsOf(select, scope);
    if (select.distinctRow && !grouped) rest += distinctRowGroups(select, scope);
    if (select.having) {
        const Piece having = groupedExpression(*select.having, scope);
        rest += " HAVING " + asCondition(having, *select.having);
    }
    for (const Output& output : result.outputs) {
        if (select.distinct) requireDistinct(output.type, select.at, "DISTINCT");
    }
    nameOutputs(result.outputs, select.at, use);
    const auto order = orderTerms(select, orderBy, scope, result.outputs);
    result.updatable = !grouped && !select.distinct && !select.top &&
                       std::all_of(scope.sources.begin(), scope.sources.end(),
                                   [](const Source& source) { return source.updatable; });

    const bool ties = select.top && !sqlServer() && !order.empty();
    const std::string items = itemList(result.outputs, use, collates || select.distinct, ties);
    result.sql = (select.distinct ? "SELECT DISTINCT " : "SELECT ") + items;
    if (!ties) {
        result.sql += rest;
        if (!order.empty()) result.sql += " ORDER BY " + orderList(order, false);
        if (select.top) result.sql += " LIMIT " + std::to_string(*select.top);
        return result;
    }
    // Jet's TOP takes every row that ties with the last one; equal rows are dropped before.
    if (select.distinct) result.sql = "SELECT * FROM (" + result.sql + rest + ")";
    const std::string rank =
        ", RANK() OVER (ORDER BY " + orderList(order, select.distinct) + ") AS \"rank\"";
    if (select.distinct) {
        result.sql.insert(std::string_view("SELECT *").size(), rank);
    } else {
        result.sql += rank + rest;
    }
    std::string names;
    for (std::size_t i = 0; i < result.outputs.size(); ++i) {
        names += (i > 0 ? ", " : "") + numberedColumn(i);
        if (isNamed(use)) names += " AS " + quotedName(result.outputs[i].name);
    }
    result.sql = "SELECT " + names + " FROM (" + result.sql +
                 ") WHERE \"rank\" <= " + std::to_string(*select.top) + " ORDER BY \"rank\"";
    return result;
}

std::string Translator::itemList(const std::vector<Output>& outputs, Use use, bool collates,
                                 bool numbered) const
{
    std::string items;
    for (std::size_t i = 0; i < outputs.size(); ++i) {
        const Output& output = outputs[i];
        if (i > 0) items += ", ";
        const bool asStored = use == Use::result && !collates && !output.stored.empty();
        const std::string& sql = asStored ? output.stored : output.sql;
        items += collates ? collated(sql, output.type) : sql;
        if (numbered || use == Use::rows || use == Use::value) {
            items += " AS " + numberedColumn(i);
        } else if (isNamed(use)) {
            items += " AS " + quotedName(output.name);
        }
    }
    return items;
}

std::string Translator::groupBy(const Select& select, Scope& scope)
{
    std::string sql;
    for (const ExprPtr& item : select.groupBy) {
        const bool constant = item->kind == ExprKind::literal || item->kind == ExprKind::null;
        if (constant) refuse(item->at, "GROUP BY takes columns and expressions of columns");
        if (item->kind == ExprKind::subquery) refuse(item->at, "GROUP BY takes no subquery");
        const Piece piece = value(*item, scope);
        requireComparable(piece.type, item->at, "grouped");
        requireDistinct(piece.type, item->at, "GROUP BY");
        scope.groupKeys.insert(piece.sql);
        sql += (sql.empty() ? " GROUP BY " : ", ") + collated(piece.sql, piece.type);
    }
    return sql;
}

// DISTINCTROW drops the rows that differ only in tables of which no column is selected.
std::string Translator::distinctRowGroups(const Select& select, const Scope& scope) const
{
    std::set<std::size_t> used(scope.usedSources.begin(), scope.usedSources.end());
    if (used.size() == scope.sources.size()) return "";
    std::string sql;
    for (const std::size_t i : used) {
        const Source& source = scope.sources[i];
        if (!source.stored) refuse(select.at, "DISTINCTROW takes columns of tables");
        sql += (sql.empty() ? " GROUP BY " : ", ") + quotedName(source.alias) + ".rowid";
    }
    return sql;
}

void Translator::requireUngrouped(const Scope& scope) const
{
    if (!scope.ungrouped) return;
    refuse(*scope.ungrouped,
           "the column is neither aggregated nor part of an expression in GROUP BY");
}

Piece Translator::groupedExpression(const Expr& expr, Scope& scope)
{
    scope.ungrouped = nullptr;
    Piece piece = expression(expr, scope);
    requireUngrouped(scope);
    return piece;
}

void Translator::requireDistinct(const SqlType& type, const Token& at,
                                 std::string_view clause) const
{
    if (type.is(TypeKind::text) && (sqlServer() ? type.incomparable : type.unlimited)) {
        refuse(at, std::string(sqlServer() ? "NTEXT" : "MEMO") + " cannot stand in " +
                       std::string(clause));
    }
}

} // namespace refhost
