#pragma once

#include <map>
#include <set>

#include "model/event_activity.h"
#include "model/event_reservation.h"

namespace qmevents {

/// Checks lines of a reservation against what is left of their activities. Each activity, and the
/// lines that use it, are read once for all of them.
///
/// What counts is what will stand in the database after the save: of the reservation's own lines
/// those that the save writes count as they are in memory, all others as they are stored.
class ReservationCheck {
public:
    /// For lines that are saved together; `lines` may hold others, too.
    explicit ReservationCheck(const cEventReservationActivities& lines);
    /// For one line on its own.
    explicit ReservationCheck(const Ref<cEventReservationActivity>& line) { takeIn(line); }

    /// Whether the rules hold for the line; if not, the first broken one has been shown.
    bool holdsFor(const cEventReservationActivity& line);

private:
    struct Demand {
        Ref<cEventActivity> activity;                 ///< Nothing when it no longer exists.
        std::map<std::int32_t, std::int32_t> entered; ///< Quantity of stored lines, by key.
        std::int64_t units = 0;                       ///< Reserved altogether after the save.
    };
    void takeIn(const Ref<cEventReservationActivity>& line);
    Demand& demandFor(std::int32_t activityId);

    std::vector<Ref<cEventReservationActivity>> written_;
    std::set<std::int32_t> superseded_; // stored lines that the save rewrites or deletes
    std::map<std::int32_t, Demand> demands_;
};

/// Whether the save of its reservation writes the line.
inline bool isWritten(const cEventReservationActivity& line)
{
    return line.IsNew() || line.IsDirty();
}

} // namespace qmevents
