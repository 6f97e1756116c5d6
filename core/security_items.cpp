#include "core/security_items.h"

#include <algorithm>
#include <span>

#include "automation/text.h"
#include "core/host.h"

namespace qmevents {
namespace {

// What each right opens: pages by the names of their addresses, dialogs by their keys, tabs by
// theirs, and buttons, tasks and menu entries by the command that they run. A dialog called like
// the command that shows it stands here once. Pages and dialogs in which a user without the right
// to change may still look are among what may be seen.
constexpr std::string_view toSee[] = {
    "events-view", "event-details", "events-settings", "attendance-desk", "door-list",
    "name-badges", "reservation-confirmation",
    // Dialogs.
    "findevent", "eventsfindresults", "customizeeventdetails", "participantmessage",
    "selecteventreservation", "editeventreservationpayments",
    // Commands.
    "ManageEvents", "ViewEvent", "View Event", "ViewEventParticipantDonor",
    "ViewEventReservationPayments", "ShowParticipantReport", "ShowReservationByActivityReport",
    "ShowReservationReport", "ShowActivityReservationReport", "ShowActivitySummaryReport",
    "ShowSummaryReport"};

constexpr std::string_view toEdit[] = {
    "event-fulledit", "eventactivity-fulledit", "eventreservation-fulledit",
    // Dialogs, most of them also commands.
    "addevent", "copyevent", "addeventparticipants", "addeventparticipant", "editeventparticipant",
    "editeventparticipants", "deleteeventparticipants", "editeventactivity",
    "addeventactivityfield", "editeventactivityfield", "editreservationfielditems",
    "deleteeventreservation", "editeventreservationactivity", "editeventexpense", "editeventtask",
    "choosedonationtype",
    // Commands.
    "CreateEvent", "EditEvent", "DeleteEventParticipant", "AddEventParticipantReservation",
    "AddEventReservation", "CreateEventReservation", "EditEventReservation",
    "AddEventReservationActivity", "DeleteEventReservationActivity", "AddEventActivity",
    "DeleteEventActivity", "CopyEventActivity", "AddEventActivityReservationField",
    "EditEventActivityReservationField", "DeleteEventActivityReservationField",
    "EditEventActivityReservationFieldItems", "AddEventExpense", "DeleteEventExpense",
    "AddEventTask", "DeleteEventTask", "CompleteEventTask"};

constexpr std::string_view toDelete[] = {"deleteevent"};

constexpr std::string_view toSet[] = {"editeventcategory", "editeventstatus", "editeventlocation",
                                      "editeventinvitationgroup"};

constexpr std::string_view toMail[] = {"sendeventmailing"};

constexpr std::string_view toSeeGifts[] = {"events_gifts"};

struct Guard {
    const char* right;
    std::span<const std::string_view> items;
};
constexpr Guard guards[] = {{"events/view", toSee},      {"events/edit", toEdit},
                            {"events/delete", toDelete}, {"events/settings", toSet},
                            {"mailings/send", toMail},   {"donations/view", toSeeGifts}};

std::string keyOf(const Value& item)
{
    if (item.isObject()) return item.object() ? toText(get(item.object(), "Key")) : std::string();
    return item.isText() ? item.text() : std::string();
}

/// The page or dialog that `key` names when it is an address or a file; else `key` as it is.
std::string_view pageName(std::string_view key)
{
    key = key.substr(0, key.find('?'));
    if (const auto slash = key.find_last_of("/\\"); slash != key.npos) key.remove_prefix(slash + 1);
    if (text::sameName(key.substr(std::min(key.size(), key.rfind('.'))), ".html")) {
        key.remove_suffix(5);
    }
    return key;
}

} // namespace

bool isItemAllowed(const Value& item)
{
    const std::string key = keyOf(item);
    const std::string_view name = pageName(key);
    for (const Guard& guard : guards) {
        const bool guarded = std::ranges::any_of(
            guard.items, [&](std::string_view one) { return text::sameName(one, name); });
        if (guarded) return host().security().isAllowed(guard.right);
    }
    return true;
}

} // namespace qmevents
