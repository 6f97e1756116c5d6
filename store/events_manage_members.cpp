// The public face of the event store: one line a member.
#include "store/events_manage.h"

namespace qmevents {
namespace {

using C = EventsManage;

void describeEvents(Describe<C>& table)
{
    table.method("GetNewEventsCriteria", &C::GetNewEventsCriteria, "New, empty search criteria.")
        .method("GetNewEvent", &C::GetNewEvent, "A new event.")
        .method("GetEvent", &C::GetEvent, {arg("EventId")}, "The event, or Nothing.")
        .method("GetEvents", &C::GetEvents, "All events.")
        .method("GetEventsBySearch", &C::GetEventsBySearch, {arg("SearchClass")},
                "The events that satisfy the criteria.")
        .method("UpdateEvent", &C::UpdateEvent,
                {arg("EventObject"), optional("Validate", true), optional("ForceUpdate", true)},
                "Writes the event's row; True when it was written.")
        .method("ValidateEvent", &C::ValidateEvent, {arg("EventObject")},
                "True when all rules hold; else the first broken one has been shown.")
        .method("DeleteEvent", &C::DeleteEvent, {arg("EventId"), arg("DeleteAssociations")},
                "Deletes the event and all that belongs to it; its gifts too, or else they are "
                "unlinked.")
        .method("IsValidEventAction", &C::IsValidEventAction,
                {arg("EventId"), arg("Action"), optional("errormessage"), optional("EventObject")},
                "Whether an action on the event makes sense now.");
}

void describeActivities(Describe<C>& table)
{
    table
        .method("GetEventActivities", &C::GetEventActivities, {arg("EventId")},
                "The event's activities by name.")
        .method("GetEventActivity", &C::GetEventActivity, {arg("EventActivityId")},
                "The activity, or Nothing.")
        .method("GetNewEventActivity", &C::GetNewEventActivity, {optional("EventId", 0)},
                "A new activity of the event.");
}

void describeParticipants(Describe<C>& table)
{
    table
        .method("GetEventParticipants", &C::GetEventParticipants,
                {optional("EventId"), optional("DonorId")},
                "The event's participants with the names of their invitation groups, or else the "
                "donor's participations.")
        .method("GetEventParticipant", &C::GetEventParticipant,
                {optional("EventParticipantId"), optional("EventId"), optional("DonorId")},
                "The participant with a key, or else the donor as a participant of the event; "
                "Nothing when there is none.")
        .method("GetEventParticipantInvitationGroups", &C::GetEventParticipantInvitationGroups,
                {arg("EventId"), optional("DonorId")},
                "Memberships of the event's participants, or of one donor, in invitation groups.")
        .method("GetNewEventParticipants", &C::GetNewEventParticipants,
                "An empty collection of participants.")
        .method("GetNewEventParticipant", &C::GetNewEventParticipant,
                {optional("EventId", 0), optional("DonorId", 0)},
                "A new participant of the event.");
}

void describeReservations(Describe<C>& table)
{
    table
        .method("GetEventReservations", &C::GetEventReservations,
                {optional("EventId"), optional("DonorId"), optional("OrderBy", "")},
                "The event's reservations, or else the donor's; latest first by default.")
        .method("GetEventReservation", &C::GetEventReservation, {arg("EventReservationId")},
                "The reservation, or Nothing.")
        .method("GetEventReservationActivities", &C::GetEventReservationActivities,
                {optional("ReservationId"), optional("EventId")},
                "The lines of the reservation, or else of all the event's reservations.")
        .method("GetEventReservationActivity", &C::GetEventReservationActivity,
                {arg("EventReservationActivityId")}, "The reservation line, or Nothing.")
        .method("GetEventActivityReservations", &C::GetEventActivityReservations,
                {arg("ActivityId"), optional("OrderBy", "")},
                "The reservation lines that use the activity.")
        .method("GetEventReservationActivitiesCount", &C::GetEventReservationActivitiesCount,
                {arg("EventId")}, "Number of distinct activities reserved in the event.")
        .method("GetEventSponsorships", &C::GetEventSponsorships, {arg("EventId")},
                "The reservation lines of sponsorship activities, by donor.")
        .method("GetEventReservationAndActivitiesRecordSet",
                &C::GetEventReservationAndActivitiesRecordSet,
                {arg("EventId"), optional("OrderBy", ""), optional("FilterBy", "")},
                "The host's record set of the event's reservations, one row a line.")
        .method("GetNewEventReservation", &C::GetNewEventReservation, {optional("EventId", 0)},
                "A new reservation at the event.")
        .method("GetNewEventReservationActivity", &C::GetNewEventReservationActivity,
                "A new reservation line.");
}

void describeExpensesAndTasks(Describe<C>& table)
{
    table
        .method("GetEventExpenses", &C::GetEventExpenses, {arg("EventId")},
                "The event's expenses, newest first.")
        .method("GetEventExpense", &C::GetEventExpense, {arg("EventExpenseId")},
                "The expense, or Nothing.")
        .method("GetNewEventExpense", &C::GetNewEventExpense, {optional("EventId", 0)},
                "A new expense of the event.")
        .method("GetEventTasks", &C::GetEventTasks, {arg("EventId")},
                "The event's tasks, the one due last first.")
        .method("GetEventsTasksByDate", &C::GetEventsTasksByDate, {optional("DateString", "")},
                "The current user's open tasks of all events, earliest due first; DateString is a "
                "condition on the due date in SQL.")
        .method("GetEventTask", &C::GetEventTask, {arg("EventTaskId")}, "The task, or Nothing.")
        .method("GetNewEventTask", &C::GetNewEventTask, {optional("EventId", 0)},
                "A new task of the event.");
}

} // namespace

const Members& EventsManage::members() const
{
    static const Members table = describe<C>("The event store.")
                                     .with(describeEvents)
                                     .with(describeActivities)
                                     .with(describeParticipants)
                                     .with(describeReservations)
                                     .with(describeExpensesAndTasks);
    return table;
}

} // namespace qmevents
