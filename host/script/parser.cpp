#include "host/script/parser.h"

#include <algorithm>

#include "host/script/statement_parser.h"

namespace refhost::script {
namespace {

// Words that begin a statement of the language that this interpreter has not got.
constexpr std::array<std::string_view, 6> unsupported{"class",  "goto", "resume",
                                                      "static", "stop", "property"};

} // namespace

const std::array<StatementParser::Verb, 18> StatementParser::verbs{{
    {"call", &StatementParser::parseCall},
    {"const", &StatementParser::parseConst},
    {"dim", &StatementParser::parseDim},
    {"do", &StatementParser::parseDo},
    {"erase", &StatementParser::parseErase},
    {"exit", &StatementParser::parseExit},
    {"for", &StatementParser::parseFor},
    {"function", &StatementParser::parseProcedure},
    {"if", &StatementParser::parseIf},
    {"on", &StatementParser::parseOn},
    {"private", &StatementParser::parseVisibility},
    {"public", &StatementParser::parseVisibility},
    {"redim", &StatementParser::parseReDim},
    {"select", &StatementParser::parseSelect},
    {"set", &StatementParser::parseSet},
    {"sub", &StatementParser::parseProcedure},
    {"while", &StatementParser::parseWhile},
    {"with", &StatementParser::parseWith},
}};

void StatementParser::parseUnit()
{
    skipSeparators();
    while (token().isWord("option")) parseOption();
    unit_.body = parseBlock();
    if (token().isWord("loop")) fail(loopWithoutDo);
    if (token().kind != TokenKind::end) fail(expectedStatement);
}

ExpressionPtr StatementParser::parseOnlyExpression()
{
    skipSeparators();
    ExpressionPtr result = parseExpression();
    skipSeparators();
    if (token().kind != TokenKind::end) fail(expectedEndOfStatement);
    return result;
}

void StatementParser::skipSeparators()
{
    while (token().kind == TokenKind::newLine || token().kind == TokenKind::colon) take();
}

bool StatementParser::atEndOfStatement() const
{
    return token().endsStatement() ||
           (inOneLine_ && (token().isWord("else") || token().isWord("end")));
}

void StatementParser::endOfStatement()
{
    if (!atEndOfStatement()) fail(expectedEndOfStatement);
}

bool StatementParser::endsBlock() const
{
    constexpr std::array<std::string_view, 7> words{"end",  "else", "elseif", "case",
                                                    "loop", "next", "wend"};
    return token().kind == TokenKind::word &&
           std::any_of(words.begin(), words.end(),
                       [&](std::string_view word) { return token().isWord(word); });
}

void StatementParser::expectEnd(std::string_view what)
{
    expectWord("End");
    expectWord(what);
}

// Statements up to the word that ends the block, which stays.
Block StatementParser::parseBlock()
{
    const Nested nested(*this);
    Block block;
    for (;;) {
        skipSeparators();
        if (token().kind == TokenKind::end || endsBlock()) return block;
        parseStatement(block);
        endOfStatement();
    }
}

// A block inside a statement: no procedure begins there.
Block StatementParser::parseInner()
{
    ++blocks_;
    const bool outer = std::exchange(inOneLine_, false);
    Block block = parseBlock();
    inOneLine_ = outer;
    --blocks_;
    return block;
}

void StatementParser::parseStatement(Block& block)
{
    refuseUnsupported();
    if (token().kind != TokenKind::word) return parseSimple(block);
    for (const auto& [word, handler] : verbs) {
        if (token().isWord(word)) return (this->*handler)(block);
    }
    fail(expectedStatement);
}

void StatementParser::refuseUnsupported() const
{
    // Some of them are names, too, unless another name follows.
    const bool begins = token().kind == TokenKind::word || tokenAfter().kind == TokenKind::name;
    for (const std::string_view word : unsupported) {
        if (begins && token().isWord(word)) {
            fail(syntaxError, std::string(token().text) + " is not supported");
        }
    }
}

void StatementParser::parseSet(Block& block)
{
    const int line = take().line;
    ExpressionPtr target = parsePrimary(true);
    expectSymbol("=", expectedEquals);
    if (token().isWord("new")) fail(syntaxError, "New is not supported");
    append(block, line, Assignment{std::move(target), parseExpression(), true});
}

void StatementParser::parseCall(Block& block)
{
    const int line = take().line;
    append(block, line, CallStatement{parsePrimary(true)});
}

// An assignment, or a call without the word Call.
void StatementParser::parseSimple(Block& block)
{
    const int line = token().line;
    ExpressionPtr head = parsePrimary(true);
    if (acceptSymbol("=")) {
        append(block, line, Assignment{std::move(head), parseExpression(), false});
        return;
    }
    if (lastArguments_ == 0) return appendCall(block, line, std::move(head));
    // "Show (a), b" and "Show (a) & b": what looked like the argument list is the beginning
    // of the first argument. So it is in "Show (a)", which passes the value of a.
    auto& call = std::get<Indexed>(head->node);
    if (atEndOfStatement() && call.arguments.size() > 1) fail(parenthesesInCall);
    if (atEndOfStatement() && call.arguments.empty()) {
        append(block, line, CallStatement{std::move(head)});
        return;
    }
    at_ = lastArguments_;
    appendCall(block, line, std::move(call.target));
}

void StatementParser::appendCall(Block& block, int line, ExpressionPtr target)
{
    if (atEndOfStatement()) {
        append(block, line, CallStatement{std::move(target)});
        return;
    }
    Indexed call{std::move(target), parseArguments()};
    append(block, line, CallStatement{make({std::move(call)})});
}

std::unique_ptr<const Unit> parse(std::string source)
{
    auto unit = std::make_unique<Unit>();
    unit->text = std::move(source);
    const std::vector<Token> tokens = tokenize(unit->text);
    StatementParser(tokens, *unit).parseUnit();
    return unit;
}

ExpressionPtr parseSingleExpression(const std::string& source)
{
    Unit unit;
    const std::vector<Token> tokens = tokenize(source);
    return StatementParser(tokens, unit).parseOnlyExpression();
}

} // namespace refhost::script
