#pragma once

#include <cstdint>

#include "automation/object.h"

namespace qmevents {

/// The child collections of an event, in the order of its members.
enum class EventChild {
    activities,
    participants,
    participantInvitationGroups,
    expenses,
    reservations,
    reservationActivities,
    sponsorships,
    tasks,
};
constexpr std::size_t eventChildren = 8;

/// What an event needs of the store to fetch what belongs to it; the store implements it.
class EventSource {
public:
    virtual ~EventSource() = default;
    /// The collection of all children of one kind of an event.
    virtual Ref<Object> childrenOf(EventChild child, std::int32_t eventId) = 0;
    /// Number of distinct activities reserved in an event.
    virtual std::int32_t GetEventReservationActivitiesCount(std::int32_t EventId) = 0;

    /// The store behind the add-in's root object. Error 13 when the root's is not the add-in's own.
    static EventSource& ofRoot();
};

} // namespace qmevents
