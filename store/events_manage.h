#pragma once

#include <string>

#include "model/event.h"
#include "model/events_criteria.h"
#include "store/actions.h"

namespace qmevents {

/// The event store: reads, searches, validates, saves and deletes events, and tells which actions
/// on them are valid. Failures are reported through the host's shell where they happen and give an
/// empty or false result.
class EventsManage : public DescribedObject, public EventSource {
public:
    static constexpr std::string_view ClassName = "EventsManage";
    const Members& members() const override;

    Ref<cEventsCriteria> GetNewEventsCriteria();
    Ref<cEvent> GetNewEvent();
    /// The event, or nothing when there is none.
    Ref<cEvent> GetEvent(std::int32_t EventId);
    Ref<cEvents> GetEvents();
    Ref<cEvents> GetEventsBySearch(const Ref<cEventsCriteria>& SearchClass);
    std::int32_t GetEventReservationActivitiesCount(std::int32_t EventId) override;
    Ref<Object> childrenOf(EventChild child, std::int32_t eventId) override;

    /// Writes the event's row under the event's lock; true when it was written.
    bool UpdateEvent(const Ref<cEvent>& EventObject, bool Validate = true, bool ForceUpdate = true);
    /// True when all rules hold; else the first broken one has been shown.
    bool ValidateEvent(const Ref<cEvent>& EventObject);
    /// Deletes the event and all that belongs to it in one transaction. Its gifts are deleted when
    /// `DeleteAssociations` is set, else only unlinked.
    bool DeleteEvent(std::int32_t EventId, bool DeleteAssociations);

    /// Whether the action makes sense now. Fills in the reason when it does not, and the event (a
    /// new one for Create) when it does.
    bool IsValidEventAction(std::int32_t EventId, EventsActions Action,
                            std::string* errormessage = nullptr,
                            Ref<cEvent>* EventObject = nullptr);
};

/// The store behind the add-in's root object.
Ref<EventsManage> eventsManage();

} // namespace qmevents
