// The lines of a reservation, which are edited in memory and saved with it.
#include "workflow/command_steps.h"
#include "workflow/workflow_events.h"

namespace qmevents {
namespace {

// The reservation's lines when they may change; else nothing, and the user has been told.
Ref<cEventReservationActivities> linesToChange(const Ref<cEventReservation>& reservation)
{
    auto& changed = needed(reservation, "EventReservation");
    const bool mayChange = mayChangeParts(&EventsManage::IsValidEventReservationAction, changed,
                                          EventsActions::EditReservationActivities);
    return mayChange ? changed.Activities() : nullptr;
}

struct LineDialog {
    const char *action, *title, *heading;
};
constexpr LineDialog adding{"add", "Add a Reservation Activity",
                            "Add an activity to the reservation"};
constexpr LineDialog editing{"edit", "Edit the Reservation Activity",
                             "Edit the reservation activity"};

bool confirmedIn(const LineDialog& texts, const cEventReservation& reservation,
                 const Ref<cEventReservationActivities>& lines,
                 const Ref<cEventReservationActivity>& line)
{
    const auto dialog = newDialog("editeventreservationactivity");
    dialog->set("Title", texts.title);
    dialog->set("Heading", texts.heading);
    dialog->set("Action", texts.action);
    dialog->set("EventId", reservation.FKEventId);
    dialog->set("ReservationId", reservation.Id());
    dialog->set("EventReservationActivities", lines);
    dialog->set("EventReservationActivity", line);
    return confirmed(dialog);
}

void markPageModified() { host().shell().page().setModified(); }

} // namespace

void WorkflowEvents::AddEventReservationActivity(const Ref<cEventReservation>& EventReservation)
{
    reported([&] {
        const auto lines = linesToChange(EventReservation);
        if (!lines) return;
        const auto line = eventsManage()->GetNewEventReservationActivity();
        if (!confirmedIn(adding, *EventReservation, lines, line)) return;
        Value key = line->Id();
        lines->Add(line, &key);
        line->setId(toInt32(key)); // by which it can be taken out again
        markPageModified();
    });
}

void WorkflowEvents::EditEventReservationActivity(
    const Ref<cEventReservationActivity>& EventReservationActivity,
    const Ref<cEventReservation>& EventReservation)
{
    reported([&] {
        auto& line = needed(EventReservationActivity, "EventReservationActivity");
        const auto lines = linesToChange(EventReservation);
        if (!lines) return;
        if (!confirmedIn(editing, *EventReservation, lines, EventReservationActivity)) return;
        // A new price or quantity alone leaves a line clean, and the save would pass over it.
        line.Notes = line.Notes.get();
        markPageModified();
    });
}

void WorkflowEvents::DeleteEventReservationActivity(std::int32_t EventReservationActivityId,
                                                    const Ref<cEventReservation>& EventReservation)
{
    reported([&] {
        const auto lines = linesToChange(EventReservation);
        if (!lines) return;
        lines->takeOut(EventReservationActivityId); // the save deletes the row, if there is one
        markPageModified();
    });
}

} // namespace qmevents
