#include "store/events_manage.h"

#include "core/context.h"

namespace qmevents {

Ref<EventsManage> eventsManage() { return rootPart<EventsManage>("EventsManage"); }

Ref<Object> EventsManage::childrenOf(EventChild child, std::int32_t eventId)
{
    switch (child) {
    case EventChild::activities:
        return GetEventActivities(eventId);
    case EventChild::participants:
        return GetEventParticipants(eventId);
    case EventChild::participantInvitationGroups:
        return GetEventParticipantInvitationGroups(eventId);
    case EventChild::expenses:
        return GetEventExpenses(eventId);
    case EventChild::reservations:
        return GetEventReservations(eventId);
    case EventChild::reservationActivities:
        return GetEventReservationActivities({}, eventId);
    case EventChild::sponsorships:
        return GetEventSponsorships(eventId);
    case EventChild::tasks:
        return GetEventTasks(eventId);
    }
    return {};
}

} // namespace qmevents
