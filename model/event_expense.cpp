#include "model/event_expense.h"

namespace qmevents {

const Members& cEventExpense::members() const
{
    using C = cEventExpense;
    static const Members table =
        describe<C>("One cost of an event.")
            .with(entityFlags<C>)
            .stored("FKEventId", &C::FKEventId, marksDirty, "Key of the event.")
            .stored("ExpenseDate", &C::ExpenseDate, marksDirty, "Day of the expense.")
            .stored("Description", &C::Description, marksDirty, "What was bought.")
            .stored("Amount", &C::Amount, marksDirty, "Amount spent; negative for a refund.")
            .with(auditFields<C>);
    return table;
}

const Members& cEventExpenses::members() const
{
    using C = cEventExpenses;
    static const Members table = describe<C>("Expenses of events.")
                                     .with(collectionMembers<C>)
                                     .with(joinsNames<C>)
                                     .readOnly("Total", &C::Total, "Sum of the amounts.");
    return table;
}

Currency cEventExpenses::Total() const
{
    return sum([](const cEventExpense& expense) { return expense.Amount.get(); });
}

} // namespace qmevents
