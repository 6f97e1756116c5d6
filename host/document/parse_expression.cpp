#include <algorithm>
#include <span>

#include "host/document/functions.h"
#include "host/document/parser.h"
#include "host/document/reserved_words.h"

namespace refhost {

using syntax::Expr;
using syntax::ExprKind;
using syntax::ExprPtr;

namespace {

constexpr int deepestExpression = 500; // below what the embedded engine takes

// Operators between values; a higher level binds tighter.
struct Operator {
    std::string_view text;
    int level;
};
constexpr Operator sqlServerOperators[] = {
    {"*", 6}, {"/", 6}, {"%", 6}, {"+", 5}, {"-", 5},
};
constexpr Operator jetOperators[] = {
    {"^", 9}, {"*", 8}, {"/", 8}, {"\\", 7}, {"MOD", 6}, {"+", 5}, {"-", 5}, {"&", 4},
};

const Operator* findOperator(Dialect dialect, const Token& token)
{
    const auto search = [&](std::span<const Operator> operators) -> const Operator* {
        for (const Operator& candidate : operators) {
            if (token.isSymbol(candidate.text) || token.isWord(candidate.text)) return &candidate;
        }
        return nullptr;
    };
    if (dialect == Dialect::sqlServer) return search(sqlServerOperators);
    return search(jetOperators);
}

bool isComparison(const Token& token)
{
    static constexpr std::string_view signs[] = {"=", "<>", "<", ">", "<=", ">=", "!="};
    return std::any_of(std::begin(signs), std::end(signs),
                       [&](std::string_view sign) { return token.isSymbol(sign); });
}

// Words of other dialects that stand where a value should.
struct ForeignWord {
    std::string_view word, inSqlServer, inJet;
};
constexpr ForeignWord foreignWords[] = {
    {"CASE", "", "Jet has no CASE; write IIf(condition, value, value)"},
    {"TRUE", "SQL Server has no True; write 1", ""},
    {"FALSE", "SQL Server has no False; write 0", ""},
    {"CURRENT_TIMESTAMP", "write GETDATE()", "Jet has no CURRENT_TIMESTAMP; write Now()"},
};

std::string upperName(std::string_view name)
{
    std::string result(name);
    std::transform(result.begin(), result.end(), result.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; });
    return result;
}

} // namespace

ExprPtr Parser::make(ExprKind kind, const Token& at) const
{
    auto expr = std::make_unique<Expr>();
    expr->kind = kind;
    expr->at = at;
    return expr;
}

void Parser::adopt(Expr& parent, ExprPtr child) const
{
    parent.depth = std::max(parent.depth, child->depth + 1);
    if (parent.depth > deepestExpression) refuse(parent.at, "the expression is too long");
    parent.arguments.push_back(std::move(child));
}

ExprPtr Parser::combine(ExprKind kind, const Token& at, ExprPtr left, ExprPtr right) const
{
    ExprPtr expr = make(kind, at);
    expr->name = at.isSymbol("!=") ? "<>" : upperName(at.text);
    adopt(*expr, std::move(left));
    adopt(*expr, std::move(right));
    return expr;
}

ExprPtr Parser::expression()
{
    const Nested nested(*this);
    return logical(0);
}

ExprPtr Parser::logical(std::size_t level)
{
    static constexpr std::string_view words[] = {"OR", "AND"};
    if (level == std::size(words)) return negation();
    ExprPtr left = logical(level + 1);
    while (peek().isWord(words[level])) {
        const Token& at = take();
        left = combine(ExprKind::logical, at, std::move(left), logical(level + 1));
    }
    return left;
}

ExprPtr Parser::negation()
{
    if (!peek().isWord("NOT") || peek(1).isWord("EXISTS")) return predicate();
    const Nested nested(*this);
    ExprPtr expr = make(ExprKind::negation, take());
    adopt(*expr, negation());
    return expr;
}

