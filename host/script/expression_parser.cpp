#include "host/script/expression_parser.h"

#include <algorithm>
#include <array>

namespace refhost::script {
namespace {

constexpr int deepestNesting = 100; // blocks and parentheses that the parser enters
constexpr int deepestTree = 250;    // of an expression, members and arguments included

struct OperatorWord {
    std::string_view word;
    Operator operation;
};
struct Level {
    std::array<OperatorWord, 7> operators;
    OperatorWord unary{}; // an operator that may stand before an operand of this level
};

// From the operators that bind least to those that bind most.
constexpr std::array levels{
    Level{{{{"imp", Operator::implies}}}},
    Level{{{{"eqv", Operator::equivalent}}}},
    Level{{{{"xor", Operator::exclusiveOr}}}},
    Level{{{{"or", Operator::logicalOr}}}},
    Level{{{{"and", Operator::logicalAnd}}}},
    Level{{}, {"not", Operator::logicalNot}},
    Level{{{{"=", Operator::equal},
            {"<>", Operator::notEqual},
            {"<", Operator::less},
            {"<=", Operator::lessOrEqual},
            {">", Operator::greater},
            {">=", Operator::greaterOrEqual},
            {"is", Operator::same}}}},
    Level{{{{"&", Operator::join}}}},
    Level{{{{"+", Operator::add}, {"-", Operator::subtract}}}},
    Level{{{{"mod", Operator::modulo}}}},
    Level{{{{"\\", Operator::divideWhole}}}},
    Level{{{{"*", Operator::multiply}, {"/", Operator::divide}}}},
    Level{{}, {"-", Operator::negate}},
    Level{{{{"^", Operator::power}}}},
};
constexpr std::size_t notLevel = 5;
constexpr std::size_t signLevel = 12;

bool isOperator(const Token& token, std::string_view word)
{
    if (word.empty()) return false;
    return token.kind == TokenKind::symbol ? token.text == word
                                           : token.kind == TokenKind::word && token.isWord(word);
}

int depthOf(const ExpressionPtr& expression) { return expression ? expression->depth : 0; }
int depthOf(const Expressions& expressions)
{
    int depth = 0;
    for (const auto& expression : expressions) depth = std::max(depth, depthOf(expression));
    return depth;
}

struct DepthOfChildren {
    int operator()(const Literal&) const { return 0; }
    int operator()(const Name&) const { return 0; }
    int operator()(const MemberOf& node) const { return depthOf(node.object); }
    int operator()(const Indexed& node) const
    {
        return std::max(depthOf(node.target), depthOf(node.arguments));
    }
    int operator()(const Grouped& node) const { return depthOf(node.inner); }
    int operator()(const Unary& node) const { return depthOf(node.operand); }
    int operator()(const Chain& node) const
    {
        int depth = depthOf(node.first);
        for (const auto& link : node.rest) depth = std::max(depth, depthOf(link.operand));
        return depth;
    }
};

} // namespace

ExpressionParser::Nested::Nested(ExpressionParser& parser) : parser_(parser)
{
    if (parser_.nesting_ == deepestNesting) parser_.fail(syntaxError, "nested too deeply");
    ++parser_.nesting_;
}

const Token& ExpressionParser::take()
{
    const Token& taken = token();
    if (taken.kind != TokenKind::end) ++at_;
    return taken;
}

bool ExpressionParser::acceptSymbol(std::string_view symbol)
{
    if (!token().isSymbol(symbol)) return false;
    ++at_;
    return true;
}

bool ExpressionParser::acceptWord(std::string_view word)
{
    if (!token().isWord(word)) return false;
    ++at_;
    return true;
}

void ExpressionParser::expectSymbol(std::string_view symbol, int number)
{
    if (!acceptSymbol(symbol)) fail(number);
}

void ExpressionParser::expectWord(std::string_view word)
{
    if (acceptWord(word)) return;
    const std::string found = token().endsStatement() ? "end of line" : std::string(token().text);
    throw SyntaxError{expectedWord, "Expected '" + std::string(word) + "' (found " + found + ")",
                      token().line};
}

std::string ExpressionParser::expectName()
{
    if (token().kind != TokenKind::name) fail(expectedName);
    return std::string(take().text);
}

void ExpressionParser::fail(int number) const
{
    fail(number, "found " + (token().endsStatement() ? "end of line" : std::string(token().text)));
}

void ExpressionParser::fail(int number, std::string_view detail) const
{
    throw SyntaxError{number, scriptError(number, detail).description(), token().line};
}

ExpressionPtr ExpressionParser::make(Expression expression) const
{
    expression.depth = 1 + std::visit(DepthOfChildren(), expression.node);
    if (expression.depth > deepestTree) fail(syntaxError, "nested too deeply");
    return std::make_unique<Expression>(std::move(expression));
}

ExpressionPtr ExpressionParser::parseLevel(std::size_t level)
{
    if (level == levels.size()) return parseOperand();
    const Level& here = levels[level];
    if (isOperator(token(), here.unary.word)) return parseUnary(here.unary.operation, level);
    if (level == signLevel && token().isSymbol("+")) return parseUnary(Operator::plus, level);
    ExpressionPtr first = parseLevel(level + 1);
    Chain chain;
    for (;;) {
        const auto found = std::find_if(
            here.operators.begin(), here.operators.end(),
            [&](const OperatorWord& candidate) { return isOperator(token(), candidate.word); });
        if (found == here.operators.end()) break;
        take();
        chain.rest.push_back({found->operation, parseLevel(level + 1)});
    }
    if (chain.rest.empty()) return first;
    chain.first = std::move(first);
    return make({std::move(chain)});
}

ExpressionPtr ExpressionParser::parseUnary(Operator operation, std::size_t level)
{
    const Nested nested(*this);
    take();
    ExpressionPtr operand = parseLevel(level);
    // A negative literal is a literal, too.
    const auto* literal = std::get_if<Literal>(&operand->node);
    if (operation == Operator::negate && literal && literal->value.isNumber()) {
        return make({Literal{applyUnary(operation, literal->value)}});
    }
    return make({Unary{operation, std::move(operand)}});
}

ExpressionPtr ExpressionParser::parseOperand()
{
    // `2 ^ -1` and `a = Not b`: a sign or Not behind an operator that binds more.
    if (token().isWord("not")) return parseUnary(Operator::logicalNot, notLevel);
    if (token().isSymbol("-")) return parseUnary(Operator::negate, signLevel);
    if (token().isSymbol("+")) return parseUnary(Operator::plus, signLevel);
    return parsePrimary();
}

// Behind a call's name in a With block, a blank and ".Name" begin its first argument.
bool ExpressionParser::continuesWithMember(bool inHead) const
{
    return token().isSymbol(".") && !(inHead && withBlocks_ > 0 && token().spaceBefore);
}

ExpressionPtr ExpressionParser::parsePrimary(bool inHead)
{
    const Nested nested(*this);
    lastArguments_ = 0;
    ExpressionPtr result;
    if (!inHead && token().kind == TokenKind::literal) {
        result = make({Literal{take().value}});
    } else if (token().kind == TokenKind::name) {
        result = make({Name{expectName()}});
    } else if (token().isSymbol(".")) {
        if (withBlocks_ == 0) fail(unqualifiedReference);
        take();
        result = make({MemberOf{nullptr, expectName()}});
    } else if (!inHead && acceptSymbol("(")) {
        result = make({Grouped{parseExpression()}});
        expectSymbol(")", expectedClosing);
    } else {
        fail(inHead ? expectedStatement : expectedExpression);
    }
    std::size_t lastArguments = 0;
    for (;;) {
        if (continuesWithMember(inHead)) {
            take();
            result = make({MemberOf{std::move(result), expectName()}});
            lastArguments = 0;
        } else if (token().isSymbol("(") && !std::holds_alternative<Literal>(result->node)) {
            lastArguments = at_;
            take();
            Indexed indexed{std::move(result), parseArguments()};
            expectSymbol(")", expectedClosing);
            result = make({std::move(indexed)});
        } else {
            break;
        }
    }
    lastArguments_ = lastArguments;
    return result;
}

Expressions ExpressionParser::parseArguments()
{
    Expressions arguments;
    if (token().isSymbol(")") || token().endsStatement()) return arguments;
    for (;;) {
        const bool omitted =
            token().isSymbol(",") || token().isSymbol(")") || token().endsStatement();
        arguments.push_back(omitted ? nullptr : parseExpression());
        if (!acceptSymbol(",")) return arguments;
    }
}

} // namespace refhost::script
