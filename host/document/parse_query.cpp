#include "host/document/parser.h"

#include <utility>

#include "host/document/reserved_words.h"

namespace refhost {

using syntax::Expr;
using syntax::ExprKind;
using syntax::ExprPtr;
using syntax::JoinKind;
using syntax::OrderItem;
using syntax::Query;
using syntax::QueryPtr;
using syntax::Select;
using syntax::SelectItem;
using syntax::TableRef;
using syntax::TableRefPtr;

namespace {

constexpr int deepestQuery = 50; // Jet's limit, ample for the other engine
constexpr int mostJoined = 64;   // what the embedded engine can join
constexpr int mostJoinedInJet = 32;
constexpr int mostTables = 256; // in all queries of a statement; SQL Server's limit

bool isColumnEquality(const Expr& condition)
{
    return condition.kind == ExprKind::comparison && condition.name == "=" &&
           condition.arguments[0]->kind == ExprKind::column &&
           condition.arguments[1]->kind == ExprKind::column;
}

// Jet takes bare equalities of columns joined by AND; anything else stands in parentheses.
const Expr* firstBareCondition(const Expr& condition)
{
    if (condition.parenthesised || isColumnEquality(condition)) return nullptr;
    if (condition.kind != ExprKind::logical || condition.name != "AND") return &condition;
    for (const ExprPtr& side : condition.arguments) {
        if (const Expr* bare = firstBareCondition(*side)) return bare;
    }
    return nullptr;
}

} // namespace

QueryPtr Parser::query()
{
    const Nested nested(*this);
    if (++queryNesting_ > deepestQuery) {
        refuse(peek(), "queries are nested too deeply (at most 50 levels)");
    }
    auto result = std::make_unique<Query>();
    for (;;) {
        // A single SELECT may stand in parentheses of its own.
        const bool wrapped = acceptSymbol("(");
        result->selects.push_back(select());
        if (wrapped) expectSymbol(")", "after the SELECT");
        if (!acceptWord("UNION")) break;
        result->unionAll.push_back(acceptWord("ALL"));
    }
    if (acceptWord("ORDER")) {
        expectWord("BY", "after ORDER");
        result->orderBy = orderBy();
    }
    --queryNesting_;
    return result;
}

QueryPtr Parser::subquery()
{
    auto result = query();
    expectSymbol(")", "after the query");
    return result;
}

Select Parser::select()
{
    Select result;
    result.at = peek();
    expectWord("SELECT", "at the beginning of a query");
    if (acceptWord("DISTINCT")) {
        result.distinct = true;
    } else if (peek().isWord("DISTINCTROW")) {
        if (sqlServer()) refuse(peek(), "SQL Server has no DISTINCTROW");
        take();
        result.distinctRow = true;
    } else {
        acceptWord("ALL");
    }
    if (acceptWord("TOP")) top(result);
    do {
        result.items.push_back(selectItem());
    } while (acceptSymbol(","));
    if (peek().isWord("INTO")) refuse(peek(), "SELECT INTO is not offered");
    if (acceptWord("FROM")) {
        result.from = fromList();
        if (acceptWord("WHERE")) result.where = expression();
        if (acceptWord("GROUP")) {
            expectWord("BY", "after GROUP");
            do {
                result.groupBy.push_back(expression());
            } while (acceptSymbol(","));
        }
        if (acceptWord("HAVING")) result.having = expression();
    } else if (!sqlServer() && !(result.items.size() == 1 && result.items[0].expr &&
                                 result.items[0].expr->kind == ExprKind::identity)) {
        unexpected("FROM; without it Jet selects @@IDENTITY only");
    }
    return result;
}

void Parser::top(Select& select)
{
    const bool wrapped = sqlServer() && acceptSymbol("(");
    select.top = fixedInteger("a whole number after TOP");
    if (wrapped) expectSymbol(")", "after the number of rows");
    if (peek().isWord("PERCENT")) refuse(peek(), "TOP n PERCENT is not offered");
    if (peek().isWord("WITH")) refuse(peek(), "WITH TIES is not offered");
}

SelectItem Parser::selectItem()
{
    SelectItem item;
    item.at = peek();
    if (acceptSymbol("*")) return item;
    const bool named = peek().kind == TokenKind::word || peek().kind == TokenKind::delimited;
    if (named && peek(1).isSymbol(".") && peek(2).isSymbol("*")) {
        item.qualifier = nameOf(name("a table"));
        take();
        take();
        return item;
    }
    item.expr = expression();
    item.alias = columnAlias();
    return item;
}

std::string Parser::columnAlias()
{
    if (acceptWord("AS")) return nameOf(name("a column name after AS"));
    if (!startsName()) return "";
    if (!sqlServer()) unexpected("AS before the name of a column");
    return nameOf(take());
}

std::vector<TableRefPtr> Parser::fromList()
{
    std::vector<TableRefPtr> result;
    const int joinedAround = std::exchange(joined_, 0);
    do {
        result.push_back(joinTree());
    } while (acceptSymbol(","));
    joined_ = joinedAround;
    return result;
}

void Parser::countTable(const Token& at)
{
    const int most = sqlServer() ? mostJoined : mostJoinedInJet;
    if (++joined_ > most) {
        refuse(at, "too many tables in one FROM (at most " + std::to_string(most) + ")");
    }
    if (++tables_ > mostTables) {
        refuse(at, "too many tables (at most " + std::to_string(mostTables) + ")");
    }
}

TableRefPtr Parser::joinTree()
{
    TableRefPtr tree = tablePrimary();
    while (const auto kind = joinKind()) {
        auto join = std::make_unique<TableRef>();
        join->kind = TableRef::Kind::join;
        join->at = peek();
        join->join = *kind;
        join->left = std::move(tree);
        join->right = tablePrimary();
        if (*kind != JoinKind::cross) join->on = joinCondition();
        tree = std::move(join);
        // In Jet a further join is a level of its own; whoever reads on finds the join's word.
        if (!sqlServer()) break;
    }
    return tree;
}

std::optional<JoinKind> Parser::joinKind()
{
    struct Word {
        std::string_view word;
        JoinKind kind;
        bool inJet, outer;
    };
    static constexpr Word words[] = {
        {"INNER", JoinKind::inner, true, false},  {"LEFT", JoinKind::left, true, true},
        {"RIGHT", JoinKind::right, true, true},   {"FULL", JoinKind::full, false, true},
        {"CROSS", JoinKind::cross, false, false},
    };
    for (const Word& word : words) {
        if (!peek().isWord(word.word)) continue;
        if (!sqlServer() && !word.inJet) unexpected("the end of the tables");
        take();
        if (word.outer) acceptWord("OUTER");
        expectWord("JOIN", "here");
        return word.kind;
    }
    if (!peek().isWord("JOIN")) return std::nullopt;
    if (!sqlServer()) unexpected("a kind of join");
    take();
    return JoinKind::inner;
}

ExprPtr Parser::joinCondition()
{
    expectWord("ON", "after the joined table");
    ExprPtr condition = expression();
    if (!sqlServer()) {
        if (const Expr* bare = firstBareCondition(*condition)) {
            refuse(bare->at, "an ON with anything but equality of columns stands in parentheses");
        }
    }
    return condition;
}

TableRefPtr Parser::tablePrimary()
{
    if (!acceptSymbol("(")) return namedTable();
    const Nested nested(*this);
    if (peek().isWord("SELECT")) return derivedTable();
    TableRefPtr tree = joinTree();
    expectSymbol(")", "after the joined tables");
    if (tree->kind != TableRef::Kind::join) {
        refuse(tree->at, "only a join or a query stands in parentheses here");
    }
    if (startsName() || peek().isWord("AS")) unexpected("no name after a join in parentheses");
    return tree;
}

TableRefPtr Parser::derivedTable()
{
    auto result = std::make_unique<TableRef>();
    result->kind = TableRef::Kind::derived;
    result->at = peek();
    countTable(result->at);
    result->query = subquery();
    result->alias = tableAlias();
    if (result->alias.empty() && sqlServer()) {
        refuse(peek(), "a derived table needs a name in SQL Server");
    }
    return result;
}

TableRefPtr Parser::namedTable()
{
    auto result = std::make_unique<TableRef>();
    result->at = name("a table");
    result->name = nameOf(result->at);
    countTable(result->at);
    if (peek().isSymbol(".")) refuse(peek(), "a table has no owner or database in its name here");
    result->alias = tableAlias();
    if (peek().isWord("WITH")) refuse(peek(), "table hints are not offered");
    return result;
}

std::string Parser::tableAlias()
{
    if (acceptWord("AS")) return nameOf(name("a table name after AS"));
    // No reserved word, yet never meant as a name.
    if (peek().isWord("LIMIT") && peek(1).kind == TokenKind::integer) unexpected("a table's name");
    return startsName() ? nameOf(take()) : "";
}

std::vector<OrderItem> Parser::orderBy()
{
    std::vector<OrderItem> items;
    do {
        OrderItem item;
        item.expr = expression();
        item.descending = acceptWord("DESC");
        if (!item.descending) acceptWord("ASC");
        items.push_back(std::move(item));
    } while (acceptSymbol(","));
    return items;
}

} // namespace refhost