ExprPtr Parser::predicate()
{
    if (peek().isWord("EXISTS") || peek().isWord("NOT")) {
        const bool negated = acceptWord("NOT");
        ExprPtr expr = make(ExprKind::exists, take());
        expr->negated = negated;
        expectSymbol("(", "after EXISTS");
        expr->query = subquery();
        return expr;
    }
    ExprPtr left = binary(0);
    if (isComparison(peek())) {
        const Token& at = take();
        return combine(ExprKind::comparison, at, std::move(left), binary(0));
    }
    if (peek().isWord("IS")) {
        ExprPtr expr = make(ExprKind::isNull, take());
        expr->negated = acceptWord("NOT");
        expectWord("NULL", "after IS");
        adopt(*expr, std::move(left));
        return expr;
    }
    return membership(std::move(left), acceptWord("NOT"));
}

// LIKE, BETWEEN and IN, or `left` alone.
ExprPtr Parser::membership(ExprPtr left, bool negated)
{
    const Token& at = peek();
    ExprPtr expr;
    if (acceptWord("LIKE")) {
        expr = combine(ExprKind::like, at, std::move(left), binary(0));
        if (peek().isWord("ESCAPE")) refuse(peek(), "LIKE ... ESCAPE is not offered; write [%]");
    } else if (acceptWord("BETWEEN")) {
        expr = combine(ExprKind::between, at, std::move(left), binary(0));
        expectWord("AND", "in BETWEEN");
        adopt(*expr, binary(0));
    } else if (acceptWord("IN")) {
        expectSymbol("(", "after IN");
        expr = make(peek().isWord("SELECT") ? ExprKind::inQuery : ExprKind::inList, at);
        adopt(*expr, std::move(left));
        if (expr->kind == ExprKind::inQuery) {
            expr->query = subquery();
        } else {
            do {
                adopt(*expr, binary(0));
            } while (acceptSymbol(","));
            expectSymbol(")", "after the list");
        }
    } else {
        if (negated) unexpected("LIKE, BETWEEN or IN after NOT");
        return left;
    }
    expr->negated = negated;
    return expr;
}

ExprPtr Parser::binary(int loosest)
{
    ExprPtr left = unary();
    for (;;) {
        const Operator* found = findOperator(dialect_, peek());
        if (!found || found->level < loosest) return left;
        const Token& at = take();
        left = combine(ExprKind::arithmetic, at, std::move(left), binary(found->level + 1));
    }
}

ExprPtr Parser::unary()
{
    while (acceptSymbol("+")) continue;
    if (!peek().isSymbol("-")) return primary();
    const Nested nested(*this);
    const Token& at = take();
    // Jet raises to a power before it negates.
    ExprPtr operand = sqlServer() ? unary() : binary(9);
    if (operand->kind == ExprKind::literal && !operand->parenthesised && !operand->negative &&
        (operand->at.kind == TokenKind::integer || operand->at.kind == TokenKind::decimal)) {
        operand->negative = true;
        return operand;
    }
    ExprPtr expr = make(ExprKind::negate, at);
    adopt(*expr, std::move(operand));
    return expr;
}

ExprPtr Parser::primary()
{
    const Token& at = peek();
    if (at.isLiteral()) return literal();
    if (at.kind == TokenKind::identity) return make(ExprKind::identity, take());
    if (at.isSymbol("(")) return parenthesised();
    if (at.kind == TokenKind::delimited) return columnReference();
    if (at.kind == TokenKind::word) return wordExpression();
    unexpected("a value");
}

ExprPtr Parser::parenthesised()
{
    const Token& at = take();
    if (peek().isWord("SELECT")) {
        ExprPtr expr = make(ExprKind::subquery, at);
        expr->query = subquery();
        return expr;
    }
    ExprPtr inner = expression();
    if (peek().isSymbol(",")) refuse(peek(), "rows of values cannot be compared");
    expectSymbol(")", "after the expression");
    inner->parenthesised = true;
    return inner;
}

ExprPtr Parser::literal()
{
    ExprPtr expr = make(ExprKind::literal, peek());
    expr->tokenIndex = at_;
    take();
    return expr;
}

