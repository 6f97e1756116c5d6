#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "automation/object.h"

namespace qmevents {

class cEventActivity;
class cEventParticipantGroups;
class cEventReservationActivities;

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

/// What the records need of the store to fetch what belongs to them; the store implements it. A
/// read that failed has been reported and gives nothing; one called `find...` throws instead, for
/// answers that are kept.
class EventSource {
public:
    virtual ~EventSource() = default;
    /// The collection of all children of one kind of an event.
    virtual Ref<Object> childrenOf(EventChild child, std::int32_t eventId) = 0;
    /// Number of distinct activities reserved in an event.
    virtual std::int32_t GetEventReservationActivitiesCount(std::int32_t EventId) = 0;
    /// The activity, or nothing when there is none.
    virtual Ref<cEventActivity> findActivity(std::int32_t activityId) = 0;
    /// The lines that use an activity; the default order is the database's.
    virtual Ref<cEventReservationActivities>
    GetEventActivityReservations(std::int32_t ActivityId, const std::string& OrderBy) = 0;
    /// The lines of a reservation, or else those of an event whose activities exist.
    virtual Ref<cEventReservationActivities>
    GetEventReservationActivities(const std::optional<std::int32_t>& ReservationId,
                                  const std::optional<std::int32_t>& EventId) = 0;
    /// The lines of all reservations of an event, which know their activities without asking.
    virtual Ref<cEventReservationActivities> findLinesOfReservations(std::int32_t eventId) = 0;
    /// The memberships in invitation groups of an event's participants, or of one of them.
    virtual Ref<cEventParticipantGroups>
    GetEventParticipantInvitationGroups(std::int32_t EventId,
                                        const std::optional<std::int32_t>& DonorId) = 0;

    /// The store behind the add-in's root object. Error 13 when the root's is not the add-in's own.
    static EventSource& ofRoot();
};

} // namespace qmevents
