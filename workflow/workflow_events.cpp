#include "workflow/workflow_events.h"

#include "automation/describe.h"
#include "core/record_lock.h"
#include "core/reporting.h"
#include "store/events_manage.h"
#include "workflow/dialog.h"
#include "workflow/refusal.h"

namespace qmevents {
namespace {

constexpr const char* newEventPage = "obsidian://events/event-fulledit?action=new";
constexpr const char* section = "events";

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

// The reservations tab opens on this donor's reservations, by date.
void filterReservationsByDonor(std::int32_t eventId, std::int32_t donorId)
{
    const Host app = host();
    const auto donor = app.modules().donor().smallDonor(donorId);
    if (!donor) return;
    const std::string id = std::to_string(eventId);
    const std::string name = toText(get(donor, "Display"));
    app.document().setPreference(section, "reservation-list-filter-" + id,
                                 "name~" + std::string(text::trim(name)));
    app.document().setPreference(section, "reservation-list-sortby-" + id, "date");
}

bool confirmed(const Ref<Dialog>& dialog) { return isConfirmed(dialog->Create()); }

} // namespace

const Members& WorkflowEvents::members() const
{
    using C = WorkflowEvents;
    static const Members table =
        describe<C>("The commands of the user.")
            .method("ManageEvents", &C::ManageEvents, "Opens the list of events.")
            .method("CreateEvent", &C::CreateEvent,
                    {optional("oEvent"), optional("InDialog", false)},
                    "Opens the full edit page for a new event.")
            .method("AddEvent", &C::AddEvent, "Enters a new event in a dialog.")
            .method("EditEvent", &C::EditEvent, {arg("EventId"), optional("EventSourceType")},
                    "Opens the full edit page of an event.")
            .method("ViewEvent", &C::ViewEvent,
                    {arg("EventId"), optional("TabName", ""), optional("DonorId", 0)},
                    "Opens the details page of an event.")
            .method("CopyEvent", &C::CopyEvent, {arg("EventId")},
                    "Copies an event and opens the copy's full edit page.")
            .method("DeleteEvent", &C::DeleteEvent, {arg("EventId")},
                    "Has an event deleted after asking.")
            .method("FindEvent", &C::FindEvent, "Searches an event and opens it.");
    return table;
}

void WorkflowEvents::ManageEvents()
{
    reported([] { host().shell().navigate("obsidian://events/events-view", true); });
}

void WorkflowEvents::CreateEvent(const std::optional<Ref<cEvent>>& oEvent, bool InDialog)
{
    reported([&] {
        const Host app = host();
        std::string address = newEventPage;
        if (oEvent && *oEvent) {
            app.setSession("event", *oEvent);
            address += "&persist=event";
        }
        if (InDialog) {
            app.shell().dialog().close(address);
        } else {
            app.shell().navigate(address);
        }
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
        if (confirmed(dialog)) host().document().forceUpdate();
    });
}

void WorkflowEvents::EditEvent(std::int32_t EventId,
                               const std::optional<std::string>& EventSourceType)
{
    reported([&] {
        RecordLock lock = lockEvent(EventId);
        std::string reason;
        if (!eventsManage()->IsValidEventAction(EventId, EventsActions::Edit, &reason)) {
            return showRefusalIfExplained(reason);
        }
        lock.release();
        host().shell().navigate(editPage(EventId, EventSourceType));
    });
}

void WorkflowEvents::ViewEvent(std::int32_t EventId, const std::string& TabName,
                               std::int32_t DonorId)
{
    reported([&] {
        std::string reason;
        if (!eventsManage()->IsValidEventAction(EventId, EventsActions::View, &reason)) {
            return showRefusal(reason);
        }
        forgetParticipantListState(EventId);
        const std::string tab(text::trim(TabName));
        if (!tab.empty()) {
            host().setSession("tabname", tab);
            if (tab == "events_reservations" && DonorId != 0) {
                filterReservationsByDonor(EventId, DonorId);
            }
        }
        host().shell().navigate("obsidian://events/event-details?id=" + std::to_string(EventId),
                                true);
    });
}

void WorkflowEvents::CopyEvent(std::int32_t EventId)
{
    reported([&] {
        RecordLock lock = lockEvent(EventId);
        std::string reason;
        if (!eventsManage()->IsValidEventAction(EventId, EventsActions::Copy, &reason)) {
            return showRefusalIfExplained(reason);
        }
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
        std::string reason;
        if (!eventsManage()->IsValidEventAction(EventId, EventsActions::Delete, &reason)) {
            return showRefusalIfExplained(reason);
        }
        const auto dialog = newDialog("deleteevent");
        dialog->set("EventId", EventId);
        if (confirmed(dialog)) host().document().forceUpdate();
    });
}

void WorkflowEvents::FindEvent()
{
    reported([&] {
        const auto dialog = newDialog("findevent");
        dialog->set("Title", "Find an Event");
        if (confirmed(dialog)) ViewEvent(toInt32(dialog->get("EventId")), "", 0);
    });
}

} // namespace qmevents
