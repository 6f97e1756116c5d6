#include "host/lists/list_condition.h"

#include <algorithm>
#include <optional>

#include "automation/conversions.h"
#include "automation/date.h"
#include "automation/error.h"
#include "automation/text.h"
#include "host/document/objects/sql_literal.h"

namespace refhost {
namespace {

using qmevents::Date;
using qmevents::Value;
using qmevents::text::replaceAll;

/// One comparison: what it takes, and how it reads in SQL, where {v} is the criterion's
/// expression and {1} and {2} are the literals of what it takes.
struct Comparison {
    ListKind kind = ListKind::text;
    const char* name = "";
    std::size_t takes = 0;
    const char* sql = "";
    bool isPattern = false;      ///< A text's literal is a pattern that finds it anywhere,
    bool isAnchored = false;     ///< or at the start.
    bool lastIsWholeDay = false; ///< The last literal is the day after the one given.
};

using enum ListKind;

constexpr Comparison comparisons[] = {
    {text, "contains", 1, "{v} LIKE {1}", true},
    {text, "starts", 1, "{v} LIKE {1}", true, true},
    {text, "is", 1, "{v} = {1}"},
    {text, "blank", 0, "{v} IS NULL OR {v} = ''"},
    {text, "notblank", 0, "{v} <> ''"},
    {yesNo, "is", 1, "{v} = {1}"},
    {date, "from", 1, "{v} >= {1}"},
    {date, "until", 1, "{v} < {1}", false, false, true},
    {date, "between", 2, "{v} >= {1} AND {v} < {2}", false, false, true},
    {date, "blank", 0, "{v} IS NULL"},
    {date, "notblank", 0, "{v} IS NOT NULL"},
    {money, "atleast", 1, "{v} >= {1}"},
    {money, "atmost", 1, "{v} <= {1}"},
    {money, "between", 2, "{v} >= {1} AND {v} <= {2}"},
    {money, "exactly", 1, "{v} = {1}"},
    {number, "atleast", 1, "{v} >= {1}"},
    {number, "atmost", 1, "{v} <= {1}"},
    {number, "between", 2, "{v} >= {1} AND {v} <= {2}"},
    {number, "exactly", 1, "{v} = {1}"},
};

struct BadValue {
    std::string why;
};

std::string quoted(const std::string& value) { return "“" + value + "”"; }

std::string textLiteral(const std::string& value, Dialect dialect)
{
    constexpr std::size_t longest = 255;
    if (qmevents::text::length(value) > longest) {
        throw BadValue{"At most 255 characters can be looked for."};
    }
    const bool hasControls =
        std::ranges::any_of(value, [](char c) { return static_cast<unsigned char>(c) < 0x20; });
    if (hasControls) throw BadValue{"Control characters cannot be looked for."};
    return sqlLiteral(dialect, Value(value), LiteralKind::text);
}

std::string dateLiteral(const std::string& value, bool dayAfter, Dialect dialect)
{
    if (qmevents::text::trim(value).empty()) throw BadValue{"Enter a date."};
    const auto day = value.size() == 10 ? Date::parseIso(value) : std::nullopt;
    if (!day) throw BadValue{quoted(value) + " is not a date."};
    // Neither engine knows days before 1753 for certain, nor the day after the last one.
    if (day->civil().year < 1753 || day->civil().year > 9998) {
        throw BadValue{"The year must lie between 1753 and 9998."};
    }
    return sqlLiteral(dialect, Value(dayAfter ? day->plusDays(1) : *day), LiteralKind::date);
}

std::string numberLiteral(const std::string& value, ListKind kind, Dialect dialect)
{
    const char* thing = kind == money ? "an amount" : "a number";
    if (qmevents::text::trim(value).empty()) {
        throw BadValue{std::string("Enter ") + thing + "."};
    }
    try {
        qmevents::Currency amount;
        if (qmevents::Currency::parse(qmevents::text::trim(value), amount)) {
            return sqlLiteral(dialect, Value(amount), LiteralKind::number);
        }
    } catch (const qmevents::Error&) {
        throw BadValue{quoted(value) + " is too large."};
    }
    throw BadValue{quoted(value) + " is not " + thing + "."};
}

// What the expressions that tell yes from no give.
std::string yesNoLiteral(const std::string& value, Dialect dialect)
{
    if (value.empty()) throw BadValue{"Choose Yes or No."};
    if (value != "Yes" && value != "No") throw BadValue{quoted(value) + " is neither Yes nor No."};
    return sqlLiteral(dialect, Value(value), LiteralKind::text);
}

std::string keyLiteral(const std::string& key, bool isText, Dialect dialect)
{
    if (isText) return textLiteral(key, dialect);
    const bool isWhole = !key.empty() && key.size() < 10 &&
                         std::ranges::all_of(key, [](char c) { return c >= '0' && c <= '9'; });
    if (!isWhole) throw BadValue{quoted(key) + " is not one of the choices."};
    return key;
}

std::string literalOf(const Comparison& comparison, const std::string& value, bool isLast,
                      Dialect dialect)
{
    switch (comparison.kind) {
    case date:
        return dateLiteral(value, isLast && comparison.lastIsWholeDay, dialect);
    case money:
    case number:
        return numberLiteral(value, comparison.kind, dialect);
    case yesNo:
        return yesNoLiteral(value, dialect);
    default:
        break;
    }
    if (value.empty()) throw BadValue{"Enter what to look for."};
    if (!comparison.isPattern) return textLiteral(value, dialect);
    return textLiteral((comparison.isAnchored ? "" : "%") + likeText(value) + "%", dialect);
}

// Whether `sql` stands in one pair of parentheses already.
bool isEnclosed(std::string_view sql)
{
    if (!sql.starts_with('(')) return false;
    int depth = 0;
    bool isQuoted = false;
    for (std::size_t i = 0; i < sql.size(); ++i) {
        if (sql[i] == '\'') isQuoted = !isQuoted;
        if (isQuoted) continue;
        if (sql[i] == '(') ++depth;
        if (sql[i] == ')' && --depth == 0) return i + 1 == sql.size();
    }
    return false;
}

std::string choiceCondition(const ListCriterion& criterion, const ListDefinition::Filter& filter,
                            Dialect dialect)
{
    if (filter.operation != "anyof" && filter.operation != "noneof") {
        throw BadValue{"This filter cannot compare by " + quoted(filter.operation) + "."};
    }
    if (filter.values.empty()) throw BadValue{"Choose at least one."};
    std::string keys;
    for (const std::string& key : filter.values) {
        if (!keys.empty()) keys += ", ";
        keys += keyLiteral(key, criterion.hasTextKeys, dialect);
    }
    const std::string condition = replaceAll(criterion.condition, "{values}", keys);
    if (filter.operation == "anyof") return condition;
    // Not a plain NOT, which is neither true nor false where a NULL took part.
    return dialect == Dialect::jet ? "IIf(" + condition + ", 1, 0) = 0"
                                   : "CASE WHEN " + condition + " THEN 1 ELSE 0 END = 0";
}

std::string comparedCondition(const ListCriterion& criterion, const ListDefinition::Filter& filter,
                              Dialect dialect)
{
    const auto comparison = std::ranges::find_if(comparisons, [&](const Comparison& one) {
        return one.kind == criterion.kind && filter.operation == one.name;
    });
    if (comparison == std::ranges::end(comparisons)) {
        throw BadValue{"This filter cannot compare by " + quoted(filter.operation) + "."};
    }
    const bool stands = isEnclosed(criterion.value);
    const std::string value = stands ? criterion.value : "(" + criterion.value + ")";
    const std::string_view sql = comparison->sql;
    std::string literals[2];
    for (std::size_t i = 0; i < comparison->takes; ++i) {
        const std::string given = i < filter.values.size() ? filter.values[i] : "";
        literals[i] = literalOf(*comparison, given, i + 1 == comparison->takes, dialect);
    }
    // What is put in is never searched again: a text may hold anything.
    std::string result;
    for (std::size_t i = 0; i < sql.size(); ++i) {
        if (sql[i] != '{') {
            result += sql[i];
            continue;
        }
        const char which = sql[i + 1];
        result += which == 'v' ? value : literals[which - '1'];
        i += 2;
    }
    return result;
}

} // namespace

ListCondition conditionOf(const ListCriterion& criterion, const ListDefinition::Filter& filter,
                          Dialect dialect)
{
    try {
        return {.sql = criterion.kind == choice ? choiceCondition(criterion, filter, dialect)
                                                : comparedCondition(criterion, filter, dialect),
                .fault = {}};
    } catch (const BadValue& bad) {
        return {.sql = {}, .fault = bad.why};
    }
}

} // namespace refhost