ExprPtr Parser::wordExpression()
{
    const Token& at = peek();
    if (acceptWord("NULL")) return make(ExprKind::null, at);
    if (!sqlServer() && (at.isWord("TRUE") || at.isWord("FALSE"))) {
        ExprPtr expr = make(ExprKind::boolean, take());
        expr->negative = at.isWord("FALSE");
        return expr;
    }
    for (const ForeignWord& foreign : foreignWords) {
        const std::string_view reason = sqlServer() ? foreign.inSqlServer : foreign.inJet;
        if (!reason.empty() && at.isWord(foreign.word)) refuse(at, std::string(reason));
    }
    if (at.isWord("CASE")) return caseWhen();
    if (peek(1).isSymbol("(")) {
        if (sqlServer() && (at.isWord("CAST") || at.isWord("CONVERT"))) return conversion();
        return call();
    }
    return columnReference();
}

ExprPtr Parser::columnReference()
{
    Token first = name("a value");
    if (peek().isSymbol("(")) refuse(first, "a function's name does not stand in brackets");
    if (!acceptSymbol(".")) {
        ExprPtr expr = make(ExprKind::column, first);
        expr->name = nameOf(first);
        return expr;
    }
    const Token second = name("a column after the point");
    if (peek().isSymbol(".")) refuse(peek(), "a column is named by its table at most");
    ExprPtr expr = make(ExprKind::column, second);
    expr->qualifier = nameOf(first);
    expr->name = nameOf(second);
    return expr;
}

ExprPtr Parser::call()
{
    ExprPtr expr = make(ExprKind::call, take());
    expr->name = upperName(expr->at.text);
    const Function* function = findFunction(dialect_, expr->name);
    if (!function) refuse(expr->at, unknownFunction(dialect_, expr->name));
    take(); // the bracket
    if (function->aggregate) {
        if (expr->name == "COUNT" && acceptSymbol("*")) {
            expr->star = true;
        } else if (peek().isWord("DISTINCT")) {
            if (!sqlServer()) refuse(peek(), "Jet aggregates no distinct values; use a subquery");
            take();
            expr->distinct = true;
        }
    }
    if (!expr->star && !peek().isSymbol(")")) {
        do {
            adopt(*expr, expression());
        } while (acceptSymbol(","));
    }
    expectSymbol(")", "after the arguments");
    const std::size_t count = expr->arguments.size() + (expr->star ? 1 : 0);
    if (count < function->fewest || count > function->most) {
        refuse(expr->at, argumentCountRefusal(*function));
    }
    return expr;
}

ExprPtr Parser::caseWhen()
{
    const Nested nested(*this);
    ExprPtr expr = make(ExprKind::caseWhen, take());
    if (!peek().isWord("WHEN")) {
        expr->withOperand = true;
        adopt(*expr, expression());
    }
    while (acceptWord("WHEN")) {
        adopt(*expr, expression());
        expectWord("THEN", "after the condition");
        adopt(*expr, expression());
    }
    if (expr->arguments.size() < 2) unexpected("WHEN after CASE");
    if (acceptWord("ELSE")) {
        expr->withElse = true;
        adopt(*expr, expression());
    }
    expectWord("END", "after the last WHEN or ELSE");
    return expr;
}

// CAST(x AS type) and CONVERT(type, x, style)
ExprPtr Parser::conversion()
{
    ExprPtr expr = make(ExprKind::cast, take());
    take(); // the bracket
    if (expr->at.isWord("CAST")) {
        adopt(*expr, expression());
        expectWord("AS", "before the type");
        expr->type = typeUse();
    } else {
        expr->type = typeUse();
        expectSymbol(",", "after the type");
        adopt(*expr, expression());
        if (acceptSymbol(",")) {
            expr->style = peek();
            fixedInteger("the number of a style");
        }
    }
    expectSymbol(")", "after the conversion");
    return expr;
}

} // namespace refhost
