#include "host/reports/answers.h"

#include <algorithm>
#include <cmath>

#include "automation/clock.h"
#include "automation/error.h"
#include "automation/locale.h"
#include "host/document/objects/sql_literal.h"
#include "host/reports/statement.h"
#include "host/security/security.h"

namespace refhost::reporting {

using qmevents::Clock;
using qmevents::Date;
using qmevents::Error;

namespace {

constexpr std::string_view eventGone =
    "The event no longer exists. It may have been deleted by another user.";

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

// Layouts, and those who type, say "yes" and "no".
bool isYes(const Value& value)
{
    const auto is = [&](const char* word) {
        return value.isText() && qmevents::text::sameName(qmevents::text::trim(value.text()), word);
    };
    return is("yes") || (!is("no") && qmevents::toBool(value));
}

// What an error says beyond its standard text, which is for those who write scripts.
std::string reasonOf(const Error& error)
{
    const std::string text = error.description();
    const auto standard = std::string(standardText(qmevents::ErrorNumber::invalidCall)) + " (";
    const bool isWrapped = text.starts_with(standard) && text.ends_with(')');
    return isWrapped ? text.substr(standard.size(), text.size() - standard.size() - 1) : text;
}

// The host keeps lists of some kinds of records only.
bool keepsLists(const std::string& entityType)
{
    const auto types = listTypes();
    return std::any_of(types.begin(), types.end(),
                       [&](const ListType& type) { return type.name == entityType; });
}

class AnswerReader {
public:
    AnswerReader(const Inquiry& inquiry, const Answers& earlier, ReadFor purpose)
        : inquiry_(inquiry), earlier_(earlier), purpose_(purpose),
          dialect_(inquiry.context->sql().dialect())
    {
    }

    Answer read(const FilterPlan& filter, const Value& value) const
    {
        Answer answer;
        answer.literal = "NULL";
        if (filter.kind == FilterKind::list && !inquiry_.source.empty()) return chosenRecords();
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
            // What happened to an event is told without naming the filter.
            if (answer.problem == eventGone) return answer;
            answer.problem = "\"" + filter.caption + "\": " + answer.problem;
            if (!answer.problem.ends_with('.')) answer.problem += '.';
        }
        return answer;
    }

private:
    Answer chosenRecords() const
    {
        Answer answer;
        answer.given = true;
        answer.literal = inquiry_.source;
        answer.words = "those that were chosen";
        return answer;
    }

    void readValue(const FilterPlan& filter, const Value& value, Answer& answer) const
    {
        if (filter.kind == FilterKind::yesNo) {
            const bool yes = isYes(value);
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
        case FilterKind::list:
            return readList(filter, answer);
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

    void readList(const FilterPlan& filter, Answer& answer) const
    {
        const auto id = wholeNumber(answer.plain);
        for (const auto& [offered, name] : offeredLists(inquiry_, filter)) {
            if (offered != id) continue;
            answer.words = name;
            try {
                if (purpose_ == ReadFor::running) answer.literal = inquiry_.lists->Source(offered);
            } catch (const Error& error) {
                answer.problem = reasonOf(error);
            }
            return;
        }
        answer.problem = "\"" + answer.plain + "\" is none of the lists";
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
    ReadFor purpose_;
    Dialect dialect_;
};

} // namespace

std::string eventName(const Cursor& row)
{
    const Date start = cellOr(row, "StartDateTime", Date());
    const auto name = cellOr<std::string>(row, "Name", {});
    return start.hasDate() ? name + " (" + qmevents::Locale::current().shortDate(start) + ")"
                           : name;
}

std::vector<OfferedList> offeredLists(const Inquiry& inquiry, const FilterPlan& filter)
{
    std::vector<OfferedList> offered;
    const auto lists = inquiry.lists->Lists();
    for (std::size_t i = 1; i <= lists->size(); ++i) {
        const auto list = qmevents::refCast<SmartList>(lists->at(i).object());
        if (list->ListType() == filter.entityType) offered.push_back({list->Id, list->Name});
    }
    return offered;
}

bool mayUse(const SharedContext& context, const std::string& operation)
{
    return qmevents::makeRef<Security>(context)->IsAllowed(operation);
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
    const bool ofRecords = filter.kind == FilterKind::list || filter.kind == FilterKind::event ||
                           filter.kind == FilterKind::activity;
    if (ofRecords && !inquiry.source.empty()) return false;
    if (filter.kind == FilterKind::list && !keepsLists(filter.entityType)) return false;
    return mayUse(inquiry.context, filter.operation);
}

Answers readAnswers(const Inquiry& inquiry, ReadFor purpose)
{
    Answers answers;
    for (std::size_t i = 0; i < inquiry.layout.filters.size(); ++i) {
        const FilterPlan& filter = inquiry.layout.filters[i];
        answers[filter.key] =
            AnswerReader(inquiry, answers, purpose).read(filter, inquiry.values[i]);
    }
    return answers;
}

} // namespace refhost::reporting
