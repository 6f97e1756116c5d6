#pragma once

#include <cstdint>
#include <span>
#include <string>

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

/// The rules that differ between the kinds of records: what a refusal calls the record, and the
/// actions that it knows.
struct ActionRules {
    std::string thing; ///< "event", "event reservation", ...
    std::span<const EventsActions> accepted;
};

/// Whether `action` makes sense for the record in its present state. Gives the reason why not; an
/// action that the record does not know is reported as a programming error.
struct ActionAnswer {
    bool valid = false;
    std::string message; ///< Of a refusal: heading, two line breaks, reason.
};

/// Judges `action` on a record that `found` tells to exist. `objection` may name a further reason
/// against an action on a record that exists; empty for none.
ActionAnswer judgeAction(const ActionRules& rules, EventsActions action, bool found,
                         const std::string& objection = {});

/// Whether the record knows `action`; if not, that is reported.
bool acceptsAction(const ActionRules& rules, EventsActions action);

} // namespace qmevents
