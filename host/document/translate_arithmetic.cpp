#include "host/document/translator.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace refhost {

using syntax::Expr;
using syntax::ExprKind;

namespace {

// Brackets around a negative number keep two minus signs apart.
std::string numberText(std::string digits)
{
    return digits.front() == '-' ? "(" + digits + ")" : digits;
}

std::string literalText(const HostValue& value)
{
    if (const auto* whole = std::get_if<std::int64_t>(&value)) {
        return numberText(std::to_string(*whole));
    }
    if (const auto* number = std::get_if<double>(&value)) {
        char buffer[40];
        std::snprintf(buffer, sizeof buffer, "%.17g", *number);
        std::string text = buffer;
        if (text.find_first_of(".e") == std::string::npos) text += ".0";
        return numberText(text);
    }
    if (const auto* text = std::get_if<std::string>(&value)) return quotedText(*text);
    return "NULL";
}

Piece makeValue(std::string sql, TypeKind kind)
{
    return {.sql = std::move(sql), .type = {.kind = kind}};
}

bool isSum(const std::string& name) { return name == "+" || name == "-"; }

// The wider of two kinds of numbers; yes/no and short integers are reckoned as integers.
TypeKind numberKind(const SqlType& left, const SqlType& right)
{
    return std::max({TypeKind::int32, left.kind, right.kind});
}

constexpr std::string_view moneyCall = "host_money(";

} // namespace

Piece Translator::negate(const Expr& expr, Scope& scope)
{
    const Piece piece = value(*expr.arguments[0], scope);
    if (!piece.type.isNumber() && !piece.type.is(TypeKind::unknown)) {
        refuse(expr.at, std::string(kindName(piece.type.kind)) + " has no negative");
    }
    return makeValue("(-" + piece.sql + ")", numberKind(piece.type, piece.type));
}

// The rules of both engines for each operator, side by side.
// NOLINTNEXTLINE(readability-function-cognitive-complexity)
Piece Translator::arithmetic(const Expr& expr, Scope& scope)
{
    Piece left = value(*expr.arguments[0], scope);
    Piece right = value(*expr.arguments[1], scope);
    const bool leftText = left.type.is(TypeKind::text), rightText = right.type.is(TypeKind::text);
    const bool bothTexts = (leftText || left.type.is(TypeKind::unknown)) &&
                           (rightText || right.type.is(TypeKind::unknown)) &&
                           (leftText || rightText);
    if (expr.name == "&" || (expr.name == "+" && bothTexts)) return joinTexts(expr, left, right);
    if (left.type.is(TypeKind::date) || right.type.is(TypeKind::date)) {
        return dateArithmetic(expr, left, right);
    }
    if (leftText || rightText) {
        if (!sqlServer() || bothTexts) {
            refuse(expr.at, "'" + expr.name + "' does not reckon with texts");
        }
        // SQL Server reads the text as the other side's kind of number.
        Piece& text = leftText ? left : right;
        text = converted(text, (leftText ? right : left).type, Purpose::compare);
    }
    if (expr.name == "/") return division(expr, left, right);
    if (expr.name == "^") {
        return makeValue("pow(" + left.sql + "," + right.sql + ")", TypeKind::real);
    }
    if (expr.name == "\\" || expr.name == "MOD" || expr.name == "%") {
        const bool whole = left.type.isWhole() && right.type.isWhole();
        if (!whole && sqlServer()) refuse(expr.at, "% takes whole numbers");
        const SqlType integer{.kind = TypeKind::int32};
        const std::string function = expr.name == "\\" ? "host_divide(" : "host_remainder(";
        return makeValue(function + converted(left, integer, Purpose::compare).sql + "," +
                             converted(right, integer, Purpose::compare).sql + ")",
                         TypeKind::int32);
    }
    const TypeKind kind = numberKind(left.type, right.type);
    const bool money = kind == TypeKind::currency;
    // Sums of many terms stay flat: the brackets that the left side has are taken off.
    const Expr& first = *expr.arguments[0];
    std::string sum = left.sql;
    if (first.kind == ExprKind::arithmetic && isSum(first.name) && isSum(expr.name) &&
        left.type.is(kind) && sum.back() == ')') {
        if (!money && sum.front() == '(') sum = sum.substr(1, sum.size() - 2);
        if (money && sum.starts_with(moneyCall)) {
            sum = sum.substr(moneyCall.size(), sum.size() - moneyCall.size() - 1);
        }
    }
    const std::string sql = sum + expr.name + right.sql + ")";
    return makeValue((money ? std::string(moneyCall) : "(") + sql, kind);
}

