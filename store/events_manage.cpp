#include "store/events_manage.h"

#include "core/context.h"
#include "core/reporting.h"

namespace qmevents {

const Members& EventsManage::members() const
{
    using C = EventsManage;
    static const Members table =
        describe<C>("The event store.")
            .method("GetNewEventsCriteria", &C::GetNewEventsCriteria, "New, empty search criteria.")
            .method("GetNewEvent", &C::GetNewEvent, "A new event.")
            .method("GetEvent", &C::GetEvent, {arg("EventId")}, "The event, or Nothing.")
            .method("GetEvents", &C::GetEvents, "All events.")
            .method("GetEventsBySearch", &C::GetEventsBySearch, {arg("SearchClass")},
                    "The events that satisfy the criteria.")
            .method("GetEventReservationActivitiesCount", &C::GetEventReservationActivitiesCount,
                    {arg("EventId")}, "Number of distinct activities reserved in the event.")
            .method("UpdateEvent", &C::UpdateEvent,
                    {arg("EventObject"), optional("Validate", true), optional("ForceUpdate", true)},
                    "Writes the event's row; True when it was written.")
            .method("ValidateEvent", &C::ValidateEvent, {arg("EventObject")},
                    "True when all rules hold; else the first broken one has been shown.")
            .method("DeleteEvent", &C::DeleteEvent, {arg("EventId"), arg("DeleteAssociations")},
                    "Deletes the event and all that belongs to it; its gifts too, or else they "
                    "are unlinked.")
            .method(
                "IsValidEventAction", &C::IsValidEventAction,
                {arg("EventId"), arg("Action"), optional("errormessage"), optional("EventObject")},
                "Whether an action on the event makes sense now.");
    return table;
}

Ref<EventsManage> eventsManage() { return rootPart<EventsManage>("EventsManage"); }

bool EventsManage::IsValidEventAction(std::int32_t EventId, EventsActions Action,
                                      std::string* errormessage, Ref<cEvent>* EventObject)
{
    static constexpr EventsActions accepted[] = {EventsActions::Create, EventsActions::Edit,
                                                 EventsActions::View, EventsActions::Delete,
                                                 EventsActions::Copy};
    static const ActionRules rules{"event", accepted};
    return reported([&] {
        if (!acceptsAction(rules, Action)) return false;
        auto event = EventId == 0 ? Ref<cEvent>() : GetEvent(EventId);
        const ActionAnswer answer = judgeAction(rules, Action, static_cast<bool>(event));
        if (!answer.valid) {
            if (errormessage) *errormessage = answer.message;
            return false;
        }
        if (EventObject) *EventObject = Action == EventsActions::Create ? GetNewEvent() : event;
        return true;
    });
}

} // namespace qmevents
