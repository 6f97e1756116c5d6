#include "host/script/lexer.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "automation/conversions.h"
#include "automation/locale.h"
#include "automation/text.h"

namespace refhost::script {
namespace {

using qmevents::Value;
namespace text = qmevents::text;

constexpr std::array<std::string_view, 48> reservedWords{
    "and",  "byref",   "byval",  "call",  "case",  "class",  "const",    "dim",  "do",   "each",
    "else", "elseif",  "end",    "eqv",   "exit",  "for",    "function", "goto", "if",   "imp",
    "in",   "is",      "let",    "loop",  "mod",   "new",    "next",     "not",  "on",   "option",
    "or",   "private", "public", "redim", "rem",   "resume", "select",   "set",  "stop", "sub",
    "then", "to",      "until",  "wend",  "while", "with",   "xor",      "erase"};

bool isReserved(std::string_view name)
{
    return std::any_of(reservedWords.begin(), reservedWords.end(),
                       [&](std::string_view word) { return text::sameName(word, name); });
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isHexDigit(char c) { return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }
// Bytes beyond ASCII count as letters, so that names may be written in any language.
bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || static_cast<unsigned char>(c) >= 128;
}
bool isNamePart(char c) { return isLetter(c) || isDigit(c) || c == '_'; }
bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\f' || c == '\v'; }
bool isLineEnd(char c) { return c == '\r' || c == '\n'; }

// The narrowest number type that holds a literal.
Value numberValue(double number, bool whole)
{
    if (whole && number >= -32768 && number <= 32767) return static_cast<std::int16_t>(number);
    if (whole && number >= -2147483648.0 && number <= 2147483647.0) {
        return static_cast<std::int32_t>(number);
    }
    return number;
}

class Lexer {
public:
    explicit Lexer(std::string_view source) : text_(source)
    {
        if (text_.substr(0, 3) == "\xEF\xBB\xBF") at_ = 3;
    }

    std::vector<Token> run()
    {
        while (next()) {}
        add(TokenKind::newLine, at_);
        add(TokenKind::end, at_);
        return std::move(tokens_);
    }

private:
    char peek(std::size_t ahead = 0) const
    {
        return at_ + ahead < text_.size() ? text_[at_ + ahead] : '\0';
    }
    [[noreturn]] void fail(int number, std::string_view detail = {}) const
    {
        throw SyntaxError{number, scriptError(number, detail).description(), line_};
    }
    Token& add(TokenKind kind, std::size_t start)
    {
        return tokens_.emplace_back(Token{kind,
                                          std::exchange(space_, false),
                                          false,
                                          line_,
                                          text_.substr(start, at_ - start),
                                          {}});
    }
    bool afterOperand() const
    {
        if (tokens_.empty()) return false;
        const Token& last = tokens_.back();
        return last.kind == TokenKind::name || last.kind == TokenKind::literal ||
               last.isSymbol(")");
    }

    bool next()
    {
        while (isBlank(peek()) && at_ < text_.size()) {
            space_ = true;
            ++at_;
        }
        if (at_ >= text_.size()) return false;
        const char c = peek();
        if (c == '_' && continues()) return true;
        if (isLineEnd(c)) {
            lineEnd();
        } else if (c == '\'') {
            skipLine();
        } else if (c == '"') {
            quoted();
        } else if (c == '#') {
            date();
        } else if (c == '[') {
            bracketedName();
        } else if (isDigit(c) || (c == '.' && isDigit(peek(1)))) {
            number();
        } else if (c == '&' && isBasedNumber()) {
            basedNumber();
        } else if (isLetter(c)) {
            name();
        } else {
            symbol();
        }
        return true;
    }

    void lineEnd()
    {
        const std::size_t start = at_;
        at_ += peek() == '\r' && peek(1) == '\n' ? 2 : 1;
        add(TokenKind::newLine, start);
        ++line_;
    }

    void skipLine()
    {
        while (at_ < text_.size() && !isLineEnd(peek())) ++at_;
    }

    // "_" at the end of a line carries the statement over to the next one.
    bool continues()
    {
        std::size_t end = at_ + 1;
        while (end < text_.size() && isBlank(text_[end])) ++end;
        if (end < text_.size() && !isLineEnd(text_[end])) return false;
        end += text_.substr(end, 2) == "\r\n" ? 2 : 1;
        at_ = std::min(end, text_.size());
        ++line_;
        space_ = true;
        return true;
    }

    void quoted()
    {
        const std::size_t start = at_++;
        std::string content;
        for (;; ++at_) {
            if (at_ >= text_.size() || isLineEnd(peek())) fail(unterminatedText);
            if (peek() == '"' && peek(1) != '"') break;
            if (peek() == '"') ++at_;
            content += peek();
        }
        ++at_;
        add(TokenKind::literal, start).value = std::move(content);
    }

