#include <algorithm>

#include "automation/text.h"
#include "host/script/statement_parser.h"

namespace refhost::script {

namespace text = qmevents::text;

void StatementParser::parseOption()
{
    take();
    expectWord("Explicit");
    if (!token().endsStatement()) fail(expectedEndOfStatement);
    unit_.optionExplicit = true;
    skipSeparators();
}

void StatementParser::declare(Declared declared)
{
    const bool taken =
        std::any_of(declared_->begin(), declared_->end(), [&](const Declared& other) {
            return text::sameName(other.name, declared.name);
        });
    if (taken) fail(nameRedefined, declared.name);
    declared_->push_back(std::move(declared));
}

void StatementParser::parseDim(Block&)
{
    take();
    parseVariables();
}

void StatementParser::parseVariables()
{
    do {
        Declared declared;
        declared.name = expectName();
        if (acceptSymbol("(")) {
            declared.kind = Declared::Kind::dynamicArray;
            while (!token().isSymbol(")")) {
                declared.kind = Declared::Kind::fixedArray;
                declared.bounds.push_back(parseBound());
                if (!acceptSymbol(",")) break;
            }
            expectSymbol(")", expectedClosing);
        }
        declare(std::move(declared));
    } while (acceptSymbol(","));
}

std::int32_t StatementParser::parseBound()
{
    const qmevents::Value& value = token().value;
    if (value.is(qmevents::ValueKind::int16) && value.as<std::int16_t>() >= 0) {
        return take().value.as<std::int16_t>();
    }
    if (!value.is(qmevents::ValueKind::int32)) fail(expectedWholeNumber);
    return take().value.as<std::int32_t>();
}

void StatementParser::parseConst(Block&)
{
    take();
    do {
        Declared declared;
        declared.kind = Declared::Kind::constant;
        declared.name = expectName();
        expectSymbol("=", expectedEquals);
        const ExpressionPtr value = parseExpression();
        const auto* literal = std::get_if<Literal>(&value->node);
        if (!literal || literal->value.isObject()) fail(expectedLiteral, declared.name);
        declared.value = literal->value;
        declare(std::move(declared));
    } while (acceptSymbol(","));
}

void StatementParser::parseVisibility(Block& block)
{
    if (procedure_ || blocks_ > 0) fail(expectedStatement);
    take();
    if (token().isWord("sub") || token().isWord("function")) return parseProcedure(block);
    if (token().isWord("const")) return parseConst(block);
    refuseUnsupported();
    parseVariables();
}

void StatementParser::parseProcedure(Block&)
{
    if (procedure_ || blocks_ > 0) fail(syntaxError, "a procedure inside another block");
    auto procedure = std::make_unique<Procedure>();
    const std::string_view keyword = token().isWord("sub") ? "Sub" : "Function";
    procedure->isFunction = take().isWord("function");
    procedure->name = expectName();
    for (const auto& other : unit_.procedures) {
        if (text::sameName(other->name, procedure->name)) fail(nameRedefined, procedure->name);
    }
    procedure->unit = &unit_;
    procedure_ = procedure.get();
    declared_ = &procedure->declared;
    parseParameters(*procedure);
    endOfStatement();
    const int outerWith = std::exchange(withBlocks_, 0);
    procedure->body = parseBlock();
    withBlocks_ = outerWith;
    expectEnd(keyword);
    checkNames(*procedure);
    procedure_ = nullptr;
    declared_ = &unit_.declared;
    unit_.procedures.push_back(std::move(procedure));
}

void StatementParser::parseParameters(Procedure& procedure)
{
    if (!acceptSymbol("(")) return;
    while (!token().isSymbol(")")) {
        Procedure::Parameter parameter;
        parameter.byValue = acceptWord("byval");
        if (!parameter.byValue) acceptWord("byref");
        parameter.name = expectName();
        if (acceptSymbol("(")) expectSymbol(")", expectedClosing);
        procedure.parameters.push_back(std::move(parameter));
        if (!acceptSymbol(",")) break;
    }
    expectSymbol(")", expectedClosing);
}

void StatementParser::checkNames(const Procedure& procedure) const
{
    std::vector<std::string> names;
    for (const auto& parameter : procedure.parameters) names.push_back(parameter.name);
    for (const auto& declared : procedure.declared) names.push_back(declared.name);
    if (procedure.isFunction) names.push_back(procedure.name);
    for (auto& name : names) name = text::lowerAscii(name);
    std::sort(names.begin(), names.end());
    const auto twice = std::adjacent_find(names.begin(), names.end());
    if (twice != names.end()) fail(nameRedefined, *twice);
}

void StatementParser::parseReDim(Block& block)
{
    const int line = take().line;
    ReDim node;
    node.preserve = acceptWord("preserve");
    do {
        ReDim::Item item;
        item.name = expectName();
        expectSymbol("(", expectedOpening);
        item.bounds = parseArguments();
        if (item.bounds.empty()) fail(expectedExpression);
        for (const auto& bound : item.bounds) {
            if (!bound) fail(expectedExpression);
        }
        expectSymbol(")", expectedClosing);
        node.items.push_back(std::move(item));
    } while (acceptSymbol(","));
    append(block, line, std::move(node));
}

void StatementParser::parseErase(Block& block)
{
    const int line = take().line;
    Erase node;
    do node.names.push_back(expectName());
    while (acceptSymbol(","));
    append(block, line, std::move(node));
}

} // namespace refhost::script
