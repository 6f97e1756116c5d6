// Expenses: columns, rules, messages and everything that is done with them.
#include "automation/text.h"
#include "store/child_story.h"
#include "store/events_manage.h"
#include "store/record_loader.h"

namespace qmevents {
namespace {

using C = cEventExpense;

const Table<C>& expenseTable()
{
    static const auto table =
        audited<C>("events_event_expenses", {
                                                column("FKEventId", Kind::key, &C::FKEventId),
                                                column("ExpenseDate", Kind::date, &C::ExpenseDate),
                                                column("Description", Kind::text, &C::Description),
                                                column("Amount", Kind::number, &C::Amount),
                                            });
    return table;
}

constexpr Rule<C> rules[] = {
    {lacksEvent, eventRequired},
    {[](const C& e) { return !e.ExpenseDate->hasDate(); }, "A valid expense date is required."},
    // A negative amount is a refund.
    {[](const C& e) { return e.Amount.get() == Currency(); },
     "A valid expense amount is required."},
    {[](const C& e) { return text::trim(e.Description.get()).empty(); },
     "A valid expense description is required."},
};

const ChildStory<C>& story()
{
    static const ChildStory<C> story{
        {.updateMethod = "UpdateEventExpense",
         .thing = "event expense",
         .idName = "expenseid",
         .cascade =
             [](const std::string& id) {
                 return std::vector{"DELETE FROM events_event_expenses WHERE Id = " + id};
             }},
        expenseTable,
        [](const C& expense) { return rulesHold(rules, expense); }};
    return story;
}

} // namespace

Ref<cEventExpenses> EventsManage::GetEventExpenses(std::int32_t EventId)
{
    return reported([&] {
        return readAll<cEventExpenses>(
            "SELECT * FROM events_event_expenses WHERE FKEventId=" + literal(EventId, Kind::key) +
                " ORDER BY expensedate DESC",
            expenseTable());
    });
}

Ref<cEventExpense> EventsManage::GetEventExpense(std::int32_t EventExpenseId)
{
    return reported([&] {
        return readOne("SELECT * FROM events_event_expenses eee WHERE eee.Id = " +
                           literal(EventExpenseId, Kind::number),
                       expenseTable());
    });
}

Ref<cEventExpense> EventsManage::GetNewEventExpense(std::int32_t EventId)
{
    return newChild<C>(EventId);
}

bool EventsManage::UpdateEventExpense(const Ref<cEventExpense>& EventExpense, bool Validate)
{
    return updateChild(story(), EventExpense, Validate);
}

bool EventsManage::ValidateEventExpense(const Ref<cEventExpense>& EventExpense)
{
    return validateChild(story(), EventExpense);
}

bool EventsManage::DeleteEventExpense(std::int32_t EventId, std::int32_t EventExpenseId)
{
    return deleteChild(story(), EventId, EventExpenseId);
}

} // namespace qmevents
