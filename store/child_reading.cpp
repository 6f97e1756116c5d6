// Reading what belongs to an event: activities, expenses, tasks, and the children by kind.
// Participants and reservations have files of their own.
#include "core/reporting.h"
#include "store/child_tables.h"
#include "store/events_manage.h"
#include "store/record_loader.h"
#include "store/statement.h"

namespace qmevents {

Ref<Object> EventsManage::childrenOf(EventChild child, std::int32_t eventId)
{
    switch (child) {
    case EventChild::activities:
        return GetEventActivities(eventId);
    case EventChild::participants:
        return GetEventParticipants(eventId);
    case EventChild::participantInvitationGroups:
        return GetEventParticipantInvitationGroups(eventId);
    case EventChild::expenses:
        return GetEventExpenses(eventId);
    case EventChild::reservations:
        return GetEventReservations(eventId);
    case EventChild::reservationActivities:
        return GetEventReservationActivities({}, eventId);
    case EventChild::sponsorships:
        return GetEventSponsorships(eventId);
    case EventChild::tasks:
        return GetEventTasks(eventId);
    }
    return {};
}

Ref<cEventActivities> EventsManage::GetEventActivities(std::int32_t EventId)
{
    return reported([&] {
        return readAll<cEventActivities>("SELECT * FROM events_event_activities WHERE FKEventId=" +
                                             literal(EventId, Kind::key) + " ORDER BY Name ",
                                         activityTable());
    });
}

Ref<cEventActivity> EventsManage::GetEventActivity(std::int32_t EventActivityId)
{
    return reported([&] {
        return readOne("SELECT * FROM events_event_activities eea WHERE eea.Id = " +
                           literal(EventActivityId, Kind::number),
                       activityTable());
    });
}

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

Ref<cEventTasks> EventsManage::GetEventTasks(std::int32_t EventId)
{
    return reported([&] {
        return readAll<cEventTasks>("SELECT * FROM events_event_tasks WHERE FKEventId=" +
                                        literal(EventId, Kind::key) + " ORDER BY duedatetime DESC",
                                    taskTable());
    });
}

Ref<cEventTasks> EventsManage::GetEventsTasksByDate(const std::string& DateString)
{
    return reported([&] {
        Statement statement(
            "SELECT tasks.*, events.Name as EventName FROM ((events_event_tasks AS tasks "
            "INNER JOIN events_event_info AS events ON tasks.FKEventId = Events.Id) "
            "INNER JOIN donor_list_assignedto AS dlassignedto "
            "ON tasks.FKAssignedToId = dlassignedto.Id) "
            "WHERE Completed = 0 AND dlassignedto.FKuserId = " +
            literal(host().security().currentUserId(), Kind::number));
        if (!DateString.empty()) statement.add("AND " + DateString);
        statement.add("ORDER BY duedatetime ASC");
        return readAll<cEventTasks>(statement.text(), taskTable());
    });
}

Ref<cEventTask> EventsManage::GetEventTask(std::int32_t EventTaskId)
{
    return reported([&] {
        return readOne("SELECT * FROM events_event_tasks eet WHERE eet.Id = " +
                           literal(EventTaskId, Kind::number),
                       taskTable());
    });
}

} // namespace qmevents
