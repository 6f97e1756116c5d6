// Validating and saving events.
#include "core/reporting.h"
#include "store/audit.h"
#include "store/event_table.h"
#include "store/events_manage.h"
#include "store/list_manage.h"
#include "store/refusals.h"

namespace qmevents {
namespace {

// The event's own rules, in the order in which they are tested.
constexpr Rule<cEvent> ownRules[] = {
    {[](const cEvent& e) { return text::trim(e.Name.get()).empty(); },
     "The event name is required."},
    {[](const cEvent& e) { return !e.StartDateTime.get().hasDate(); },
     "The event start date is required."},
    {[](const cEvent& e) { return e.EndDateTime->hasTime() && !e.EndDateTime->hasDate(); },
     "The event end date is required if an end time is entered."},
    {[](const cEvent& e) {
         const Date end = e.EndDateTime;
         return (end.hasDate() || end.hasTime()) && e.StartDateTime.get() > end;
     },
     "The event end date cannot be before the event start date."},
    {[](const cEvent& e) { return e.RSVPDateTime->hasTime() && !e.RSVPDateTime->hasDate(); },
     "The event RSVP date is required if an RSVP time is entered."},
};

struct ListRule {
    Tracked<std::int32_t> cEvent::*key;
    bool (*exists)(std::int32_t);
    const char* item;
};
// What an event may refer to in the add-in's own lists.
constexpr ListRule listRules[] = {
    {&cEvent::FKLocationId, [](std::int32_t id) { return bool(findLocation(id)); },
     "event location"},
    {&cEvent::FKCategoryId, [](std::int32_t id) { return bool(findCategory(id)); },
     "event category"},
    {&cEvent::FKStatusId, [](std::int32_t id) { return bool(findStatus(id)); }, "event status"},
    {&cEvent::FKCoordinatorId, [](std::int32_t id) { return bool(findCoordinator(id)); },
     "event coordinator"},
};

bool listItemsExist(const cEvent& event)
{
    for (const auto& rule : listRules) {
        const std::int32_t id = event.*rule.key;
        if (id == 0 || rule.exists(id)) continue;
        refuse(noLongerExists(rule.item));
        return false;
    }
    return true;
}

} // namespace

bool EventsManage::ValidateEvent(const Ref<cEvent>& EventObject)
{
    return reported([&] {
        if (!isGivenTo(bool(EventObject), "Validate", "event object")) return false;
        return rulesHold(ownRules, *EventObject) && listItemsExist(*EventObject) &&
               codesExist(EventObject->FKFundId, EventObject->FKCampaignId,
                          EventObject->FKAppealId);
    });
}

bool EventsManage::UpdateEvent(const Ref<cEvent>& EventObject, bool Validate, bool ForceUpdate)
{
    return reported([&] {
        if (!mayUpdateEvents()) return false;
        if (!isGivenTo(bool(EventObject), "UpdateEvent", "event object")) return false;
        cEvent& event = *EventObject;
        std::optional<RecordLock> lock;
        if (!event.IsNew()) lock.emplace(lockEvent(event.Id()));
        if (Validate && !ValidateEvent(EventObject)) return false;

        writeRow(eventTable(), event);
        StoreAccess::markStored(event);
        if (ForceUpdate) host().document().forceUpdate();
        return true;
    });
}

} // namespace qmevents
