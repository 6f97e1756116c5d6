#include "store/events_manage.h"

#include "core/context.h"
#include "core/reporting.h"

namespace qmevents {

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
