#include "host/reports/filters.h"

#include <algorithm>
#include <cmath>

#include "automation/clock.h"
#include "automation/describe.h"
#include "automation/error.h"
#include "automation/locale.h"
#include "host/document/objects/sql_literal.h"
#include "host/security/security.h"

namespace refhost::reporting {

using qmevents::Clock;
using qmevents::Collection;
using qmevents::Date;
using qmevents::Error;
using qmevents::makeRef;

namespace {

constexpr std::string_view eventGone =
    "The event no longer exists. It may have been deleted by another user.";
// More events than anybody scrolls through; the one that is chosen is offered all the same.
constexpr std::string_view newestEvents =
    "SELECT TOP 500 e.Id, e.Name, e.StartDateTime FROM events_event_info e "
    "ORDER BY e.StartDateTime DESC, e.Id DESC";

// The whole number that `text` is, as keys and codes are.
std::optional<std::int32_t> wholeNumber(const std::string& text)
{
    const auto number = qmevents::parseNumber(text);
    if (!number || std::floor(*number) != *number || std::abs(*number) > 2e9) return std::nullopt;
    return static_cast<std::int32_t>(*number);
}

Date defaultDay(const std::string& name)
{
    const Date today = Clock::today();
    const int year = today.civil().year;
    if (name == "year-start") return Date::of(year, 1, 1);
    if (name == "year-end") return Date::of(year, 12, 31);
    if (name == "today") return today;
    return {};
}

std::string eventName(const Cursor& row)
{
    const Date start = cellOr(row, "StartDateTime", Date());
    const auto name = cellOr<std::string>(row, "Name", {});
    return start.hasDate() ? name + " (" + qmevents::Locale::current().shortDate(start) + ")"
                           : name;
}

void addChoice(Collection& choices, const Value& id, std::string name)
{
    const auto choice = makeRef<Choice>();
    choice->Id = id;
    choice->Name = std::move(name);
    choices.append(Value(choice));
}

// Whether the statement of the choices can be made: the filters that it needs have values.
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

class AnswerReader {
public:
    AnswerReader(const Inquiry& inquiry, const Answers& earlier)
        : inquiry_(inquiry), earlier_(earlier), dialect_(inquiry.context->sql().dialect())
    {
    }

    Answer read(const FilterPlan& filter, const Value& value) const
    {
        Answer answer;
        answer.literal = "NULL";
        if (filter.kind == FilterKind::list) return listAnswer();
        if (!isAsked(inquiry_, filter)) return answer;
        try {
            readValue(filter, value, answer);
        } catch (const Error&) {
            answer.problem = "the value cannot be read";
        }
        if (answer.problem.empty() && filter.required && !answer.given)
            answer.problem = "a value is needed";
        if (!answer.problem.empty()) {
            answer.given = false;
            // What happened to an event is a sentence of its own.
            if (!answer.problem.ends_with('.'))
                answer.problem = "\"" + filter.caption + "\": " + answer.problem + ".";
        }
        return answer;
    }

private:
    Answer listAnswer() const
    {
        Answer answer;
        answer.given = !inquiry_.source.empty();
        answer.literal = inquiry_.source;
        answer.words = inquiry_.sourceName;
        return answer;
    }

    void readValue(const FilterPlan& filter, const Value& value, Answer& answer) const
    {
        if (filter.kind == FilterKind::yesNo) {
            const bool yes = qmevents::toBool(value);
            answer.given = yes;
            answer.plain = yes ? "yes" : "no";
            answer.words = yes ? "Yes" : "No";
            answer.literal = sqlLiteral(dialect_, yes, LiteralKind::yesNo);
            return;
        }
        const bool blank = value.isNull() || value.isMissing() || value.isNothing() ||
                           (value.isText() && qmevents::text::trim(value.text()).empty());
        if (blank || value.isEmpty()) return;
        answer.given = true;
        answer.plain = value.is(qmevents::ValueKind::date) ? "" : qmevents::toText(value);
        answer.words = answer.plain;
        switch (filter.kind) {
        case FilterKind::date:
            return readDay(filter, value, answer);
        case FilterKind::number:
            return readNumber(filter, value, answer);
        case FilterKind::event:
            return readEvent(answer);
        case FilterKind::choice:
        case FilterKind::activity:
            return readChoice(filter, answer);
        default:
            answer.literal = sqlLiteral(dialect_, answer.plain, LiteralKind::text);
        }
    }

