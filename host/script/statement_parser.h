#pragma once

#include <array>
#include <string_view>
#include <utility>
#include <vector>

#include "host/script/expression_parser.h"

namespace refhost::script {

/// Parses a whole script into a unit.
class StatementParser : ExpressionParser {
public:
    StatementParser(std::span<const Token> tokens, Unit& unit)
        : ExpressionParser(tokens), unit_(unit), declared_(&unit.declared)
    {
    }

    void parseUnit();
    /// The script is one expression.
    ExpressionPtr parseOnlyExpression();

private:
    using Handler = void (StatementParser::*)(Block&);
    struct Verb {
        std::string_view word;
        Handler handler;
    };
    static const std::array<Verb, 18> verbs;

    void skipSeparators();
    bool atEndOfStatement() const;
    void endOfStatement();
    bool endsBlock() const;
    void expectEnd(std::string_view what);
    /// Statements up to the word that ends the block, which stays.
    Block parseBlock();
    /// A block inside a statement: no procedure begins there.
    Block parseInner();
    void parseStatement(Block& block);
    void refuseUnsupported() const;
    template <typename Node>
    static void append(Block& block, int line, Node node)
    {
        block.push_back(Statement{line, std::move(node)});
    }

    void parseOption();
    void declare(Declared declared);
    void parseDim(Block& block);
    void parseVariables();
    std::int32_t parseBound();
    void parseConst(Block& block);
    void parseVisibility(Block& block);
    void parseProcedure(Block& block);
    void parseParameters(Procedure& procedure);
    void checkNames(const Procedure& procedure) const;
    void parseReDim(Block& block);
    void parseErase(Block& block);

    void parseSet(Block& block);
    void parseCall(Block& block);
    void parseSimple(Block& block);
    void appendCall(Block& block, int line, ExpressionPtr target);

    void parseIf(Block& block);
    void parseOneLineIf(If& node);
    Block parseRestOfLine();
    void parseFor(Block& block);
    Block parseLoopBody(int& open, std::string_view last);
    void parseDo(Block& block);
    void parseLoopCondition(Loop& node);
    void parseWhile(Block& block);
    void parseSelect(Block& block);
    void parseWith(Block& block);
    void parseExit(Block& block);
    void parseOn(Block& block);

    Unit& unit_;
    std::vector<Declared>* declared_;
    Procedure* procedure_ = nullptr;
    struct {
        int forLoops = 0;
        int doLoops = 0;
    } loops_;
    int blocks_ = 0;         ///< Blocks open inside the procedure or the script.
    bool inOneLine_ = false; ///< In an If that ends with its line.
};

} // namespace refhost::script
