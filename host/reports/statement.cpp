#include "host/reports/statement.h"

#include <algorithm>

#include "automation/clock.h"
#include "automation/error.h"
#include "host/document/objects/sql_literal.h"

namespace refhost::reporting {

bool holds(const Condition& condition, const Answers& answers)
{
    const Answer& answer = answers.at(condition.filter);
    const bool met = answer.given && (!condition.is || *condition.is == answer.plain);
    return met != condition.negated;
}

std::string statementOf(const Inquiry& inquiry, const SqlText& sql, const Answers& answers)
{
    const Dialect dialect = inquiry.context->sql().dialect();
    std::string statement;
    for (const SqlPiece& piece : sql.pieces) {
        const bool stands =
            (!piece.dialect || *piece.dialect == dialect) &&
            std::all_of(piece.conditions.begin(), piece.conditions.end(),
                        [&](const Condition& condition) { return holds(condition, answers); });
        if (!stands) continue;
        if (!statement.empty()) statement += ' ';
        // One pass, so that nothing in a value is ever taken for a placeholder.
        for (std::size_t at = 0; at < piece.text.size();) {
            const auto open = std::min(piece.text.find('{', at), piece.text.size());
            statement.append(piece.text, at, open - at);
            if (open == piece.text.size()) break;
            const auto close = piece.text.find('}', open);
            const std::string name = piece.text.substr(open + 1, close - open - 1);
            const auto colon = name.find(':');
            if (name == "today") {
                statement += sqlLiteral(dialect, qmevents::Clock::today(), LiteralKind::date);
            } else {
                const Answer& answer = answers.at(name.substr(0, colon));
                statement += colon == std::string::npos ? answer.literal : answer.next;
            }
            at = close + 1;
        }
    }
    return std::string(qmevents::text::trim(statement));
}

std::unique_ptr<Cursor> query(const Inquiry& inquiry, const SqlText& sql, const Answers& answers)
{
    const std::string statement = statementOf(inquiry, sql, answers);
    try {
        const Untraced quiet(inquiry.context->sql());
        return inquiry.context->sql().query(statement);
    } catch (const qmevents::Error& error) {
        failAt(inquiry.layout, sql.line,
               "the statement that begins here was refused: " + error.description());
    }
}

bool hasWhatItNeeds(const SqlText& sql, const Answers& answers)
{
    for (const SqlPiece& piece : sql.pieces) {
        for (const auto& [key, answer] : answers) {
            if (!answer.given && piece.text.find('{' + key + '}') != std::string::npos)
                return false;
        }
    }
    return true;
}

} // namespace refhost::reporting
