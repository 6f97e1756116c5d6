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
        .method("DeleteDonorFromEvents", &C::DeleteDonorFromEvents,
                {arg("DonorId"), arg("DeleteDonations")},
                "Removes every trace of a donor from all events.")
        .method(
            "StartEventMailingProcess", &C::StartEventMailingProcess,
            {arg("EventId"), arg("EventMailingType"), optional("ParticipantStatuses", ""),
             optional("InvitationGroups", Value()), optional("EventReservationSponsorship", false),
             optional("EventReservationNonSponsorship", false), optional("EventActivityIds", "")},
            "Starts a mailing to a part of the event's people: by status (1), by activity (2), "
            "by sponsorship (3) or by invitation group (4).");
}

// Each operation judges an action on one kind of record.
template <typename R>
void judges(Describe<C>& table, const std::string& thing,
            bool (C::*operation)(std::int32_t, EventsActions, std::string*, Ref<R>*))
{
    table.method(
        "IsValid" + thing + "Action", operation,
        {arg(thing + "Id"), arg("Action"), optional("errormessage"), optional(thing + "Object")},
        "Whether an action on the record makes sense now; gives the reason or the "
        "record.");
}

void describeActions(Describe<C>& table)
{
    judges(table, "Event", &C::IsValidEventAction);
    judges(table, "EventReservation", &C::IsValidEventReservationAction);
    judges(table, "EventActivity", &C::IsValidEventActivityAction);
    judges(table, "EventExpense", &C::IsValidEventExpenseAction);
    judges(table, "EventParticipant", &C::IsValidEventParticipantAction);
    judges(table, "EventTask", &C::IsValidEventTaskAction);
    table.method("EventActivityInUse", &C::EventActivityInUse,
                 {arg("EventId"), arg("EventActivityId")},
                 "Whether a reservation line uses the activity.");
}

// Saving and validating, told in the same words for every kind of record.
template <typename R>
void saves(Describe<C>& table, const std::string& thing, bool (C::*update)(const Ref<R>&, bool),
           bool (C::*validate)(const Ref<R>&))
{
    table
        .method("Update" + thing, update, {arg(thing), optional("Validate", true)},
                "Writes the record and what is saved with it; True when it was written.")
        .method("Validate" + thing, validate, {arg(thing)},
                "True when all rules hold; else the first broken one has been shown.");
}

void describeActivities(Describe<C>& table)
{
    table
        .method("GetEventActivities", &C::GetEventActivities, {arg("EventId")},
                "The event's activities by name.")
        .method("GetEventActivity", &C::GetEventActivity, {arg("EventActivityId")},
                "The activity, or Nothing.")
        .method("GetNewEventActivity", &C::GetNewEventActivity, {optional("EventId", 0)},
                "A new activity of the event.")
        .method("GetNewEventActivityReservationField", &C::GetNewEventActivityReservationField,
                "A new reservation field, not yet part of an activity.")
        .method("DeleteEventActivity", &C::DeleteEventActivity,
                {arg("EventId"), arg("EventActivityId")},
                "Deletes the activity and the reservation lines that use it.");
    saves(table, "EventActivity", &C::UpdateEventActivity, &C::ValidateEventActivity);
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
                {optional("EventId", 0), optional("DonorId", 0)}, "A new participant of the event.")
        .method("UpdateEventParticipant", &C::UpdateEventParticipant, {arg("EventParticipant")},
                "Writes the participant and replaces its invitation groups.")
        .method("ValidateEventParticipant", &C::ValidateEventParticipant, {arg("EventParticipant")},
                "True when all rules hold; else the first broken one has been shown.")
        .method("AddEventParticipants", &C::AddEventParticipants,
                {arg("EventId"), arg("EventParticipants")},
                "Saves a collection of new participants of the event.")
        .method("DeleteEventParticipant", &C::DeleteEventParticipant,
                {arg("EventId"), arg("EventParticipantId"), optional("AddDeleteInteraction", true),
                 optional("LockEvent", true)},
                "Deletes the participant with its memberships in invitation groups.");
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
                "A new reservation line.")
        .method("GetNewEventReservationActivityField", &C::GetNewEventReservationActivityField,
                "A new value of a reservation field, not yet part of a line.")
        .method("DeleteEventReservation", &C::DeleteEventReservation,
                {arg("EventId"), arg("EventReservationId"), optional("AddDeleteInteraction", true),
                 optional("LockEvent", true), optional("DeleteDonations", false)},
                "Deletes the reservation with its lines; its gifts too, or else they are "
                "unlinked.")
        .method("DeleteEventReservationActivity", &C::DeleteEventReservationActivity,
                {arg("EventId"), arg("EventReservationActivityId")}, "Deletes a reservation line.");
    saves(table, "EventReservation", &C::UpdateEventReservation, &C::ValidateEventReservation);
    saves(table, "EventReservationActivity", &C::UpdateEventReservationActivity,
          &C::ValidateEventReservationActivity);
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
                "A new task of the event.")
        .method("DeleteEventExpense", &C::DeleteEventExpense,
                {arg("EventId"), arg("EventExpenseId")}, "Deletes the expense.")
        .method("DeleteEventTask", &C::DeleteEventTask, {arg("EventId"), arg("EventTaskId")},
                "Deletes the task.");
    saves(table, "EventExpense", &C::UpdateEventExpense, &C::ValidateEventExpense);
    saves(table, "EventTask", &C::UpdateEventTask, &C::ValidateEventTask);
}

} // namespace

const Members& EventsManage::members() const
{
    static const Members table = describe<C>("The event store.")
                                     .with(describeEvents)
                                     .with(describeActions)
                                     .with(describeActivities)
                                     .with(describeParticipants)
                                     .with(describeReservations)
                                     .with(describeExpensesAndTasks);
    return table;
}

} // namespace qmevents
