#include "host/document/lexer.h"

#include <algorithm>
#include <charconv>

namespace refhost {
namespace {

constexpr std::size_t longestJetStatement = 64000; // characters, exclusive
constexpr std::size_t longestStatement = 64u << 20;

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isNameStart(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
           static_cast<unsigned char>(c) >= 0x80;
}
bool isNamePart(char c) { return isNameStart(c) || isDigit(c) || c == '$'; }
bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }
char upperAscii(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; }

// The length of the UTF-8 sequence at `at`, or 0 when there is no valid one.
std::size_t sequenceLength(std::string_view text, std::size_t at)
{
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(at);
    if (lead < 0x80) return 1;
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || at + length > text.size()) return 0;
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(at + i) & 0xC0) != 0x80) return 0;
    }
    // Overlong forms, surrogates and what lies beyond the last code point.
    const unsigned char second = byte(at + 1);
    if ((lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F) ||
        (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second > 0x8F)) {
        return 0;
    }
    return length;
}

class Lexer {
public:
    Lexer(Dialect dialect, std::string_view text, std::vector<Token>& tokens)
        : dialect_(dialect), text_(text), tokens_(tokens)
    {
    }

    void run()
    {
        checkCharacters();
        tokens_.clear();
        while (skipBlanksAndComments()) next();
        add(TokenKind::end, text_.size(), text_.size());
    }

private:
    bool sqlServer() const { return dialect_ == Dialect::sqlServer; }
    char peek(std::size_t ahead = 0) const
    {
        return at_ + ahead < text_.size() ? text_[at_ + ahead] : '\0';
    }

    [[noreturn]] void fail(std::size_t from, std::size_t to, std::string reason) const
    {
        to = std::min(to, text_.size());
        throw Refusal{from, std::string(text_.substr(from, to - from)), std::move(reason)};
    }

    void checkCharacters() const
    {
        if (text_.size() > longestStatement) fail(longestStatement, 0, "the statement is too long");
        std::size_t characters = 0;
        for (std::size_t i = 0; i < text_.size(); ++characters) {
            if (text_[i] == '\0') {
                throw Refusal{i, "\\0", "a statement cannot hold a NUL character"};
            }
            const std::size_t length = sequenceLength(text_, i);
            if (length == 0) throw Refusal{i, "", "the text is not valid UTF-8 here"};
            i += length;
        }
        if (!sqlServer() && characters >= longestJetStatement) {
            throw Refusal{text_.size(), "", "a Jet statement stays under 64,000 characters"};
        }
    }

    void add(TokenKind kind, std::size_t from, std::size_t to)
    {
        tokens_.push_back({kind, static_cast<std::uint32_t>(from), text_.substr(from, to - from)});
        at_ = to;
    }

    // Whether anything is left.
    bool skipBlanksAndComments()
    {
        for (;;) {
            while (at_ < text_.size() && isBlank(text_[at_])) ++at_;
            const bool line = peek() == '-' && peek(1) == '-';
            const bool block = peek() == '/' && peek(1) == '*';
            if (!line && !block) return at_ < text_.size();
            if (!sqlServer()) fail(at_, at_ + 2, "Jet knows no comments");
            if (line) {
                at_ = std::min(text_.find('\n', at_), text_.size());
            } else {
                skipBlockComment();
            }
        }
    }

    void skipBlockComment()
    {
        const std::size_t start = at_;
        std::size_t open = 0;
        do {
            if (at_ + 1 >= text_.size()) fail(start, start + 2, "the comment is never closed");
            if (peek() == '/' && peek(1) == '*') {
                ++open;
                at_ += 2;
            } else if (peek() == '*' && peek(1) == '/') {
                --open;
                at_ += 2;
            } else {
                ++at_;
            }
        } while (open > 0);
    }

    void next()
    {
        const char c = peek();
        if (sqlServer() && (c == 'N' || c == 'n') && peek(1) == '\'') return text(at_ + 1);
        if (isNameStart(c)) return word();
        if (isDigit(c) || (c == '.' && isDigit(peek(1)))) return number();
        switch (c) {
        case '\'':
            return text(at_);
        case '"':
            return sqlServer() ? delimited('"') : text(at_);
        case '[':
            return delimited(']');
        case '`':
            if (sqlServer()) fail(at_, at_ + 1, "SQL Server quotes names with [ and ]");
            return delimited('`');
        case '#':
            return date();
        case '@':
            return identity();
        default:
            return symbol();
        }
    }

    void word()
    {
        std::size_t end = at_ + 1;
        while (end < text_.size() && isNamePart(text_[end])) ++end;
        add(TokenKind::word, at_, end);
    }

    void number()
    {
        std::size_t end = at_;
        const auto digits = [&] {
            while (end < text_.size() && isDigit(text_[end])) ++end;
        };
        digits();
        bool whole = true;
        if (end < text_.size() && text_[end] == '.') {
            whole = false;
            ++end;
            digits();
        }
        if (end < text_.size() && (text_[end] == 'e' || text_[end] == 'E')) {
            whole = false;
            ++end;
            if (end < text_.size() && (text_[end] == '+' || text_[end] == '-')) ++end;
            if (end >= text_.size() || !isDigit(text_[end])) {
                fail(at_, end, "the number's exponent is missing");
            }
            digits();
        }
        if (end < text_.size() && isNamePart(text_[end])) {
            fail(at_, end + 1, "a name cannot begin with a digit unless it is in brackets");
        }
        std::int32_t value = 0;
        const auto read = std::from_chars(text_.data() + at_, text_.data() + end, value);
        const bool fits = whole && read.ec == std::errc{};
        add(fits ? TokenKind::integer : TokenKind::decimal, at_, end);
    }