    void date()
    {
        const std::size_t start = at_++;
        while (at_ < text_.size() && peek() != '#' && !isLineEnd(peek())) ++at_;
        const std::string_view content = text_.substr(start + 1, at_ - start - 1);
        // A script means the same day wherever it runs, so the user's own order does not count.
        const auto value = qmevents::Locale().parseDate(content);
        if (peek() != '#' || !value)
            fail(syntaxError, "not a date: #" + std::string(content) + "#");
        ++at_;
        add(TokenKind::literal, start).value = *value;
    }

    void bracketedName()
    {
        const std::size_t start = at_ + 1;
        while (at_ < text_.size() && peek() != ']' && !isLineEnd(peek())) ++at_;
        if (peek() != ']') fail(expectedBracket);
        add(TokenKind::name, start).bracketed = true;
        ++at_;
    }

    void number()
    {
        const std::size_t start = at_;
        const auto digits = [&] {
            while (isDigit(peek())) ++at_;
        };
        digits();
        bool whole = true;
        if (peek() == '.') {
            whole = false;
            ++at_;
            digits();
        }
        const bool signedExponent = (peek(1) == '+' || peek(1) == '-') && isDigit(peek(2));
        if ((peek() == 'e' || peek() == 'E') && (isDigit(peek(1)) || signedExponent)) {
            whole = false;
            at_ += 2;
            digits();
        }
        if (isNamePart(peek())) fail(invalidNumber, text_.substr(start, at_ + 1 - start));
        double value = 0;
        const auto result = std::from_chars(text_.data() + start, text_.data() + at_, value);
        if (result.ec != std::errc()) fail(invalidNumber, text_.substr(start, at_ - start));
        add(TokenKind::literal, start).value = numberValue(value, whole);
    }

    // Whether "&" begins "&HFF" or "&O17" rather than joining what stands before it to a name.
    bool isBasedNumber() const
    {
        const char base = peek(1);
        const bool isHex = base == 'h' || base == 'H';
        if (!isHex && base != 'o' && base != 'O') return false;
        std::size_t count = 2;
        while (isHex ? isHexDigit(peek(count)) : (peek(count) >= '0' && peek(count) <= '7')) {
            ++count;
        }
        return count > 2 && !isNamePart(peek(count)) && (space_ || !afterOperand());
    }

    void basedNumber()
    {
        const std::size_t start = at_;
        const int base = peek(1) == 'h' || peek(1) == 'H' ? 16 : 8;
        at_ += 2;
        const std::size_t first = at_;
        while (isHexDigit(peek())) ++at_;
        std::uint32_t bits = 0;
        const auto result = std::from_chars(text_.data() + first, text_.data() + at_, bits, base);
        if (result.ec != std::errc()) fail(invalidNumber, text_.substr(start, at_ - start));
        const bool isLong = peek() == '&';
        if (isLong) ++at_;
        // As in the type that the digits fill: &HFFFF is -1, &HFFFF& is 65535.
        const auto number = bits <= 0xFFFF && !isLong
                                ? static_cast<std::int32_t>(static_cast<std::int16_t>(bits))
                                : static_cast<std::int32_t>(bits);
        add(TokenKind::literal, start).value = numberValue(number, true);
    }

    void name()
    {
        const std::size_t start = at_;
        while (isNamePart(peek())) ++at_;
        const std::string_view found = text_.substr(start, at_ - start);
        const bool isMember =
            !tokens_.empty() && tokens_.back().isSymbol(".") && !space_; // `rs.Next` is a name
        if (!isMember) {
            if (text::sameName(found, "rem")) return skipLine();
            if (const Value* value = wordValue(found)) {
                add(TokenKind::literal, start).value = *value;
                return;
            }
        }
        add(!isMember && isReserved(found) ? TokenKind::word : TokenKind::name, start);
    }

    static const Value* wordValue(std::string_view name)
    {
        static const std::array<std::pair<std::string_view, Value>, 5> words{{
            {"true", true},
            {"false", false},
            {"null", qmevents::Null{}},
            {"empty", Value()},
            {"nothing", Value::nothing()},
        }};
        for (const auto& [word, value] : words) {
            if (text::sameName(word, name)) return &value;
        }
        return nullptr;
    }

    void symbol()
    {
        const std::size_t start = at_;
        const std::string_view two = text_.substr(at_, 2);
        if (two == "<>" || two == "<=" || two == ">=") {
            at_ += 2;
        } else if (std::string_view("=<>+-*/\\^&(),.:").find(peek()) != std::string_view::npos) {
            ++at_;
        } else {
            const char c = peek();
            fail(invalidCharacter, c > ' ' && c < 127 ? std::string(1, c) : std::string());
        }
        add(text_[start] == ':' ? TokenKind::colon : TokenKind::symbol, start);
    }

    std::string_view text_;
    std::size_t at_ = 0;
    int line_ = 1;
    bool space_ = false;
    std::vector<Token> tokens_;
};

} // namespace

bool Token::isWord(std::string_view word) const
{
    return (kind == TokenKind::word || kind == TokenKind::name) && !bracketed &&
           text::sameName(text, word);
}

std::vector<Token> tokenize(std::string_view text) { return Lexer(text).run(); }

} // namespace refhost::script
