#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/document/dialect.h"
#include "host/document/sql_error.h"

namespace refhost {

enum class TokenKind : std::uint8_t {
    end,
    word,      ///< A keyword or a bare name.
    delimited, ///< A name in brackets (or the engine's other name quotes).
    integer,   ///< A whole number that fits 32 bits.
    decimal,   ///< Any other number.
    text,
    date,     ///< A date between number signs.
    identity, ///< @@IDENTITY
    symbol,
};

/// One token; `text` is its exact slice of the statement.
struct Token {
    TokenKind kind = TokenKind::end;
    std::uint32_t offset = 0;
    std::string_view text;

    bool isLiteral() const { return kind >= TokenKind::integer && kind <= TokenKind::date; }
    bool isSymbol(std::string_view symbol) const
    {
        return kind == TokenKind::symbol && text == symbol;
    }
    /// Whether it is the keyword `word` (given in upper case); a delimited name never is.
    bool isWord(std::string_view word) const;
};

/// Cuts `text` into tokens, an end token last. `tokens` is reused, so that its memory is, too.
/// Throws Refusal for what no statement of the dialect can hold.
void tokenize(Dialect dialect, std::string_view text, std::vector<Token>& tokens);

/// The text with each literal replaced by a mark of its kind: statements of one shape differ in
/// their literals only.
std::string shapeOf(std::string_view text, const std::vector<Token>& tokens);

/// The name that a word or a delimited token stands for.
std::string nameOf(const Token& token);
/// The characters that a text literal stands for.
std::string textOf(const Token& token);

[[noreturn]] void refuse(const Token& at, std::string reason,
                         SqlErrorNumber number = SqlErrorNumber::statement);

} // namespace refhost
