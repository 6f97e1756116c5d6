#include "store/actions.h"

#include <algorithm>

#include "core/host.h"

namespace qmevents {
namespace {

// The blank behind one of the verbs stands in the host's messages, too.
const char* verbOf(EventsActions action)
{
    switch (action) {
    case EventsActions::Create:
        return "Create";
    case EventsActions::Edit:
        return "Edit";
    case EventsActions::View:
        return "View";
    case EventsActions::Delete:
        return "Delete";
    case EventsActions::EditReservationFields:
        return "change the reservation information for";
    case EventsActions::EditReservationActivities:
        return "change the activities for ";
    case EventsActions::CompleteTask:
        return "Complete";
    case EventsActions::AddReservation:
        return "add a reservation for";
    case EventsActions::ViewDonor:
        return "view the donor information for";
    case EventsActions::Copy:
        return "Copy";
    }
    return "";
}

} // namespace

bool acceptsAction(const ActionRules& rules, EventsActions action)
{
    if (std::find(rules.accepted.begin(), rules.accepted.end(), action) != rules.accepted.end()) {
        return true;
    }
    host().shell().errorUnexpected("A valid " + rules.thing + " action must be provided.");
    return false;
}

ActionAnswer judgeAction(const ActionRules& rules, EventsActions action, bool found,
                         const std::string& objection)
{
    std::string reason = found ? objection : "";
    if (action != EventsActions::Create && !found) {
        reason = "The " + rules.thing + " no longer exists.";
    } else if (action == EventsActions::Create && found) {
        reason = "The " + rules.thing + " already exists.";
    }
    if (reason.empty()) return {true, {}};
    return {false, std::string("The request to ") + verbOf(action) + " the " + rules.thing +
                       " is no longer valid.</br></br>" + reason};
}

} // namespace qmevents
