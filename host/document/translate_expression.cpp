#include "host/document/translator.h"

#include <algorithm>

#include "host/document/format_text.h"

namespace refhost {

using qmevents::text::sameName;
using syntax::Expr;
using syntax::ExprKind;
using syntax::Select;

namespace {

Piece makeCondition(std::string sql) { return {.sql = std::move(sql), .condition = true}; }

Piece makeValue(std::string sql, TypeKind kind)
{
    return {.sql = std::move(sql), .type = {.kind = kind}};
}

// Long chains of one operator stay flat, because the engine limits how deep brackets nest.
std::string withoutBrackets(const std::string& sql) { return sql.substr(1, sql.size() - 2); }

} // namespace

Piece Translator::expression(const Expr& expr, Scope& scope)
{
    const Token* const before = scope.ungrouped;
    Piece piece = anyExpression(expr, scope);
    // What GROUP BY names as a whole may hold any column.
    if (scope.checksGroups && scope.groupKeys.contains(piece.sql)) scope.ungrouped = before;
    return piece;
}

Piece Translator::anyExpression(const Expr& expr, Scope& scope)
{
    switch (expr.kind) {
    case ExprKind::literal:
        return literal(expr);
    case ExprKind::null:
        return {.sql = "NULL"};
    case ExprKind::boolean:
        return makeValue(expr.negative ? "0" : "(-1)", TypeKind::yesNo);
    case ExprKind::identity:
        return makeValue("host_identity()", TypeKind::int32);
    case ExprKind::column:
        return column(expr, scope);
    case ExprKind::negate:
        return negate(expr, scope);
    case ExprKind::arithmetic:
        return arithmetic(expr, scope);
    case ExprKind::comparison:
        return comparison(expr, scope);
    case ExprKind::logical:
        return logical(expr, scope);
    case ExprKind::negation:
        return makeCondition("(NOT " + condition(*expr.arguments[0], scope) + ")");
    case ExprKind::isNull:
        return isNull(expr, scope);
    case ExprKind::like:
        return like(expr, scope);
    case ExprKind::between:
        return between(expr, scope);
    case ExprKind::inList:
        return inList(expr, scope);
    case ExprKind::inQuery:
        return inQuery(expr, scope);
    case ExprKind::exists:
        return makeCondition((expr.negated ? "(NOT EXISTS (" : "(EXISTS (") +
                             query(*expr.query, &scope, Use::exists).sql + "))");
    case ExprKind::subquery:
        return subquery(expr, scope);
    case ExprKind::caseWhen:
        return caseWhen(expr, scope);
    case ExprKind::call:
        return call(expr, scope);
    case ExprKind::cast:
        return cast(expr, scope);
    }
    return {};
}

Piece Translator::value(const Expr& expr, Scope& scope)
{
    return asValue(expression(expr, scope), expr);
}

Piece Translator::asValue(Piece piece, const Expr& expr) const
{
    if (!piece.condition) return piece;
    if (sqlServer()) {
        refuse(expr.at, "a condition is no value in SQL Server; write CASE WHEN ... END");
    }
    return makeValue("(-" + piece.sql + ")", TypeKind::yesNo);
}

std::string Translator::condition(const Expr& expr, Scope& scope)
{
    return asCondition(expression(expr, scope), expr);
}

std::string Translator::asCondition(const Piece& piece, const Expr& expr) const
{
    if (piece.condition) return piece.sql;
    if (sqlServer()) {
        refuse(expr.at, "SQL Server wants a condition here; compare the value, as in <> 0");
    }
    if (piece.type.is(TypeKind::unknown)) return piece.sql;
    if (!piece.type.isNumber()) refuse(expr.at, "a condition is a comparison or a number");
    return "(" + (piece.stored.empty() ? piece.sql : piece.stored) + "<>0)";
}

Piece Translator::literal(const Expr& expr)
{
    Piece piece;
    piece.literal = &expr;
    piece.type.kind = literalKind(expr.at);
    if (!writtenOut_) {
        piece.parameter = static_cast<int>(parameters_.size());
        parameters_.push_back({.token = expr.tokenIndex, .negative = expr.negative});
        piece.sql = "?" + std::to_string(parameters_.size());
        return piece;
    }
    fixedTokens_.push_back(expr.tokenIndex);
    return converted(piece, piece.type, Purpose::compare);
}

Piece Translator::column(const Expr& expr, Scope& scope)
{
    std::string known;
    for (Scope* level = &scope; level; level = level->parent) {
        std::optional<std::size_t> foundIn;
        const CatalogColumn* found = nullptr;
        bool tableFound = false;
        for (std::size_t i = level->visibleFrom; i < level->sources.size(); ++i) {
            const Source& source = level->sources[i];
            if (!expr.qualifier.empty() && !sameName(source.alias, expr.qualifier)) continue;
            tableFound = true;
            for (const CatalogColumn& candidate : source.columns) {
                if (!sameName(candidate.name, expr.name)) continue;
                if (found) {
                    refuse(expr.at, "column '" + expr.name + "' is in more than one table");
                }
                found = &candidate;
                foundIn = i;
            }
        }
        if (found) return columnOf(*level, *foundIn, *found, expr.at);
        if (tableFound && !expr.qualifier.empty()) {
            refuse(expr.at, "table '" + expr.qualifier + "' has no column '" + expr.name + "'");
        }
    }
    if (!expr.qualifier.empty()) {
        refuse(expr.at, "there is no table '" + expr.qualifier + "' in reach here");
    }
    refuse(expr.at, "there is no column '" + expr.name + "' here");
}

Piece Translator::columnOf(Scope& scope, std::size_t source, const CatalogColumn& found,
                           const Token& at)
{
    Piece piece;
    piece.sql = quotedName(scope.sources[source].alias) + "." + quotedName(found.name);
    piece.type = found.type;
    scope.usedSources.push_back(source);
    // A stored query may have been made in the other dialect, too.
    if (found.type.is(TypeKind::yesNo)) {
        piece.stored = piece.sql;
        piece.sql = (sqlServer() ? "(" : "(-(") + piece.stored + (sqlServer() ? "<>0)" : "<>0))");
    }
    if (scope.checksGroups && !scope.insideAggregate && !scope.ungrouped &&
        !scope.groupKeys.contains(piece.sql)) {
        scope.ungrouped = &at;
    }
    return piece;
}

Piece Translator::comparison(const Expr& expr, Scope& scope)
{
    Piece left = value(*expr.arguments[0], scope);
    Piece right = value(*expr.arguments[1], scope);
    const bool texts = align(left, right, expr.at);
    const std::string first = texts ? collated(left.sql, {.kind = TypeKind::text}) : left.sql;
    return makeCondition("(" + first + expr.name + right.sql + ")");
}

Piece Translator::logical(const Expr& expr, Scope& scope)
{
    const Expr& first = *expr.arguments[0];
    std::string left = condition(first, scope);
    if (first.kind == ExprKind::logical && first.name == expr.name) left = withoutBrackets(left);
    return makeCondition("(" + left + " " + expr.name + " " + condition(*expr.arguments[1], scope) +
                         ")");
}

Piece Translator::isNull(const Expr& expr, Scope& scope)
{
    const Piece piece = value(*expr.arguments[0], scope);
    return makeCondition("(" + piece.sql + (expr.negated ? " IS NOT NULL)" : " IS NULL)"));
}

Piece Translator::like(const Expr& expr, Scope& scope)
{
    const SqlType text{.kind = TypeKind::text};
    const Piece left = converted(value(*expr.arguments[0], scope), text, Purpose::compare);
    const Piece pattern = converted(value(*expr.arguments[1], scope), text, Purpose::compare);
    const std::string_view negation = sqlServer() ? ",'^')" : ",'!')";
    const std::string matches = "host_like(" + pattern.sql + "," + left.sql + std::string(negation);
    return makeCondition(expr.negated ? "(NOT " + matches + ")" : "(" + matches + ")");
}

Piece Translator::between(const Expr& expr, Scope& scope)
{
    Piece piece = value(*expr.arguments[0], scope);
    Piece low = value(*expr.arguments[1], scope);
    Piece high = value(*expr.arguments[2], scope);
    align(piece, low, expr.at);
    align(piece, high, expr.at);
    std::string from = low.sql, to = high.sql;
    if (!sqlServer()) {
        // Jet takes the two ends in either order.
        const std::string ends = "(" + collated(low.sql, low.type) + "," + high.sql + ")";
        from = "min" + ends;
        to = "max" + ends;
    }
    return makeCondition("(" + collated(piece.sql, piece.type) +
                         (expr.negated ? " NOT BETWEEN " : " BETWEEN ") + from + " AND " + to +
                         ")");
}

Piece Translator::inList(const Expr& expr, Scope& scope)
{
    Piece piece = value(*expr.arguments[0], scope);
    std::string list;
    for (std::size_t i = 1; i < expr.arguments.size(); ++i) {
        Piece item = value(*expr.arguments[i], scope);
        align(piece, item, expr.arguments[i]->at);
        list += (i > 1 ? "," : "") + item.sql;
    }
    return makeCondition("(" + collated(piece.sql, piece.type) +
                         (expr.negated ? " NOT IN (" : " IN (") + list + "))");
}

QueryText Translator::singleColumn(const Expr& expr, Scope& scope)
{
    QueryText text = query(*expr.query, &scope, Use::value);
    if (text.outputs.size() != 1) refuse(expr.at, "a query used as a value gives one column");
    return text;
}

Piece Translator::inQuery(const Expr& expr, Scope& scope)
{
    const Piece piece = value(*expr.arguments[0], scope);
    const QueryText text = singleColumn(expr, scope);
    const SqlType& type = text.outputs[0].type;
    const bool fits = piece.type.kind == type.kind || (piece.type.isNumber() && type.isNumber()) ||
                      piece.type.is(TypeKind::unknown) || type.is(TypeKind::unknown);
    if (!fits) {
        refuse(expr.at, std::string(kindName(piece.type.kind)) +
                            " is not looked up among values of " +
                            std::string(kindName(type.kind)));
    }
    requireComparable(piece.type, expr.at, "compared");
    requireComparable(type, expr.at, "compared");
    return makeCondition("(" + collated(piece.sql, type) + (expr.negated ? " NOT IN (" : " IN (") +
                         text.sql + "))");
}

Piece Translator::subquery(const Expr& expr, Scope& scope)
{
    const QueryText text = singleColumn(expr, scope);
    const Select& first = expr.query->selects[0];
    const bool oneRow =
        expr.query->selects.size() == 1 && isGrouped(first) && first.groupBy.empty();
    const std::string rows =
        oneRow ? text.sql : "SELECT host_single(" + numberedColumn(0) + ") FROM (" + text.sql + ")";
    return {.sql = "(" + rows + ")", .type = text.outputs[0].type};
}

Piece Translator::caseWhen(const Expr& expr, Scope& scope)
{
    const std::size_t first = expr.withOperand ? 1 : 0;
    const std::size_t end = expr.arguments.size() - (expr.withElse ? 1 : 0);
    Piece operand;
    if (expr.withOperand) operand = value(*expr.arguments[0], scope);
    std::vector<std::string> conditions;
    std::vector<Piece> values;
    SqlType type;
    for (std::size_t i = first; i < end; i += 2) {
        const Expr& when = *expr.arguments[i];
        if (expr.withOperand) {
            Piece candidate = value(when, scope);
            align(operand, candidate, when.at);
            conditions.push_back(collated(operand.sql, operand.type) + "=" + candidate.sql);
        } else {
            conditions.push_back(condition(when, scope));
        }
        values.push_back(value(*expr.arguments[i + 1], scope));
    }
    if (expr.withElse) values.push_back(value(*expr.arguments.back(), scope));
    for (const Piece& piece : values) type = unify(type, piece.type, expr.at);
    std::string sql = "CASE";
    for (std::size_t i = 0; i < conditions.size(); ++i) {
        sql +=
            " WHEN " + conditions[i] + " THEN " + converted(values[i], type, Purpose::compare).sql;
    }
    std::string otherwise = "NULL";
    if (expr.withElse) otherwise = converted(values.back(), type, Purpose::compare).sql;
    return {.sql = sql + elseText(otherwise), .type = type};
}

Piece Translator::cast(const Expr& expr, Scope& scope)
{
    SqlType target{.kind = expr.type.type->kind, .length = expr.type.length};
    target.unlimited = expr.type.unlimited;
    target.incomparable = expr.type.type->incomparable;
    Piece piece = value(*expr.arguments[0], scope);
    if (expr.style) {
        const int style = std::stoi(std::string(expr.style->text)); // a token of digits, bounded
        const bool written = piece.type.is(TypeKind::date) && target.is(TypeKind::text);
        const bool read = piece.type.is(TypeKind::text) && target.is(TypeKind::date);
        if (!written && !read) refuse(*expr.style, "a style turns dates and texts into each other");
        if (!styledDate(qmevents::Date(), style)) refuse(*expr.style, "this style is not offered");
        const std::string function = written ? "host_styled(" : "host_read_styled(";
        piece = makeValue(function + piece.sql + "," + std::to_string(style) + ")",
                          written ? TypeKind::text : TypeKind::date);
    }
    return converted(piece, target, Purpose::cast);
}

} // namespace refhost
