#include "host/reports/filter.h"

#include "automation/describe.h"
#include "host/reports/statement.h"

namespace refhost::reporting {

using qmevents::Collection;
using qmevents::makeRef;

namespace {

// More events than anybody scrolls through; the one that is chosen is offered all the same.
constexpr std::string_view newestEvents =
    "SELECT TOP 500 e.Id, e.Name, e.StartDateTime FROM events_event_info e "
    "ORDER BY e.StartDateTime DESC, e.Id DESC";

void addChoice(Collection& choices, const Value& id, std::string name)
{
    const auto choice = makeRef<Choice>();
    choice->Id = id;
    choice->Name = std::move(name);
    choices.append(Value(choice));
}

} // namespace

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
    if (filter.kind == FilterKind::list) {
        for (const auto& [id, name] : offeredLists(*inquiry_, filter))
            addChoice(*choices, id, name);
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
