#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "automation/value.h"
#include "host/script/script_error.h"

namespace refhost::script {

enum class TokenKind : std::uint8_t {
    end,
    newLine,
    colon,
    name,
    word, ///< A reserved word, which names nothing.
    literal,
    symbol,
};

/// One token; `text` is its slice of the script.
struct Token {
    TokenKind kind = TokenKind::end;
    bool spaceBefore = false;
    bool bracketed = false; ///< A name in brackets, which is never a word.
    int line = 1;
    std::string_view text;
    qmevents::Value value; ///< Of a literal.

    /// Whether it is the word `word`, reserved or not.
    bool isWord(std::string_view word) const;
    bool isSymbol(std::string_view symbol) const
    {
        return kind == TokenKind::symbol && text == symbol;
    }
    bool endsStatement() const { return kind <= TokenKind::colon; }
};

/// Cuts `text` into tokens, an end token last; they refer to `text`. Throws SyntaxError.
std::vector<Token> tokenize(std::string_view text);

} // namespace refhost::script
