#pragma once

#include <span>
#include <string>
#include <string_view>

#include "host/script/lexer.h"
#include "host/script/syntax.h"

namespace refhost::script {

/// Walks the tokens of a script and parses expressions. Failures are SyntaxErrors.
class ExpressionParser {
public:
    explicit ExpressionParser(std::span<const Token> tokens) : tokens_(tokens) {}

    ExpressionPtr parseExpression() { return parseLevel(0); }

protected:
    const Token& token() const { return tokens_[at_]; }
    const Token& tokenAfter() const { return tokens_[std::min(at_ + 1, tokens_.size() - 1)]; }
    const Token& take();
    bool acceptSymbol(std::string_view symbol);
    bool acceptWord(std::string_view word);
    void expectSymbol(std::string_view symbol, int number);
    void expectWord(std::string_view word); ///< Named in the error as it is given here.
    std::string expectName();

    /// A name, literal or group with all members and arguments behind it. In the head of a
    /// statement, `lastArguments_` tells where the argument list that ends it began.
    ExpressionPtr parsePrimary(bool inHead = false);
    Expressions parseArguments(); ///< Up to the token that cannot belong to it.
    ExpressionPtr make(Expression expression) const;

    [[noreturn]] void fail(int number) const;
    [[noreturn]] void fail(int number, std::string_view detail) const;

    /// Counts how deep the parser is in what it parses, and refuses to go too deep.
    class Nested {
    public:
        explicit Nested(ExpressionParser& parser);
        Nested(const Nested&) = delete;
        Nested& operator=(const Nested&) = delete;
        ~Nested() { --parser_.nesting_; }

    private:
        ExpressionParser& parser_;
    };

    std::size_t at_ = 0;
    std::size_t lastArguments_ = 0; ///< 0 when the head did not end in an argument list.
    int withBlocks_ = 0;            ///< How many With blocks are open.

private:
    ExpressionPtr parseLevel(std::size_t level);
    ExpressionPtr parseUnary(Operator operation, std::size_t level);
    ExpressionPtr parseOperand();
    bool continuesWithMember(bool inHead) const;

    std::span<const Token> tokens_;
    int nesting_ = 0;
};

} // namespace refhost::script
