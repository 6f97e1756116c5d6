#include "model/event_task.h"

namespace qmevents {

const Members& cEventTask::members() const
{
    using C = cEventTask;
    static const Members table =
        describe<C>("One thing to do for an event.")
            .with(entityFlags<C>)
            .stored("FKEventId", &C::FKEventId, marksDirty, "Key of the event.")
            .stored("Name", &C::Name, marksDirty, "The task.")
            .stored("Notes", &C::Notes, marksDirty, "Free notes.")
            .stored("DueDateTime", &C::DueDateTime, marksDirty, "When it is due.")
            .stored("Completed", &C::Completed, marksDirty, "Whether it is done.")
            .stored("FKAssignedToId", &C::FKAssignedToId, marksDirty,
                    "Whom it is assigned to, from the host's list of assignees.")
            .with(auditFields<C>);
    return table;
}

const Members& cEventTasks::members() const
{
    using C = cEventTasks;
    static const Members table =
        describe<C>("Tasks of events.").with(collectionMembers<C>).with(joinsNames<C>);
    return table;
}

} // namespace qmevents