Piece Translator::division(const Expr&, const Piece& left, const Piece& right) const
{
    const TypeKind kind = numberKind(left.type, right.type);
    const std::string operands = left.sql + "," + right.sql + ")";
    if (sqlServer() && kind == TypeKind::int32) return makeValue("host_divide(" + operands, kind);
    if (sqlServer() && kind == TypeKind::currency) {
        return makeValue(std::string(moneyCall) + "host_quotient(" + operands + ")", kind);
    }
    return makeValue("host_quotient(" + operands, TypeKind::real);
}

// & takes Null as empty, + gives Null with a Null.
Piece Translator::joinTexts(const Expr& expr, Piece left, const Piece& right)
{
    const SqlType text{.kind = TypeKind::text};
    const bool nullAsEmpty = expr.name == "&";
    const auto operand = [&](const Piece& piece) {
        if (piece.type.is(TypeKind::unknown)) return std::string(nullAsEmpty ? "''" : "NULL");
        const std::string sql = converted(piece, text, Purpose::cast).sql;
        return nullAsEmpty ? "ifnull(" + sql + ",'')" : sql;
    };
    const Expr& first = *expr.arguments[0];
    const bool chain = first.kind == ExprKind::arithmetic && first.name == expr.name &&
                       left.type.is(TypeKind::text) && left.sql.front() == '(';
    const std::string start = chain ? left.sql.substr(1, left.sql.size() - 2) : operand(left);
    return makeValue("(" + start + "||" + operand(right) + ")", TypeKind::text);
}

Piece Translator::dateArithmetic(const Expr& expr, const Piece& left, const Piece& right) const
{
    const bool bothDates = left.type.is(TypeKind::date) && right.type.is(TypeKind::date);
    if (bothDates && expr.name == "-" && !sqlServer()) {
        return makeValue("host_dateminus(" + left.sql + "," + right.sql + ")", TypeKind::real);
    }
    if (bothDates) refuse(expr.at, "two dates are compared with DATEDIFF");
    const Piece& date = left.type.is(TypeKind::date) ? left : right;
    const Piece& days = left.type.is(TypeKind::date) ? right : left;
    const bool possible = expr.name == "+" || (expr.name == "-" && &date == &left);
    if (!possible || !(days.type.isNumber() || days.type.is(TypeKind::unknown))) {
        refuse(expr.at, "a date takes a number of days, added or subtracted");
    }
    const std::string count = expr.name == "-" ? "-(" + days.sql + ")" : days.sql;
    return makeValue("host_dateplus(" + date.sql + "," + count + ")", TypeKind::date);
}

bool Translator::align(Piece& left, Piece& right, const Token& at)
{
    requireComparable(left.type, at, "compared");
    requireComparable(right.type, at, "compared");
    const auto either = [&](TypeKind kind) { return left.type.is(kind) || right.type.is(kind); };
    if (either(TypeKind::unknown)) return either(TypeKind::text);
    if (left.type.kind == right.type.kind) return left.type.is(TypeKind::text);
    if (left.type.isNumber() && right.type.isNumber()) return false;
    if (either(TypeKind::text)) {
        if (!sqlServer()) {
            const TypeKind other = left.type.is(TypeKind::text) ? right.type.kind : left.type.kind;
            refuse(at,
                   "data type mismatch: a text is compared with " + std::string(kindName(other)),
                   SqlErrorNumber::badValue);
        }
        Piece& text = left.type.is(TypeKind::text) ? left : right;
        const Piece& other = left.type.is(TypeKind::text) ? right : left;
        text = converted(text, other.type, Purpose::compare);
        return false;
    }
    Piece& number = left.type.isNumber() ? left : right;
    number = converted(number, {.kind = TypeKind::date}, Purpose::compare);
    return false;
}