    void readDay(const FilterPlan& filter, const Value& value, Answer& answer) const
    {
        // Days before 1753 are none to one of the engines.
        const bool readable = qmevents::isDate(value);
        const Date day = readable ? qmevents::toDate(value).datePart() : Date();
        if (!readable || day < Date::of(1800, 1, 1) || day > Date::of(9998, 12, 31)) {
            answer.problem = "\"" + answer.plain + "\" is no day that can be searched for";
            return;
        }
        answer.day = day;
        answer.plain = day.iso().substr(0, 10);
        answer.words = qmevents::Locale::current().shortDate(day);
        answer.literal = sqlLiteral(dialect_, day, LiteralKind::date);
        answer.next = sqlLiteral(dialect_, day.plusDays(1), LiteralKind::date);
        const auto first = earlier_.find(filter.notBefore);
        if (first != earlier_.end() && first->second.given && day < first->second.day)
            answer.problem = answer.words + " is before " + first->second.words;
    }

    void readNumber(const FilterPlan& filter, const Value& value, Answer& answer) const
    {
        const auto number = qmevents::parseNumber(qmevents::toText(value));
        if (!number || *number < filter.least || *number > filter.most ||
            std::floor(*number) != *number) {
            answer.problem = "\"" + answer.plain + "\" is no whole number from " +
                             qmevents::numberText(filter.least) + " to " +
                             qmevents::numberText(filter.most);
            return;
        }
        answer.plain = answer.words = qmevents::numberText(*number);
        answer.literal = sqlLiteral(dialect_, *number, LiteralKind::number);
    }

    void readEvent(Answer& answer) const
    {
        const auto id = wholeNumber(answer.plain);
        bool found = false;
        if (id) {
            answer.literal = sqlLiteral(dialect_, *id, LiteralKind::key);
            readRows(inquiry_.context,
                     "SELECT e.Name, e.StartDateTime FROM events_event_info e WHERE e.Id = " +
                         answer.literal,
                     [&](const Cursor& row) {
                         found = true;
                         answer.words = eventName(row);
                     });
        }
        if (!id)
            answer.problem = "\"" + answer.plain + "\" is no event";
        else if (!found)
            answer.problem = eventGone;
    }

    void readChoice(const FilterPlan& filter, Answer& answer) const
    {
        for (const OptionPlan& option : filter.options) {
            if (!qmevents::text::sameName(option.value, answer.plain)) continue;
            if (!mayUse(inquiry_.context, option.operation)) {
                answer.problem = "\"" + option.caption + "\" needs a right that you do not have";
                return;
            }
            const auto code = wholeNumber(option.value);
            answer.plain = option.value;
            answer.words = option.caption;
            answer.literal = code ? sqlLiteral(dialect_, *code, LiteralKind::number)
                                  : sqlLiteral(dialect_, option.value, LiteralKind::text);
            return;
        }
        if (filter.choices && hasWhatItNeeds(*filter.choices, earlier_)) {
            const auto key = wholeNumber(answer.plain);
            for (const auto rows = query(inquiry_, *filter.choices, earlier_); key && !rows->eof();
                 rows->next()) {
                if (cellOr<std::int32_t>(*rows, "Id", 0) != *key) continue;
                answer.literal = sqlLiteral(dialect_, *key, LiteralKind::key);
                answer.words = cellOr<std::string>(*rows, "Name", {});
                return;
            }
        }
        answer.problem = "\"" + answer.plain + "\" is none of the choices";
    }

