#include "host/document/plan.h"

#include <algorithm>

#include "host/document/parser.h"
#include "host/document/schema_change.h"
#include "host/document/translator.h"

namespace refhost {
namespace {

HostValue ownValue(const Token& token, bool negative)
{
    switch (token.kind) {
    case TokenKind::integer:
    case TokenKind::decimal: {
        const double number = readNumber(token.text).value_or(0);
        const double value = negative ? -number : number;
        if (token.kind == TokenKind::integer) return static_cast<std::int64_t>(value);
        return value;
    }
    case TokenKind::date: {
        const auto date = readJetDate(token.text.substr(1, token.text.size() - 2));
        if (!date) refuse(token, "this is no date; write #yyyy-mm-dd hh:nn:ss#");
        return date->iso();
    }
    default:
        return textOf(token);
    }
}

} // namespace

TypeKind literalKind(const Token& token)
{
    switch (token.kind) {
    case TokenKind::integer:
        return TypeKind::int32;
    case TokenKind::decimal:
        return TypeKind::real;
    case TokenKind::date:
        return TypeKind::date;
    default:
        return TypeKind::text;
    }
}

HostValue literalValue(const Token& token, const Parameter& parameter, Dialect dialect)
{
    try {
        HostValue value = ownValue(token, parameter.negative);
        if (parameter.target.is(TypeKind::unknown)) return value;
        return convert(std::move(value), literalKind(token), parameter.target, dialect,
                       parameter.purpose);
    } catch (const ConversionError& error) {
        const std::string column =
            parameter.column.empty() ? "" : "column '" + parameter.column + "': ";
        refuse(token, column + error.what(), error.number);
    }
}

Plan makePlan(Dialect dialect, Catalog& catalog, const std::vector<Token>& tokens)
{
    Parser parser(dialect, tokens);
    const syntax::Statement statement = parser.statement();
    Plan plan;
    const bool schema = statement.index() > 3;
    if (schema) {
        plan = schemaPlan(dialect, catalog, statement);
    } else {
        plan = Translator(dialect, catalog).plan(statement);
    }
    for (const std::size_t token : parser.fixedTokens()) plan.fixedTokens.push_back(token);
    std::sort(plan.fixedTokens.begin(), plan.fixedTokens.end());
    const auto repeated = std::unique(plan.fixedTokens.begin(), plan.fixedTokens.end());
    plan.fixedTokens.erase(repeated, plan.fixedTokens.end());
    return plan;
}

} // namespace refhost
