// What goes out about an event: mailings and the reports on a single event.
#include "workflow/command_steps.h"
#include "workflow/workflow_events.h"

namespace qmevents {
namespace {

constexpr EventSearch eventOfMailing{
    "Send Event Mailing", "Select an Event for the Mailing",
    "Enter part or all of the event name you would like to find, then Click Next below. The event "
    "you choose will be used to generate a mailing list of donors participating in the event."};

// The pages leave outputs that the choice does not use out, Null or blank: none of them all.
template <auto convert>
auto orNone(const Value& output)
{
    const bool isNone = output.isNull() || (output.isText() && output.text().empty());
    return convert(isNone ? Value() : output);
}

struct EventReport {
    const char *title, *key;
};

void showReport(const EventReport& report, std::int32_t givenId)
{
    reported([&] {
        const auto eventId = eventOrFound(givenId, {.title = report.title});
        if (eventId == 0) return;
        const Host app = host();
        const auto folder = app.modules().events().reportFolder();
        app.shell().navigate(
            app.modules().quillmere().reports().address(folder, report.key, eventId));
    });
}

} // namespace

void WorkflowEvents::SendEventMailing(std::int32_t EventId)
{
    reported([&] {
        const auto eventId = eventOrFound(EventId, eventOfMailing);
        if (eventId == 0) return;
        const auto dialog = newDialog("sendeventmailing");
        dialog->set("EventId", eventId);
        if (!confirmed(dialog)) return;
        eventsManage()->StartEventMailingProcess(
            eventId, output(dialog, "Choice", orNone<toText>),
            output(dialog, "ParticipantStatuses", orNone<toText>),
            output(dialog, "InvitationGroups", orNone<toObject>),
            output(dialog, "ReservationSponsorship", orNone<toBool>),
            output(dialog, "ReservationNonSponsorship", orNone<toBool>),
            output(dialog, "ActivityIds", orNone<toText>));
    });
}

void WorkflowEvents::ShowParticipantReport(std::int32_t EventId)
{
    showReport({"Show Event Participant List", "events-event-participant-list"}, EventId);
}

void WorkflowEvents::ShowReservationByActivityReport(std::int32_t EventId)
{
    showReport(
        {"Show Event Reservation List By Activity", "events-event-reservation-list-by-activity"},
        EventId);
}

void WorkflowEvents::ShowReservationReport(std::int32_t EventId)
{
    showReport({"Show Event Reservation List", "events-event-reservation-list"}, EventId);
}

void WorkflowEvents::ShowActivityReservationReport(std::int32_t EventId)
{
    showReport(
        {"Show Event Reservations For Activity List", "events-event-activity-reservation-list"},
        EventId);
}

void WorkflowEvents::ShowActivitySummaryReport(std::int32_t EventId)
{
    showReport({"Show Event Activity Summary", "events-event-activity-summary"}, EventId);
}

void WorkflowEvents::ShowSummaryReport(std::int32_t EventId)
{
    showReport({"Show Event Summary", "events-event-summary"}, EventId);
}

} // namespace qmevents