SqlType Translator::unify(const SqlType& first, const SqlType& second, const Token& at) const
{
    if (first.is(TypeKind::unknown)) return second;
    if (second.is(TypeKind::unknown)) return first;
    if (first.is(TypeKind::text) && second.is(TypeKind::text)) {
        SqlType type = first.length >= second.length ? first : second;
        type.unlimited = first.unlimited || second.unlimited;
        type.incomparable = first.incomparable || second.incomparable;
        return type;
    }
    if (first.kind == second.kind) return first;
    if (first.isNumber() && second.isNumber()) return first.kind > second.kind ? first : second;
    if (first.is(TypeKind::text) || second.is(TypeKind::text)) {
        // Jet makes both texts, SQL Server reads the text as the other type.
        return first.is(TypeKind::text) == sqlServer() ? second : first;
    }
    refuse(at, "the alternatives are " + std::string(kindName(first.kind)) + " and " +
                   std::string(kindName(second.kind)));
}

Piece Translator::converted(Piece piece, const SqlType& target, Purpose purpose,
                            const std::string& column)
{
    const TypeKind from = piece.type.kind, to = target.kind;
    if (from == TypeKind::unknown || to == TypeKind::unknown) {
        if (to != TypeKind::unknown) piece.type = target;
        return piece;
    }
    if (piece.literal) {
        Parameter place{.token = piece.literal->tokenIndex,
                        .negative = piece.literal->negative,
                        .target = target,
                        .purpose = purpose,
                        .column = column};
        if (piece.parameter >= 0) {
            parameters_[static_cast<std::size_t>(piece.parameter)] = place;
        } else {
            piece.sql = literalText(literalValue(piece.literal->at, place, dialect_));
        }
        piece.type = target;
        return piece;
    }
    const bool fits = to != TypeKind::text || purpose == Purpose::compare || target.length == 0 ||
                      (piece.type.length > 0 && piece.type.length <= target.length);
    const bool widens = piece.type.isWhole() && target.isNumber() && to > from;
    const bool asIs = (from == to && fits) || widens;
    if (!asIs) piece.sql = convertedSql(piece.sql, from, target, dialect_, purpose);
    const bool lengthUnknown = from == TypeKind::text && asIs && target.length == 0;
    if (!lengthUnknown) piece.type = target;
    piece.condition = false;
    piece.stored.clear();
    return piece;
}

std::string Translator::assigned(Piece piece, const CatalogColumn& column, const Token& at)
{
    const bool mismatch = piece.type.is(TypeKind::date) && !column.type.is(TypeKind::date) &&
                          !column.type.is(TypeKind::text) && sqlServer();
    if (mismatch) {
        refuse(at, "a date cannot be written to column '" + column.name + "'",
               SqlErrorNumber::badValue);
    }
    return converted(std::move(piece), column.type, Purpose::assign, column.name).sql;
}

void Translator::requireComparable(const SqlType& type, const Token& at,
                                   std::string_view purpose) const
{
    if (sqlServer() && type.incomparable) {
        refuse(at, "NTEXT cannot be " + std::string(purpose) + "; use NVARCHAR");
    }
}

std::string Translator::collated(const std::string& sql, const SqlType& type) const
{
    if (!type.is(TypeKind::text)) return sql;
    return sql + " COLLATE " + std::string(collationName(dialect_));
}

} // namespace refhost
