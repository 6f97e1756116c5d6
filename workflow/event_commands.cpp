// Events as a whole: list, create, edit, view, copy, delete, find.
#include "workflow/command_steps.h"
#include "workflow/workflow_events.h"

namespace qmevents {
namespace {

constexpr auto check = &EventsManage::IsValidEventAction;

std::string editPage(std::int32_t eventId, const std::optional<std::string>& sourceType)
{
    return "obsidian://events/event-fulledit?id=" + std::to_string(eventId) + "&action=edit" +
           (sourceType ? "&actiontype=" + *sourceType : "");
}

// Each visit starts at the top of the participant list, also of the event seen last.
void forgetParticipantListState(std::int32_t eventId)
{
    const std::string id = std::to_string(eventId);
    for (const char* key : {"lastselectedrow-", "lastselectedid-", "lastliststate-"}) {
        host().setSession("eventdetailsparticipants-" + std::string(key) + id, "");
    }
}

} // namespace

void WorkflowEvents::ManageEvents()
{
    reported([] { host().shell().navigate("obsidian://events/events-view", true); });
}

void WorkflowEvents::CreateEvent(const std::optional<Ref<cEvent>>& oEvent, bool InDialog)
{
    reported([&] {
        std::string address = "obsidian://events/event-fulledit?action=new";
        if (oEvent && *oEvent) {
            host().setSession("event", *oEvent);
            address += "&persist=event";
        }
        goTo(address, InDialog);
    });
}

void WorkflowEvents::AddEvent()
{
    reported([] {
        const auto dialog = newDialog("addevent");
        dialog->set("Title", "Add an Event");
        dialog->set("Heading", "Add an Event");
        dialog->set("Description", "Add an event by providing some information.");
        dialog->set("EventInfo", eventsManage()->GetNewEvent());
        if (confirmed(dialog)) refresh();
    });
}

void WorkflowEvents::EditEvent(std::int32_t EventId,
                               const std::optional<std::string>& EventSourceType)
{
    reported([&] {
        RecordLock lock = lockEvent(EventId);
        if (!allowed(check, EventId, EventsActions::Edit)) return;
        lock.release();
        host().shell().navigate(editPage(EventId, EventSourceType));
    });
}

void WorkflowEvents::ViewEvent(std::int32_t EventId, const std::string& TabName,
                               std::int32_t DonorId)
{
    reported([&] {
        if (!allowed(check, EventId, EventsActions::View, Telling::always)) return;
        forgetParticipantListState(EventId);
        openOnTab(EventId, std::string(text::trim(TabName)), DonorId);
        host().shell().navigate("obsidian://events/event-details?id=" + std::to_string(EventId),
                                true);
    });
}

void WorkflowEvents::CopyEvent(std::int32_t EventId)
{
    reported([&] {
        RecordLock lock = lockEvent(EventId);
        if (!allowed(check, EventId, EventsActions::Copy)) return;
        const auto dialog = newDialog("copyevent");
        dialog->set("EventInfo", eventsManage()->GetEvent(EventId));
        if (!confirmed(dialog)) return;
        const auto newEventId = toInt32(dialog->get("NewEventId"));
        if (newEventId == 0) return;
        lock.release();
        EditEvent(newEventId, "copy");
    });
}

void WorkflowEvents::DeleteEvent(std::int32_t EventId)
{
    reported([&] {
        const RecordLock lock = lockEvent(EventId);
        if (!allowed(check, EventId, EventsActions::Delete)) return;
        const auto dialog = newDialog("deleteevent");
        dialog->set("EventId", EventId);
        if (confirmed(dialog)) refresh();
    });
}

void WorkflowEvents::FindEvent()
{
    reported([&] {
        if (const auto eventId = findEvent({.title = "Find an Event"})) ViewEvent(*eventId, "", 0);
    });
}

} // namespace qmevents