    const Inquiry& inquiry_;
    const Answers& earlier_;
    Dialect dialect_;
};

} // namespace

bool mayUse(const SharedContext& context, const std::string& operation)
{
    return makeRef<Security>(context)->IsAllowed(operation);
}

std::vector<Value> defaultValues(const SharedContext& context, const Layout& layout)
{
    std::vector<Value> values;
    for (const FilterPlan& filter : layout.filters) {
        Value value;
        if (filter.kind == FilterKind::date) {
            if (const Date day = defaultDay(filter.defaultValue); day.hasDate()) value = day;
        } else if (filter.kind == FilterKind::yesNo) {
            value = filter.defaultValue == "yes";
        } else if (!filter.defaultValue.empty()) {
            value = filter.defaultValue;
            // A user who may not choose the default starts with the first choice that is offered.
            const auto offered = [&](const OptionPlan& option) {
                return mayUse(context, option.operation);
            };
            const auto chosen = std::find_if(
                filter.options.begin(), filter.options.end(),
                [&](const OptionPlan& option) { return option.value == filter.defaultValue; });
            if (chosen != filter.options.end() && !offered(*chosen)) {
                const auto first =
                    std::find_if(filter.options.begin(), filter.options.end(), offered);
                if (first != filter.options.end()) value = first->value;
            }
        }
        values.push_back(std::move(value));
    }
    return values;
}

bool isAsked(const Inquiry& inquiry, const FilterPlan& filter)
{
    const bool ofOneEvent = filter.kind == FilterKind::event || filter.kind == FilterKind::activity;
    return (!ofOneEvent || inquiry.source.empty()) && mayUse(inquiry.context, filter.operation);
}

Answers readAnswers(const Inquiry& inquiry)
{
    Answers answers;
    for (std::size_t i = 0; i < inquiry.layout.filters.size(); ++i) {
        const FilterPlan& filter = inquiry.layout.filters[i];
        answers[filter.key] = AnswerReader(inquiry, answers).read(filter, inquiry.values[i]);
    }
    return answers;
}

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
                statement += sqlLiteral(dialect, Clock::today(), LiteralKind::date);
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
    } catch (const Error& error) {
        failAt(inquiry.layout, sql.line,
               "the statement that begins here was refused: " + error.description());
    }
}

const Members& Choice::members() const
{
    static const Members table = qmevents::describe<Choice>("What a filter offers.")
                                     .readOnly("Id", &Choice::Id, "The value to choose it.")
                                     .readOnly("Name", &Choice::Name, "What the user sees.");
    return table;
}

const Members& Filter::members() const
{
    static const Members table =
        qmevents::describe<Filter>("A question that is asked before a report runs.")
            .readOnly("Key", &Filter::Key, "The key among the filters.")
            .readOnly("Caption", &Filter::Caption, "What the user sees.")
            .readOnly("Kind", &Filter::Kind,
                      "\"date\", \"event\", \"activity\", \"choice\", \"list\", \"number\", "
                      "\"yesno\" or \"text\".")
            .property("Value", &Filter::value, &Filter::setValue, "What is searched for.")
            .readOnly("Choices", &Filter::Choices,
                      "What can be chosen with the values that the other filters have now.")
            .readOnly("Required", &Filter::Required, "Whether it must have a value.")
            .readOnly("Problem", &Filter::Problem, "Why the value is none; empty when it is.");
    return table;
}

std::string Filter::Kind() const
{
    static constexpr const char* names[] = {"date", "event",  "activity", "choice",
                                            "list", "number", "yesno",    "text"};
    return names[static_cast<std::size_t>(plan().kind)];
}

Ref<Collection> Filter::Choices() const
{
    const auto choices = makeRef<Collection>();
    const FilterPlan& filter = plan();
    for (const OptionPlan& option : filter.options) {
        if (mayUse(inquiry_->context, option.operation))
            addChoice(*choices, option.value, option.caption);
    }
    if (filter.kind == FilterKind::event) {
        readRows(inquiry_->context, newestEvents, [&](const Cursor& row) {
            addChoice(*choices, cellOr<std::int32_t>(row, "Id", 0), eventName(row));
        });
    }
    if (filter.choices) {
        const Answers answers = readAnswers(*inquiry_);
        if (hasWhatItNeeds(*filter.choices, answers)) {
            for (const auto rows = query(*inquiry_, *filter.choices, answers); !rows->eof();
                 rows->next()) {
                addChoice(*choices, cellOr<std::int32_t>(*rows, "Id", 0),
                          cellOr<std::string>(*rows, "Name", {}));
            }
        }
    }
    return choices;
}

std::string Filter::Problem() const { return readAnswers(*inquiry_).at(plan().key).problem; }

} // namespace refhost::reporting
