// Participants: adding, changing and removing donors, and what leads on from a participant.
#include "workflow/child_commands.h"
#include "workflow/workflow_events.h"

namespace qmevents {
namespace {

constexpr auto check = &EventsManage::IsValidEventParticipantAction;

std::string removalQuestion(const cEventParticipant& participant)
{
    const auto donor = host().modules().donor().donor(participant.FKdonorId);
    const std::string name = donor ? toText(get(donor, "Display")) : std::string();
    if (text::trim(name).empty()) {
        return "Are you sure you want to delete this event participant?";
    }
    return "Are you sure you want to remove " + name + " from the participant list?";
}

constexpr EditedInDialog<cEventParticipant> edited{
    check, "editeventparticipant", "EventParticipant",
    [](EventsManage& store, const Ref<cEventParticipant>& participant) {
        return store.UpdateEventParticipant(participant);
    }};
constexpr DeletedAfterAsking<cEventParticipant> deleted{
    check,
    [](EventsManage& store, std::int32_t eventId, std::int32_t id) {
        return store.DeleteEventParticipant(eventId, id);
    },
    "Delete Participant", removalQuestion};

// The dialogs on a selection of participants save or delete themselves.
bool handledInDialog(const char* dialogKey, std::int32_t eventId,
                     const Ref<cEventParticipants>& selection)
{
    needed(selection, "Participants");
    const RecordLock lock = lockEvent(eventId);
    const auto dialog = newDialog(dialogKey);
    dialog->set("EventId", eventId);
    dialog->set("EventParticipants", selection);
    return confirmed(dialog);
}

constexpr EventSearch eventOfParticipant{"Add as Event Participant",
                                         "Find an Event For This Participant", eventSearchHint};
constexpr DonorSearch donorToAdd{"Choose a Donor", "Find a Donor To Add As a Participant"};

} // namespace

void WorkflowEvents::AddEventParticipants(std::int32_t EventId, bool* ForceUpdate)
{
    reported([&] {
        const RecordLock lock = lockEvent(EventId);
        const auto dialog = newDialog("addeventparticipants");
        dialog->set("Title", "Add Event Participants");
        dialog->set("Heading", "");
        dialog->set("EventId", EventId);
        if (confirmed(dialog)) setTrue(ForceUpdate);
    });
}

void WorkflowEvents::AddEventParticipant(std::int32_t EventId, bool* ForceUpdate,
                                         std::int32_t DonorId, bool NavigateToEvent)
{
    reported([&] {
        const auto eventId = eventOrFound(EventId, eventOfParticipant);
        if (eventId == 0) return;
        const RecordLock lock = lockEvent(eventId);
        const auto donorId = donorOrChosen(DonorId, donorToAdd);
        if (donorId == 0) return;
        const auto added = eventsManage()->GetNewEventParticipants();
        added->add(eventsManage()->GetNewEventParticipant(eventId, donorId));
        const auto dialog = newDialog("addeventparticipant");
        dialog->set("Title", "Add Event Participant");
        dialog->set("EventId", eventId);
        dialog->set("EventParticipants", added);
        if (!confirmed(dialog)) return;
        setTrue(ForceUpdate);
        if (!NavigateToEvent) return;
        call(host().modules().events().commands(), "ViewEvent", eventId, "events_participants");
    });
}

void WorkflowEvents::EditEventParticipant(std::int32_t EventId, std::int32_t ParticipantId,
                                          bool* ForceUpdate)
{
    reported([&] {
        if (edit(edited, EventId, ParticipantId, ForceUpdate)) setTrue(ForceUpdate);
    });
}

void WorkflowEvents::DeleteEventParticipant(std::int32_t EventId, std::int32_t ParticipantId,
                                            bool* ForceUpdate)
{
    reported([&] {
        if (deleteAfterAsking(deleted, EventId, ParticipantId, ForceUpdate)) {
            setTrue(ForceUpdate);
        }
    });
}

void WorkflowEvents::EditEventParticipants(std::int32_t EventId,
                                           const Ref<cEventParticipants>& Participants)
{
    reported([&] {
        if (handledInDialog("editeventparticipants", EventId, Participants)) refresh();
    });
}

void WorkflowEvents::DeleteEventParticipants(std::int32_t EventId,
                                             const Ref<cEventParticipants>& Participants,
                                             bool* ForceUpdate)
{
    reported([&] {
        if (handledInDialog("deleteeventparticipants", EventId, Participants)) {
            setTrue(ForceUpdate);
        }
    });
}

void WorkflowEvents::AddEventParticipantReservation(std::int32_t ParticipantId)
{
    reported([&] {
        const auto participant =
            allowed(check, ParticipantId, EventsActions::AddReservation, Telling::always);
        if (!participant) return;
        std::int32_t donorId = participant->FKdonorId;
        AddEventReservation(participant->FKEventId, &donorId, "");
    });
}

void WorkflowEvents::ViewEventParticipantDonor(std::int32_t ParticipantId)
{
    reported([&] {
        const auto participant =
            allowed(check, ParticipantId, EventsActions::ViewDonor, Telling::always);
        if (!participant) return;
        host().shell().navigate("obsidian://donor/details-donor?id=" +
                                std::to_string(participant->FKdonorId));
    });
}

} // namespace qmevents
