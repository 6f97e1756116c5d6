#include "host/script/statement_parser.h"

namespace refhost::script {

void StatementParser::parseIf(Block& block)
{
    const Nested nested(*this);
    const int line = take().line;
    If node;
    node.branches.push_back({parseExpression(), {}, line});
    expectWord("Then");
    if (inOneLine_ || token().kind != TokenKind::newLine) {
        parseOneLineIf(node);
        append(block, line, std::move(node));
        return;
    }
    node.branches.back().body = parseInner();
    while (token().isWord("elseif")) {
        const int branchLine = take().line;
        node.branches.push_back({parseExpression(), {}, branchLine});
        expectWord("Then");
        node.branches.back().body = parseInner();
    }
    if (acceptWord("else")) node.otherwise = parseInner();
    expectEnd("If");
    append(block, line, std::move(node));
}

void StatementParser::parseOneLineIf(If& node)
{
    if (token().kind == TokenKind::newLine) fail(expectedStatement);
    const bool outer = std::exchange(inOneLine_, true);
    ++blocks_;
    node.branches.back().body = parseRestOfLine();
    if (acceptWord("else")) node.otherwise = parseRestOfLine();
    if (token().isWord("end") && tokenAfter().isWord("if")) expectEnd("If");
    --blocks_;
    inOneLine_ = outer;
}

Block StatementParser::parseRestOfLine()
{
    Block block;
    for (;;) {
        while (token().kind == TokenKind::colon) take();
        if (token().kind <= TokenKind::newLine || token().isWord("else") || token().isWord("end")) {
            return block;
        }
        parseStatement(block);
        endOfStatement();
        if (token().kind != TokenKind::colon) return block;
    }
}

void StatementParser::parseFor(Block& block)
{
    const int line = take().line;
    if (acceptWord("each")) {
        ForEach node;
        node.variable = expectName();
        expectWord("In");
        node.collection = parseExpression();
        node.body = parseLoopBody(loops_.forLoops, "Next");
        append(block, line, std::move(node));
        return;
    }
    ForRange node;
    node.variable = expectName();
    expectSymbol("=", expectedEquals);
    node.from = parseExpression();
    expectWord("To");
    node.to = parseExpression();
    if (acceptWord("step")) node.step = parseExpression();
    node.body = parseLoopBody(loops_.forLoops, "Next");
    append(block, line, std::move(node));
}

Block StatementParser::parseLoopBody(int& open, std::string_view last)
{
    if (!token().endsStatement()) fail(expectedEndOfStatement);
    ++open;
    Block body = parseInner();
    --open;
    expectWord(last);
    return body;
}

void StatementParser::parseDo(Block& block)
{
    const int line = take().line;
    Loop node;
    parseLoopCondition(node);
    node.body = parseLoopBody(loops_.doLoops, "Loop");
    if (!node.condition) {
        parseLoopCondition(node);
        node.testedAfter = node.condition != nullptr;
    }
    append(block, line, std::move(node));
}

void StatementParser::parseLoopCondition(Loop& node)
{
    if (atEndOfStatement()) return;
    node.until = token().isWord("until");
    if (!node.until && !token().isWord("while")) fail(expectedWhileOrUntil);
    take();
    node.condition = parseExpression();
}

void StatementParser::parseWhile(Block& block)
{
    const int line = take().line;
    Loop node;
    node.condition = parseExpression();
    int uncounted = 0; // nothing leaves such a loop
    node.body = parseLoopBody(uncounted, "Wend");
    append(block, line, std::move(node));
}

void StatementParser::parseSelect(Block& block)
{
    const int line = take().line;
    expectWord("Case");
    Select node;
    node.subject = parseExpression();
    skipSeparators();
    while (acceptWord("case")) {
        if (acceptWord("else")) {
            node.otherwise = parseInner();
            break;
        }
        Select::Case entry;
        do entry.values.push_back(parseExpression());
        while (acceptSymbol(","));
        if (token().isWord("to")) fail(syntaxError, "Case ranges are not part of the language");
        entry.body = parseInner();
        node.cases.push_back(std::move(entry));
    }
    expectEnd("Select");
    append(block, line, std::move(node));
}

void StatementParser::parseWith(Block& block)
{
    const int line = take().line;
    With node;
    node.object = parseExpression();
    ++withBlocks_;
    node.body = parseInner();
    --withBlocks_;
    expectEnd("With");
    append(block, line, std::move(node));
}

void StatementParser::parseExit(Block& block)
{
    const int line = take().line;
    const struct {
        std::string_view word;
        ExitFrom what;
        bool allowed;
    } kinds[] = {
        {"for", ExitFrom::forLoop, loops_.forLoops > 0},
        {"do", ExitFrom::doLoop, loops_.doLoops > 0},
        {"sub", ExitFrom::procedure, procedure_ && !procedure_->isFunction},
        {"function", ExitFrom::procedure, procedure_ && procedure_->isFunction},
    };
    for (const auto& [word, what, allowed] : kinds) {
        if (!token().isWord(word)) continue;
        if (!allowed) fail(invalidExit);
        take();
        append(block, line, Exit{what});
        return;
    }
    fail(invalidExit);
}

void StatementParser::parseOn(Block& block)
{
    const int line = take().line;
    expectWord("Error");
    if (acceptWord("resume")) {
        expectWord("Next");
        append(block, line, OnError{true});
        return;
    }
    expectWord("GoTo");
    const bool isZero =
        token().value.is(qmevents::ValueKind::int16) && token().value.as<std::int16_t>() == 0;
    if (!isZero) fail(syntaxError, "only On Error GoTo 0 is supported");
    take();
    append(block, line, OnError{false});
}

} // namespace refhost::script
