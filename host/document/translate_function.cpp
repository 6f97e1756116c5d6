#include "host/document/translator.h"

namespace refhost {

using syntax::Expr;
using syntax::ExprKind;
using syntax::ExprPtr;

namespace {

Piece makeValue(std::string sql, const SqlType& type)
{
    return {.sql = std::move(sql), .type = type};
}

Piece makeValue(std::string sql, TypeKind kind)
{
    return makeValue(std::move(sql), SqlType{.kind = kind});
}

// `pattern` with $1, $2, ... and $* replaced by arguments.
std::string filled(std::string_view pattern, const std::vector<Piece>& arguments)
{
    std::string sql;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] != '$') {
            sql += pattern[i];
        } else if (pattern[++i] == '*') {
            for (const Piece& argument : arguments) {
                if (&argument != &arguments.front()) sql += ',';
                sql += argument.sql;
            }
        } else {
            sql += arguments[static_cast<std::size_t>(pattern[i] - '1')].sql;
        }
    }
    return sql;
}

SqlType resultType(Function::Result result, const std::vector<Piece>& arguments)
{
    switch (result) {
    case Function::Result::integer:
        return {.kind = TypeKind::int32};
    case Function::Result::date:
        return {.kind = TypeKind::date};
    case Function::Result::text:
        return {.kind = TypeKind::text};
    default:
        return arguments.empty() ? SqlType{} : arguments[0].type;
    }
}

} // namespace

Piece Translator::call(const Expr& expr, Scope& scope)
{
    const Function& function = *findFunction(dialect_, expr.name); // the parser found it, too
    if (function.aggregate) return aggregate(expr, scope);
    if (function.result == Function::Result::special) return specialCall(expr, function, scope);
    const std::vector<Piece> pieces = arguments(expr, function, scope);
    return makeValue(filled(function.sql, pieces), resultType(function.result, pieces));
}

Piece Translator::specialCall(const Expr& expr, const Function& function, Scope& scope)
{
    if (expr.name == "ISDATE") return isDate(expr, scope);
    if (expr.name == "FORMAT") return format(expr, scope);
    if (expr.name == "ISNULL" && !sqlServer()) return isNull(expr, scope);
    if (expr.name == "ISNULL" || expr.name == "COALESCE") return firstNotNull(expr, scope);
    if (expr.name == "IIF") {
        const std::string when = condition(*expr.arguments[0], scope);
        const Piece yes = value(*expr.arguments[1], scope);
        const Piece no = value(*expr.arguments[2], scope);
        const SqlType type = unify(yes.type, no.type, expr.at);
        return makeValue("CASE WHEN " + when + " THEN " +
                             converted(yes, type, Purpose::compare).sql +
                             elseText(converted(no, type, Purpose::compare).sql),
                         type);
    }
    if (expr.name == "NULLIF") {
        std::vector<Piece> pieces = arguments(expr, function, scope);
        const SqlType type = pieces[0].type;
        align(pieces[0], pieces[1], expr.at);
        return makeValue(
            "nullif(" + collated(pieces[0].sql, pieces[0].type) + "," + pieces[1].sql + ")", type);
    }
    return conversionCall(expr, scope);
}

std::vector<Piece> Translator::arguments(const Expr& expr, const Function& function, Scope& scope)
{
    std::vector<Piece> pieces;
    for (std::size_t i = 0; i < expr.arguments.size(); ++i) {
        pieces.push_back(argument(*expr.arguments[i], function.parameter(i), scope));
    }
    return pieces;
}

Piece Translator::argument(const Expr& expr, char parameter, Scope& scope)
{
    if (parameter == 'p') {
        const bool text = expr.kind == ExprKind::literal && expr.at.kind == TokenKind::text;
        const bool word = expr.kind == ExprKind::column && expr.qualifier.empty();
        std::string_view code;
        if (sqlServer() ? word : text) {
            code = datePart(dialect_, sqlServer() ? expr.name : textOf(expr.at));
        }
        if (code.empty()) {
            refuse(expr.at, sqlServer() ? "expected a part of a date such as month"
                                        : "expected a part of a date such as 'm'");
        }
        if (text) fixedTokens_.push_back(expr.tokenIndex);
        return makeValue(quotedText(code), TypeKind::text);
    }
    const Piece piece = value(expr, scope);
    if (parameter == 'a' || piece.type.is(TypeKind::unknown)) return piece;
    const bool text = piece.type.is(TypeKind::text);
    const bool number = parameter == 'i' || parameter == 'n';
    if (number && (piece.type.is(TypeKind::date) || (text && !sqlServer()))) {
        refuse(expr.at, "expected a number, found " + std::string(kindName(piece.type.kind)),
               SqlErrorNumber::badValue);
    }
    switch (parameter) {
    case 'i':
        return converted(piece, {.kind = TypeKind::int32}, Purpose::compare);
    case 'n':
        return text ? converted(piece, {.kind = TypeKind::real}, Purpose::compare) : piece;
    case 'd':
        return converted(piece, {.kind = TypeKind::date}, Purpose::compare);
    default:
        return converted(piece, {.kind = TypeKind::text}, Purpose::compare);
    }
}

