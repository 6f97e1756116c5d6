#include "host/document/translator.h"

#include <algorithm>
#include <charconv>

namespace refhost {

using qmevents::text::sameName;
using syntax::Expr;
using syntax::ExprKind;
using syntax::OrderItem;
using syntax::Select;
using syntax::SelectItem;

std::vector<Output> Translator::outputsOf(const Select& select, Scope& scope)
{
    std::vector<Output> outputs;
    for (const SelectItem& item : select.items) {
        if (item.expr) {
            outputs.push_back(outputOf(item, scope));
        } else {
            addStar(item, scope, outputs);
        }
    }
    return outputs;
}

void Translator::addStar(const SelectItem& item, Scope& scope, std::vector<Output>& outputs)
{
    bool found = false;
    for (std::size_t i = 0; i < scope.sources.size(); ++i) {
        if (!item.qualifier.empty() && !sameName(scope.sources[i].alias, item.qualifier)) continue;
        found = true;
        for (const CatalogColumn& column : scope.sources[i].columns) {
            scope.ungrouped = nullptr;
            Piece piece = columnOf(scope, i, column, item.at);
            requireUngrouped(scope);
            outputs.push_back({.name = column.name,
                               .type = piece.type,
                               .sql = std::move(piece.sql),
                               .stored = std::move(piece.stored),
                               .source = scope.sources[i].alias});
        }
    }
    if (!found) refuse(item.at, "there is no table here whose columns * could stand for");
}

Output Translator::outputOf(const SelectItem& item, Scope& scope)
{
    const Expr& expr = *item.expr;
    scope.sawAggregate = false;
    const std::size_t usedBefore = scope.usedSources.size();
    const Piece piece = asValue(groupedExpression(expr, scope), expr);
    Output output{.name = item.alias, .type = piece.type, .sql = piece.sql, .stored = piece.stored};
    output.aliased = !item.alias.empty();
    output.aggregate = scope.sawAggregate;
    if (expr.kind == ExprKind::column) {
        // Unless the column belongs to an outer query.
        const bool own = scope.usedSources.size() > usedBefore;
        if (own) output.source = scope.sources[scope.usedSources.back()].alias;
        if (!output.aliased) output.name = expr.name;
    }
    return output;
}

void Translator::nameOutputs(std::vector<Output>& outputs, const Token& at, Use use) const
{
    if (!sqlServer()) nameJetOutputs(outputs, at);
    if (use != Use::derived && use != Use::view) return;
    for (std::size_t i = 0; i < outputs.size(); ++i) {
        const std::string& name = outputs[i].name;
        if (name.empty()) {
            refuse(at, "column " + std::to_string(i + 1) + " of the inner query has no name");
        }
        const auto same = [&](const Output& other) { return sameName(other.name, name); };
        const auto end = outputs.begin() + static_cast<std::ptrdiff_t>(i);
        if (std::any_of(outputs.begin(), end, same)) {
            refuse(at, "two columns of the inner query have the name '" + name + "'");
        }
    }
}

// A name that two tables share becomes "table.name"; what has no name is numbered.
void Translator::nameJetOutputs(std::vector<Output>& outputs, const Token& at) const
{
    std::vector<std::string> names;
    for (std::size_t i = 0; i < outputs.size(); ++i) {
        const Output& output = outputs[i];
        if (output.name.empty()) {
            names.push_back("Expr" + std::to_string(1000 + i));
            continue;
        }
        bool shared = false;
        for (const Output& other : outputs) {
            if (&other == &output || !sameName(other.name, output.name)) continue;
            if (other.aliased && output.aliased) {
                refuse(at, "two columns have the name '" + output.name + "'");
            }
            shared = shared || other.aliased || other.source != output.source;
        }
        names.push_back(shared && !output.aliased ? output.source + "." + output.name
                                                  : output.name);
    }
    for (std::size_t i = 0; i < outputs.size(); ++i) outputs[i].name = std::move(names[i]);
}

std::optional<std::size_t> Translator::orderedOutput(const Expr& expr, const Scope* scope,
                                                     const std::vector<Output>& outputs)
{
    if (expr.kind == ExprKind::literal && expr.at.kind == TokenKind::integer) {
        fixedTokens_.push_back(expr.tokenIndex);
        std::size_t position = 0;
        std::from_chars(expr.at.text.data(), expr.at.text.data() + expr.at.text.size(), position);
        if (position < 1 || position > outputs.size() || expr.negative) {
            refuse(expr.at, "there is no column of this number to order by");
        }
        return position - 1;
    }
    if (expr.kind != ExprKind::column || !expr.qualifier.empty()) return std::nullopt;
    std::optional<std::size_t> found;
    for (std::size_t i = 0; i < outputs.size(); ++i) {
        // Jet looks among the columns of the tables first.
        const bool candidate = sqlServer() || !scope || outputs[i].aliased;
        if (!candidate || !sameName(outputs[i].name, expr.name)) continue;
        if (found) refuse(expr.at, "more than one column has the name '" + expr.name + "'");
        found = i;
    }
    if (!found || sqlServer() || !scope) return found;
    for (const Source& source : scope->sources) {
        for (const CatalogColumn& column : source.columns) {
            if (sameName(column.name, expr.name)) return std::nullopt;
        }
    }
    if (outputs[*found].aggregate) {
        refuse(expr.at, "Jet does not order by the name of an aggregate; repeat the expression");
    }
    return found;
}

std::vector<OrderTerm> Translator::orderTerms(const Select& select,
                                              const std::vector<OrderItem>& orderBy, Scope& scope,
                                              const std::vector<Output>& outputs)
{
    std::vector<OrderTerm> terms;
    for (const OrderItem& item : orderBy) {
        const Expr& expr = *item.expr;
        OrderTerm term{.descending = item.descending};
        term.output = orderedOutput(expr, &scope, outputs);
        if (term.output) {
            term.sql = outputs[*term.output].sql;
            term.type = outputs[*term.output].type;
        } else {
            const Piece piece = asValue(groupedExpression(expr, scope), expr);
            term.sql = piece.sql;
            term.type = piece.type;
            const auto same = [&](const Output& output) { return output.sql == piece.sql; };
            const auto found = std::find_if(outputs.begin(), outputs.end(), same);
            if (found != outputs.end()) {
                term.output = static_cast<std::size_t>(found - outputs.begin());
            }
        }
        requireComparable(term.type, expr.at, "sorted");
        if (select.distinct && !term.output) {
            refuse(expr.at, "with DISTINCT, what is ordered by is among the selected columns");
        }
        terms.push_back(std::move(term));
    }
    return terms;
}

std::string Translator::orderList(const std::vector<OrderTerm>& terms, bool byOutput) const
{
    std::string list;
    for (const OrderTerm& term : terms) {
        const std::string sql = byOutput ? numberedColumn(*term.output) : term.sql;
        list += (list.empty() ? "" : ", ") + collated(sql, term.type);
        if (term.descending) list += " DESC";
    }
    return list;
}

} // namespace refhost
