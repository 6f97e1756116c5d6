// New records for an event. They live in memory until they are saved.
#include "store/events_manage.h"
#include "store/store_access.h"

namespace qmevents {
namespace {

template <typename T>
Ref<T> newChild(std::int32_t eventId)
{
    auto child = makeRef<T>();
    child->FKEventId = eventId;
    StoreAccess::markNew(*child); // clean until someone else assigns to it
    return child;
}

} // namespace

Ref<cEventActivity> EventsManage::GetNewEventActivity(std::int32_t EventId)
{
    return newChild<cEventActivity>(EventId);
}

Ref<cEventExpense> EventsManage::GetNewEventExpense(std::int32_t EventId)
{
    return newChild<cEventExpense>(EventId);
}

Ref<cEventTask> EventsManage::GetNewEventTask(std::int32_t EventId)
{
    return newChild<cEventTask>(EventId);
}

Ref<cEventReservation> EventsManage::GetNewEventReservation(std::int32_t EventId)
{
    return newChild<cEventReservation>(EventId);
}

Ref<cEventReservationActivity> EventsManage::GetNewEventReservationActivity()
{
    auto line = makeRef<cEventReservationActivity>();
    StoreAccess::markNew(*line);
    return line;
}

Ref<cEventParticipants> EventsManage::GetNewEventParticipants()
{
    return makeRef<cEventParticipants>();
}

Ref<cEventParticipant> EventsManage::GetNewEventParticipant(std::int32_t EventId,
                                                            std::int32_t DonorId)
{
    auto participant = newChild<cEventParticipant>(EventId);
    StoreAccess::load(participant->FKdonorId, DonorId);
    return participant;
}

} // namespace qmevents