Piece Translator::aggregate(const Expr& expr, Scope& scope)
{
    if (!scope.aggregates) refuse(expr.at, "an aggregate cannot stand here");
    if (scope.insideAggregate) refuse(expr.at, "an aggregate cannot stand inside another");
    scope.sawAggregate = true;
    if (expr.star) return makeValue("COUNT(*)", TypeKind::int32);

    scope.insideAggregate = true;
    const Piece piece = value(*expr.arguments[0], scope);
    scope.insideAggregate = false;
    const bool total = expr.name == "SUM" || expr.name == "AVG";
    const SqlType& type = piece.type;
    if (total && !type.isNumber() && !type.is(TypeKind::unknown)) {
        refuse(expr.at, expr.name + " takes numbers, not " + std::string(kindName(type.kind)));
    }
    if (expr.name != "COUNT") {
        if (sqlServer() && type.is(TypeKind::yesNo)) {
            refuse(expr.at, "SQL Server has no " + expr.name + " of a BIT");
        }
        requireComparable(type, expr.at, "aggregated");
    }
    const bool compares = expr.distinct || !total;
    const std::string operand = (expr.distinct ? "(DISTINCT " : "(") +
                                (compares ? collated(piece.sql, type) : piece.sql) + ")";
    if (expr.name == "COUNT") return makeValue("COUNT" + operand, TypeKind::int32);
    if (!total) return makeValue(expr.name + operand, type);
    if (type.is(TypeKind::currency))
        return makeValue("host_money(" + expr.name + operand + ")", type);
    if (!type.isWhole() || !sqlServer()) return makeValue(expr.name + operand, TypeKind::real);
    if (expr.name == "SUM") return makeValue("SUM" + operand, TypeKind::int32);
    return makeValue("host_divide(SUM" + operand + ",COUNT" + operand + ")", TypeKind::int32);
}

Piece Translator::isDate(const Expr& expr, Scope& scope)
{
    const Piece piece = value(*expr.arguments[0], scope);
    Piece result;
    switch (piece.type.kind) {
    case TypeKind::date:
        result.sql = "(" + piece.sql + " IS NOT NULL)";
        break;
    case TypeKind::text:
        result.sql = "host_isdate(" + piece.sql + (sqlServer() ? ",0)" : ",1)");
        break;
    default:
        result.sql = "0";
    }
    result.condition = !sqlServer();
    if (sqlServer()) result.type.kind = TypeKind::int32;
    return result;
}

Piece Translator::format(const Expr& expr, Scope& scope)
{
    const Piece piece = value(*expr.arguments[0], scope);
    std::string pattern = "''";
    if (expr.arguments.size() > 1) pattern = argument(*expr.arguments[1], 't', scope).sql;
    if (piece.type.is(TypeKind::text)) refuse(expr.at, "Format writes dates and numbers only");
    const std::string function =
        piece.type.is(TypeKind::date) ? "host_format_date(" : "host_format_number(";
    return makeValue(function + piece.sql + "," + pattern + ")", TypeKind::text);
}

// IsNull gives its first argument's type, COALESCE the one that all share.
Piece Translator::firstNotNull(const Expr& expr, Scope& scope)
{
    std::vector<Piece> pieces;
    SqlType type;
    for (const ExprPtr& item : expr.arguments) {
        pieces.push_back(value(*item, scope));
        const bool decides = type.is(TypeKind::unknown) || expr.name == "COALESCE";
        if (decides) type = unify(type, pieces.back().type, item->at);
    }
    std::string list;
    for (const Piece& piece : pieces) {
        if (!list.empty()) list += ",";
        list += converted(piece, type, Purpose::compare).sql;
    }
    return makeValue("coalesce(" + list + ")", type);
}

// CCur, CLng and the like refuse Null.
Piece Translator::conversionCall(const Expr& expr, Scope& scope)
{
    struct Conversion {
        std::string_view name;
        TypeKind kind;
    };
    static constexpr Conversion conversions[] = {
        {"CCUR", TypeKind::currency}, {"CLNG", TypeKind::int32}, {"CINT", TypeKind::int16},
        {"CDBL", TypeKind::real},     {"CSTR", TypeKind::text},  {"CDATE", TypeKind::date},
    };
    const Piece piece = value(*expr.arguments[0], scope);
    for (const Conversion& conversion : conversions) {
        if (conversion.name != expr.name) continue;
        const SqlType target{.kind = conversion.kind};
        return makeValue("host_required(" + converted(piece, target, Purpose::cast).sql + ")",
                         target);
    }
    refuse(expr.at, "this function is not offered");
}

} // namespace refhost
