#pragma once

#include <cstdint>

#include "automation/describe.h"

namespace qmevents {

/// What a user asks to do with a record.
enum class EventsActions : std::int32_t {
    Create = 1,
    Edit,
    View,
    Delete,
    EditReservationFields,
    EditReservationActivities,
    CompleteTask,
    AddReservation,
    ViewDonor,
    Copy,
};
template <>
struct EnumerationName<EventsActions> {
    static constexpr const char* value = "EventsActions";
};

} // namespace qmevents
