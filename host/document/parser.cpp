#include "host/document/parser.h"

#include <charconv>

#include "host/document/reserved_words.h"

namespace refhost {

using syntax::Statement;

namespace {

// What other engines end a statement with, and what to write instead.
struct Misplaced {
    std::string_view word, reason;
    bool inJetOnly = false;
};
constexpr std::string_view wrapJoins = "each further join wraps the joins before it in parentheses";
constexpr Misplaced misplacedWords[] = {
    {"LIMIT", "there is no LIMIT; write TOP n after SELECT"},
    {"OFFSET", "there is no OFFSET"},
    {"INNER", wrapJoins, true},
    {"LEFT", wrapJoins, true},
    {"RIGHT", wrapJoins, true},
    {"JOIN", "a join is written INNER JOIN, LEFT JOIN or RIGHT JOIN", true},
    {"FULL", "there is no FULL JOIN", true},
    {"CROSS", "there is no CROSS JOIN", true},
    {"EXCEPT", "EXCEPT is not offered"},
    {"INTERSECT", "INTERSECT is not offered"},
};

} // namespace

Parser::Parser(Dialect dialect, const std::vector<Token>& tokens)
    : dialect_(dialect), tokens_(tokens)
{
}

Statement Parser::statement()
{
    Statement result;
    if (peek().isWord("SELECT") || peek().isSymbol("(")) {
        result = query();
    } else if (acceptWord("INSERT")) {
        result = insert();
    } else if (acceptWord("UPDATE")) {
        result = update();
    } else if (acceptWord("DELETE")) {
        result = deletion();
    } else if (acceptWord("CREATE")) {
        result = create();
    } else if (acceptWord("ALTER")) {
        result = alterTable();
    } else if (acceptWord("DROP")) {
        result = drop();
    } else {
        unexpected("SELECT, INSERT, UPDATE, DELETE, CREATE, ALTER or DROP");
    }
    endOfStatement();
    return result;
}

const Token& Parser::peek(std::size_t ahead) const
{
    return tokens_[std::min(at_ + ahead, tokens_.size() - 1)];
}

const Token& Parser::take()
{
    const Token& token = peek();
    if (at_ + 1 < tokens_.size()) ++at_;
    return token;
}

bool Parser::acceptWord(std::string_view word)
{
    const bool found = peek().isWord(word);
    if (found) take();
    return found;
}

bool Parser::acceptSymbol(std::string_view symbol)
{
    const bool found = peek().isSymbol(symbol);
    if (found) take();
    return found;
}

void Parser::expectWord(std::string_view word, std::string_view where)
{
    if (!acceptWord(word)) unexpected(std::string(word) + " " + std::string(where));
}

void Parser::expectSymbol(std::string_view symbol, std::string_view where)
{
    if (!acceptSymbol(symbol)) unexpected("'" + std::string(symbol) + "' " + std::string(where));
}

void Parser::unexpected(std::string_view wanted) const
{
    for (const Misplaced& misplaced : misplacedWords) {
        if (misplaced.inJetOnly && sqlServer()) continue;
        if (peek().isWord(misplaced.word)) refuse(peek(), std::string(misplaced.reason));
    }
    refuse(peek(), "expected " + std::string(wanted));
}

bool Parser::startsName() const
{
    return peek().kind == TokenKind::delimited ||
           (peek().kind == TokenKind::word && !isReserved(dialect_, peek().text));
}

Token Parser::name(std::string_view what)
{
    if (startsName()) return take();
    if (peek().kind == TokenKind::word) {
        unexpected(std::string(what) + "; this word is reserved and stands in brackets as a name");
    }
    unexpected(what);
}

std::vector<Token> Parser::nameList(std::string_view what)
{
    std::vector<Token> names;
    expectSymbol("(", "before the names");
    do {
        names.push_back(name(what));
    } while (acceptSymbol(","));
    expectSymbol(")", "after the names");
    return names;
}

std::int32_t Parser::fixedInteger(std::string_view what)
{
    if (peek().kind != TokenKind::integer) unexpected(what);
    fixedTokens_.push_back(at_);
    const std::string_view digits = take().text;
    std::int32_t value = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), value);
    return value;
}

void Parser::endOfStatement() const
{
    if (peek().kind != TokenKind::end) unexpected("the end of the statement");
}

} // namespace refhost