    // A text literal whose opening quote stands at `quoteAt`.
    void text(std::size_t quoteAt)
    {
        const char quote = text_[quoteAt];
        std::size_t end = quoteAt + 1;
        bool beyondLatin = false;
        for (;; ++end) {
            if (end >= text_.size()) fail(at_, at_ + 20, "the text is never closed");
            if (static_cast<unsigned char>(text_[end]) >= 0xC4) beyondLatin = true;
            if (text_[end] != quote) continue;
            if (end + 1 >= text_.size() || text_[end + 1] != quote) break;
            ++end;
        }
        if (beyondLatin && sqlServer() && quoteAt == at_) {
            fail(at_, end + 1, "letters beyond Latin-1 are lost unless the text is N'...'");
        }
        add(TokenKind::text, at_, end + 1);
    }

    void delimited(char close)
    {
        std::size_t end = at_ + 1;
        for (;; ++end) {
            if (end >= text_.size()) fail(at_, at_ + 20, "the name is never closed");
            if (text_[end] != close) continue;
            // Only SQL Server can hold the closing mark in a name, doubled.
            if (!sqlServer() || end + 1 >= text_.size() || text_[end + 1] != close) break;
            ++end;
        }
        if (end == at_ + 1) fail(at_, end + 1, "the name is empty");
        add(TokenKind::delimited, at_, end + 1);
    }

    void date()
    {
        if (sqlServer()) {
            fail(at_, at_ + 1, "SQL Server knows no #date#; write 'yyyy-mm-ddThh:nn:ss'");
        }
        const std::size_t end = text_.find('#', at_ + 1);
        if (end == std::string_view::npos) fail(at_, at_ + 20, "the date is never closed");
        add(TokenKind::date, at_, end + 1);
    }

    void identity()
    {
        constexpr std::string_view name = "@@IDENTITY";
        std::size_t end = at_;
        while (end < text_.size() && (isNamePart(text_[end]) || text_[end] == '@')) ++end;
        const std::string_view found = text_.substr(at_, end - at_);
        const bool same = std::equal(found.begin(), found.end(), name.begin(), name.end(),
                                     [](char a, char b) { return upperAscii(a) == b; });
        if (!same) fail(at_, end, "of all variables only @@IDENTITY is known");
        add(TokenKind::identity, at_, end);
    }

    void symbol()
    {
        struct Rejected {
            std::string_view symbol, reason;
        };
        static constexpr Rejected rejected[] = {
            {"||", "|| joins no texts here; SQL Server has +, Jet has &"},
            {"::", ":: is no cast here"},
            {";", "a statement ends without a semicolon"},
            {"?", "statements have no parameters"},
        };
        const std::string_view rest = text_.substr(at_);
        for (const Rejected& wrong : rejected) {
            if (rest.starts_with(wrong.symbol)) {
                fail(at_, at_ + wrong.symbol.size(), std::string(wrong.reason));
            }
        }
        for (const std::string_view two : {"<=", ">=", "<>"}) {
            if (rest.starts_with(two)) return add(TokenKind::symbol, at_, at_ + 2);
        }
        if (rest.starts_with("!=")) {
            if (!sqlServer()) fail(at_, at_ + 2, "Jet has no !=; write <>");
            return add(TokenKind::symbol, at_, at_ + 2);
        }
        const std::string_view single = sqlServer() ? "(),.*+-/%=<>" : "(),.*+-/\\^&=<>";
        if (single.find(peek()) == std::string_view::npos) {
            fail(at_, at_ + 1, std::string(dialectName(dialect_)) + " does not know this sign");
        }
        add(TokenKind::symbol, at_, at_ + 1);
    }

    Dialect dialect_;
    std::string_view text_;
    std::vector<Token>& tokens_;
    std::size_t at_ = 0;
};

std::string undouble(std::string_view inner, char mark)
{
    std::string result;
    result.reserve(inner.size());
    for (std::size_t i = 0; i < inner.size(); ++i) {
        result += inner[i];
        if (inner[i] == mark && i + 1 < inner.size() && inner[i + 1] == mark) ++i;
    }
    return result;
}

} // namespace

bool Token::isWord(std::string_view word) const
{
    return kind == TokenKind::word && text.size() == word.size() &&
           std::equal(text.begin(), text.end(), word.begin(),
                      [](char a, char b) { return upperAscii(a) == b; });
}

void tokenize(Dialect dialect, std::string_view text, std::vector<Token>& tokens)
{
    Lexer(dialect, text, tokens).run();
}

std::string shapeOf(std::string_view text, const std::vector<Token>& tokens)
{
    std::string shape;
    shape.reserve(text.size());
    std::size_t copied = 0;
    for (const Token& token : tokens) {
        if (!token.isLiteral()) continue;
        shape.append(text, copied, token.offset - copied);
        shape += '\x01';
        shape += static_cast<char>('0' + static_cast<int>(token.kind));
        copied = token.offset + token.text.size();
    }
    shape.append(text, copied);
    return shape;
}

std::string nameOf(const Token& token)
{
    if (token.kind != TokenKind::delimited) return std::string(token.text);
    return undouble(token.text.substr(1, token.text.size() - 2), token.text.back());
}

std::string textOf(const Token& token)
{
    const std::size_t quote = token.text.front() == 'N' || token.text.front() == 'n' ? 1 : 0;
    return undouble(token.text.substr(quote + 1, token.text.size() - quote - 2), token.text.back());
}

void refuse(const Token& at, std::string reason, SqlErrorNumber number)
{
    throw Refusal{at.offset, std::string(at.text), std::move(reason), number};
}

} // namespace refhost
