#pragma once

#include <cstdint>

#include "model/event.h"

namespace qmevents {

/// What a donor's history says when something happens to the donor at an event.
struct HistoryNote {
    const char* heading; ///< Stands before the event's name.
    const char* by;      ///< Stands before the user's name.
    const char* dated;   ///< Stands before the day.
};
inline constexpr HistoryNote participantAdded{
    "Added To Participant List: ", "Added By: ", "Event Date: "};
inline constexpr HistoryNote participantRemoved{
    "Removed From Participant List: ", "Removed By: ", "Event Date: "};
inline constexpr HistoryNote reservationAdded{
    "Reservation Added For Event: ", "Added By: ", "Reservation Date: "};
inline constexpr HistoryNote reservationRemoved{
    "Reservation Removed From Event: ", "Removed By: ", "Reservation Date: "};

/// Adds a note to the donor's history: heading, user and day, a line each. A day that is not known
/// is left out.
void addHistoryNote(const HistoryNote& note, std::int32_t donorId, const cEvent& event, Date day);

} // namespace qmevents
