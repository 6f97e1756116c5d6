// The member table of the commands.
#include "automation/describe.h"
#include "workflow/workflow_events.h"

namespace qmevents {
namespace {

using C = WorkflowEvents;

Parameter eventId() { return arg("EventId"); }
Parameter eventOrSearch() { return optional("EventId", 0); }
Parameter forceUpdate() { return arg("ForceUpdate"); }

void describeEvents(Describe<C>& table)
{
    table.method("ManageEvents", &C::ManageEvents, "Opens the list of events.")
        .method("CreateEvent", &C::CreateEvent, {optional("oEvent"), optional("InDialog", false)},
                "Opens the full edit page for a new event.")
        .method("AddEvent", &C::AddEvent, "Enters a new event in a dialog.")
        .method("EditEvent", &C::EditEvent, {eventId(), optional("EventSourceType")},
                "Opens the full edit page of an event.")
        .method("ViewEvent", &C::ViewEvent,
                {eventId(), optional("TabName", ""), optional("DonorId", 0)},
                "Opens the details page of an event.")
        .method("CopyEvent", &C::CopyEvent, {eventId()},
                "Copies an event and opens the copy's full edit page.")
        .method("DeleteEvent", &C::DeleteEvent, {eventId()}, "Has an event deleted after asking.")
        .method("FindEvent", &C::FindEvent, "Searches an event and opens it.");
}

void describeParticipants(Describe<C>& table)
{
    table
        .method("AddEventParticipants", &C::AddEventParticipants, {eventId(), forceUpdate()},
                "Adds donors from a list or a query to the participants.")
        .method("AddEventParticipant", &C::AddEventParticipant,
                {eventOrSearch(), optional("ForceUpdate"), optional("DonorId", 0),
                 optional("NavigateToEvent", false)},
                "Adds one donor to the participants and, on demand, opens them.")
        .method("EditEventParticipant", &C::EditEventParticipant,
                {eventId(), arg("ParticipantId"), forceUpdate()},
                "Changes a participant in a dialog.")
        .method("DeleteEventParticipant", &C::DeleteEventParticipant,
                {eventId(), arg("ParticipantId"), forceUpdate()},
                "Removes a participant after asking.")
        .method("EditEventParticipants", &C::EditEventParticipants,
                {eventId(), arg("Participants")}, "Has a selection of participants changed.")
        .method("DeleteEventParticipants", &C::DeleteEventParticipants,
                {eventId(), arg("Participants"), forceUpdate()},
                "Has a selection of participants removed.")
        .method("AddEventParticipantReservation", &C::AddEventParticipantReservation,
                {arg("ParticipantId")}, "Adds a reservation of the participant.")
        .method("ViewEventParticipantDonor", &C::ViewEventParticipantDonor, {arg("ParticipantId")},
                "Opens the host's page of the participant's donor.");
}

void describeReservations(Describe<C>& table)
{
    const Parameter reservationId = arg("EventReservationId");
    table
        .method("AddEventReservation", &C::AddEventReservation,
                {eventOrSearch(), optional("DonorId"), optional("TabName", "")},
                "Starts a reservation; DonorId becomes the donor chosen.")
        .method("CreateEventReservation", &C::CreateEventReservation,
                {eventId(), optional("oEventReservation"), optional("TabName", ""),
                 optional("CheckActivities", false), optional("InDialog", false)},
                "Opens the full edit page for a new reservation.")
        .method("EditEventReservation", &C::EditEventReservation, {eventId(), reservationId},
                "Opens the full edit page of a reservation.")
        .method("DeleteEventReservation", &C::DeleteEventReservation,
                {eventId(), reservationId, optional("DonorId", 0)},
                "Has a reservation deleted after asking.")
        .method("EditEventReservationPayments", &C::EditEventReservationPayments,
                {eventId(), reservationId},
                "Shows the payments of a reservation for change, and adds one on demand.")
        .method("ViewEventReservationPayments", &C::ViewEventReservationPayments,
                {eventId(), reservationId}, "Shows the payments of a reservation.")
        .method("AddEventReservationActivity", &C::AddEventReservationActivity,
                {arg("EventReservation")}, "Adds a line to a reservation in memory.")
        .method("EditEventReservationActivity", &C::EditEventReservationActivity,
                {arg("EventReservationActivity"), arg("EventReservation")},
                "Changes a line of a reservation in memory.")
        .method("DeleteEventReservationActivity", &C::DeleteEventReservationActivity,
                {arg("EventReservationActivityId"), arg("EventReservation")},
                "Takes a line out of a reservation in memory.");
}

void describeActivities(Describe<C>& table)
{
    const Parameter activity = arg("EventActivity");
    const Parameter field = arg("EventActivityReservationField");
    table
        .method("AddEventActivity", &C::AddEventActivity, {eventId(), optional("TabName", "")},
                "Opens the full edit page for a new activity.")
        .method("EditEventActivity", &C::EditEventActivity, {eventId(), arg("ActivityId")},
                "Opens the full edit page of an activity.")
        .method("DeleteEventActivity", &C::DeleteEventActivity, {eventId(), arg("ActivityId")},
                "Deletes an activity that is not reserved, after asking.")
        .method("CopyEventActivity", &C::CopyEventActivity, {eventId(), arg("ActivityId")},
                "Opens the full edit page for a copy of an activity.")
        .method("AddEventActivityReservationField", &C::AddEventActivityReservationField,
                {activity}, "Adds a reservation field to an activity in memory.")
        .method("EditEventActivityReservationField", &C::EditEventActivityReservationField, {field},
                "Has a reservation field changed.")
        .method("DeleteEventActivityReservationField", &C::DeleteEventActivityReservationField,
                {arg("EventActivityReservationFieldId"), activity},
                "Takes the reservation field at a position or under a key out of an activity in "
                "memory that is not reserved.")
        .method("EditEventActivityReservationFieldItems",
                &C::EditEventActivityReservationFieldItems, {field, activity},
                "Has the choices of a reservation field changed.");
}

void describeExpensesAndTasks(Describe<C>& table)
{
    table
        .method("AddEventExpense", &C::AddEventExpense, {eventId(), forceUpdate()},
                "Enters a new expense in a dialog.")
        .method("EditEventExpense", &C::EditEventExpense, {eventId(), arg("ExpenseId")},
                "Changes an expense in a dialog.")
        .method("DeleteEventExpense", &C::DeleteEventExpense, {eventId(), arg("ExpenseId")},
                "Deletes an expense after asking.")
        .method("AddEventTask", &C::AddEventTask, {eventOrSearch(), optional("ForceUpdate")},
                "Enters a new task in a dialog.")
        .method("EditEventTask", &C::EditEventTask, {eventId(), arg("TaskId")},
                "Changes a task in a dialog.")
        .method("DeleteEventTask", &C::DeleteEventTask, {eventId(), arg("TaskId")},
                "Deletes a task after asking.")
        .method("CompleteEventTask", &C::CompleteEventTask, {eventId(), arg("TaskId")},
                "Marks a task as done.");
}

void describeMailingsAndReports(Describe<C>& table)
{
    table
        .method("SendEventMailing", &C::SendEventMailing, {eventOrSearch()},
                "Starts a mailing to a part of the event's people.")
        .method("ShowParticipantReport", &C::ShowParticipantReport, {eventOrSearch()},
                "Shows the participants of an event.")
        .method("ShowReservationByActivityReport", &C::ShowReservationByActivityReport,
                {eventOrSearch()}, "Shows the reservations of an event by activity.")
        .method("ShowReservationReport", &C::ShowReservationReport, {eventOrSearch()},
                "Shows the reservations of an event with the amounts due.")
        .method("ShowActivityReservationReport", &C::ShowActivityReservationReport,
                {eventOrSearch()}, "Shows the reservations of an activity with their fields.")
        .method("ShowActivitySummaryReport", &C::ShowActivitySummaryReport, {eventOrSearch()},
                "Shows a summary of the activities of an event.")
        .method("ShowSummaryReport", &C::ShowSummaryReport, {eventOrSearch()},
                "Shows a summary of an event.");
}

} // namespace

const Members& WorkflowEvents::members() const
{
    static const Members table = describe<C>("The commands of the user.")
                                     .with(describeEvents)
                                     .with(describeParticipants)
                                     .with(describeReservations)
                                     .with(describeActivities)
                                     .with(describeExpensesAndTasks)
                                     .with(describeMailingsAndReports);
    return table;
}

} // namespace qmevents
