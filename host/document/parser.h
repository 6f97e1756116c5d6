#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/document/syntax.h"

namespace refhost {

/// Reads the tokens of one statement by recursive descent. Accepts the grammar of its dialect only;
/// whether names and types fit is the translator's business. Throws Refusal.
class Parser {
public:
    Parser(Dialect dialect, const std::vector<Token>& tokens);

    syntax::Statement statement();

    /// Indexes of literals whose value, not only whose kind, decides what the statement means.
    const std::vector<std::size_t>& fixedTokens() const { return fixedTokens_; }

private:
    class Nested;

    bool sqlServer() const { return dialect_ == Dialect::sqlServer; }
    const Token& peek(std::size_t ahead = 0) const;
    const Token& take();
    bool acceptWord(std::string_view word);
    bool acceptSymbol(std::string_view symbol);
    void expectWord(std::string_view word, std::string_view where);
    void expectSymbol(std::string_view symbol, std::string_view where);
    [[noreturn]] void unexpected(std::string_view wanted) const;
    bool startsName() const;
    /// A bare or delimited name; `what` says whose.
    Token name(std::string_view what);
    std::vector<Token> nameList(std::string_view what);
    std::int32_t fixedInteger(std::string_view what);
    void endOfStatement() const;

    // Queries
    syntax::QueryPtr query();
    syntax::QueryPtr subquery();
    syntax::Select select();
    void top(syntax::Select& select);
    syntax::SelectItem selectItem();
    std::string columnAlias();
    std::vector<syntax::TableRefPtr> fromList();
    syntax::TableRefPtr joinTree();
    std::optional<syntax::JoinKind> joinKind();
    syntax::TableRefPtr tablePrimary();
    syntax::TableRefPtr derivedTable();
    syntax::TableRefPtr namedTable();
    void countTable(const Token& at);
    std::string tableAlias();
    syntax::ExprPtr joinCondition();
    std::vector<syntax::OrderItem> orderBy();

    // Expressions, the loosest binding first
    syntax::ExprPtr expression();
    syntax::ExprPtr logical(std::size_t level);
    syntax::ExprPtr negation();
    syntax::ExprPtr predicate();
    syntax::ExprPtr membership(syntax::ExprPtr left, bool negated);
    syntax::ExprPtr binary(int loosest);
    syntax::ExprPtr unary();
    syntax::ExprPtr primary();
    syntax::ExprPtr parenthesised();
    syntax::ExprPtr literal();
    syntax::ExprPtr wordExpression();
    syntax::ExprPtr columnReference();
    syntax::ExprPtr call();
    syntax::ExprPtr caseWhen();
    syntax::ExprPtr conversion();
    syntax::ExprPtr make(syntax::ExprKind kind, const Token& at) const;
    syntax::ExprPtr combine(syntax::ExprKind kind, const Token& at, syntax::ExprPtr left,
                            syntax::ExprPtr right) const;
    void adopt(syntax::Expr& parent, syntax::ExprPtr child) const;

    // Changes of data
    syntax::Insert insert();
    std::vector<syntax::ExprPtr> valueRow();
    syntax::Update update();
    std::vector<syntax::Assignment> assignments();
    syntax::Delete deletion();
    void jetDeleteTarget(syntax::Delete& result);

    // Changes of the schema
    syntax::Statement create();
    syntax::CreateTable createTable();
    syntax::CreateIndex createIndex(bool unique);
    syntax::CreateView createView();
    syntax::AlterTable alterTable();
    syntax::Drop drop();
    syntax::ColumnDefinition columnDefinition();
    bool columnConstraint(syntax::ColumnDefinition& column);
    bool keyConstraint(syntax::CreateTable& table);
    syntax::TypeUse typeUse();

    Dialect dialect_;
    const std::vector<Token>& tokens_;
    std::size_t at_ = 0;
    int nesting_ = 0;
    int queryNesting_ = 0;
    int tables_ = 0; ///< Of the statement.
    int joined_ = 0; ///< Of the FROM that is read.
    std::vector<std::size_t> fixedTokens_;
};

/// Counts how deeply the parser stands in nested brackets, so that no text exhausts the stack.
class Parser::Nested {
public:
    explicit Nested(Parser& parser) : parser_(parser)
    {
        constexpr int deepest = 100;
        if (parser_.nesting_ >= deepest) {
            refuse(parser_.peek(), "the statement is nested too deeply");
        }
        ++parser_.nesting_;
    }
    Nested(const Nested&) = delete;
    Nested& operator=(const Nested&) = delete;
    ~Nested() { --parser_.nesting_; }

private:
    Parser& parser_;
};

} // namespace refhost
