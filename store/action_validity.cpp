// Whether an action on a record still makes sense.
#include "core/reporting.h"
#include "store/events_manage.h"

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

constexpr std::uint32_t bit(EventsActions action)
{
    const auto code = static_cast<std::int32_t>(action);
    return code >= 1 && code <= 31 ? std::uint32_t{1} << code : 0;
}
template <typename... Actions>
constexpr std::uint32_t actions(Actions... accepted)
{
    return (bit(accepted) | ...);
}

/// What differs between the kinds of records.
struct ActionRules {
    const char* thing;      ///< What a refusal calls the record.
    std::uint32_t accepted; ///< The actions that it knows.
    Ref<Entity> (*read)(EventsManage&, std::int32_t id);
    Ref<Entity> (*make)(EventsManage&);
    /// A further reason against an action on the record with this key; null for none.
    const char* (*objection)(EventsManage&, EventsActions, std::int32_t id);
};

using S = EventsManage;
using enum EventsActions;

const char* none(S&, EventsActions, std::int32_t) { return nullptr; }

constexpr ActionRules eventRules{
    "event", actions(Create, Edit, View, Delete, Copy),
    [](S& s, std::int32_t id) -> Ref<Entity> { return s.GetEvent(id); },
    [](S& s) -> Ref<Entity> { return s.GetNewEvent(); }, none};
constexpr ActionRules reservationRules{
    "event reservation", actions(Create, Edit, View, Delete, EditReservationActivities),
    [](S& s, std::int32_t id) -> Ref<Entity> { return s.GetEventReservation(id); },
    [](S& s) -> Ref<Entity> { return s.GetNewEventReservation(); }, none};
constexpr ActionRules activityRules{
    "event activity", actions(Create, Edit, Delete, EditReservationFields, Copy),
    [](S& s, std::int32_t id) -> Ref<Entity> { return s.GetEventActivity(id); },
    [](S& s) -> Ref<Entity> { return s.GetNewEventActivity(); },
    [](S& s, EventsActions action, std::int32_t id) -> const char* {
        return action == Delete && s.EventActivityInUse(0, id)
                   ? "The event has reservations that include the activity."
                   : nullptr;
    }};
constexpr ActionRules expenseRules{
    "event expense", actions(Create, Edit, Delete),
    [](S& s, std::int32_t id) -> Ref<Entity> { return s.GetEventExpense(id); },
    [](S& s) -> Ref<Entity> { return s.GetNewEventExpense(); }, none};
constexpr ActionRules participantRules{
    "event participant", actions(Create, Edit, Delete, AddReservation, ViewDonor),
    [](S& s, std::int32_t id) -> Ref<Entity> { return s.GetEventParticipant(id); },
    [](S& s) -> Ref<Entity> { return s.GetNewEventParticipant(); }, none};
constexpr ActionRules taskRules{
    "event task", actions(Create, Edit, Delete, CompleteTask),
    [](S& s, std::int32_t id) -> Ref<Entity> { return s.GetEventTask(id); },
    [](S& s) -> Ref<Entity> { return s.GetNewEventTask(); }, none};

// Why the action makes no sense; empty when it does.
std::string reasonAgainst(S& store, const ActionRules& rules, EventsActions action, std::int32_t id,
                          bool found)
{
    const std::string thing = rules.thing;
    if (action == Create) return found ? "The " + thing + " already exists." : "";
    if (!found) return "The " + thing + " no longer exists.";
    const char* objection = rules.objection(store, action, id);
    return objection ? objection : "";
}

template <typename C>
bool isValid(S& store, const ActionRules& rules, std::int32_t id, EventsActions action,
             std::string* message, Ref<C>* record)
{
    return reported([&] {
        if ((rules.accepted & bit(action)) == 0) {
            host().shell().errorUnexpected("A valid " + std::string(rules.thing) +
                                           " action must be provided.");
            return false;
        }
        const auto found = id == 0 ? Ref<Entity>() : rules.read(store, id);
        const std::string reason = reasonAgainst(store, rules, action, id, bool(found));
        if (!reason.empty()) {
            if (message) {
                *message = std::string("The request to ") + verbOf(action) + " the " + rules.thing +
                           " is no longer valid.</br></br>" + reason;
            }
            return false;
        }
        if (record) *record = refCast<C>(action == Create ? rules.make(store) : found);
        return true;
    });
}

} // namespace

bool EventsManage::IsValidEventAction(std::int32_t EventId, EventsActions Action,
                                      std::string* errormessage, Ref<cEvent>* EventObject)
{
    return isValid(*this, eventRules, EventId, Action, errormessage, EventObject);
}

bool EventsManage::IsValidEventReservationAction(std::int32_t EventReservationId,
                                                 EventsActions Action, std::string* errormessage,
                                                 Ref<cEventReservation>* EventReservationObject)
{
    return isValid(*this, reservationRules, EventReservationId, Action, errormessage,
                   EventReservationObject);
}

bool EventsManage::IsValidEventActivityAction(std::int32_t EventActivityId, EventsActions Action,
                                              std::string* errormessage,
                                              Ref<cEventActivity>* EventActivityObject)
{
    return isValid(*this, activityRules, EventActivityId, Action, errormessage,
                   EventActivityObject);
}

bool EventsManage::IsValidEventExpenseAction(std::int32_t EventExpenseId, EventsActions Action,
                                             std::string* errormessage,
                                             Ref<cEventExpense>* EventExpenseObject)
{
    return isValid(*this, expenseRules, EventExpenseId, Action, errormessage, EventExpenseObject);
}

bool EventsManage::IsValidEventParticipantAction(std::int32_t EventParticipantId,
                                                 EventsActions Action, std::string* errormessage,
                                                 Ref<cEventParticipant>* EventParticipantObject)
{
    return isValid(*this, participantRules, EventParticipantId, Action, errormessage,
                   EventParticipantObject);
}

bool EventsManage::IsValidEventTaskAction(std::int32_t EventTaskId, EventsActions Action,
                                          std::string* errormessage,
                                          Ref<cEventTask>* EventTaskObject)
{
    return isValid(*this, taskRules, EventTaskId, Action, errormessage, EventTaskObject);
}

} // namespace qmevents
