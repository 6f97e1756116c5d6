#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "automation/error.h"
#include "core/record_lock.h"
#include "core/reporting.h"
#include "store/events_manage.h"
#include "workflow/dialog.h"
#include "workflow/refusal.h"

// The steps that commands share: search an event, choose a donor, ask whether an action is valid,
// show a dialog, go to a page.
namespace qmevents {

/// Shows the dialog; whether the user confirmed.
bool confirmed(const Ref<Dialog>& dialog);
/// What the page left in an output of the dialog, converted; an error names the output.
template <typename T>
T output(const Ref<Dialog>& dialog, std::string_view property, T (*convert)(const Value&))
{
    try {
        return convert(dialog->get(property));
    } catch (const Error& error) {
        throw Error(error.number(), error.source(),
                    error.description() + ": " + std::string(property) + " of " +
                        std::string(dialog->className()));
    }
}

/// The texts of the dialog in which a command has its event searched.
struct EventSearch {
    const char* title = "";
    const char* heading = nullptr;
    const char* description = nullptr;
};
inline constexpr const char* eventSearchHint =
    "Enter part or all of the event name you would like to find, then Click Next below.";

/// Has the user search an event; nothing when cancelled.
std::optional<std::int32_t> findEvent(const EventSearch& search);
/// The event given, or the one that the user finds; 0 when there is none, which ends the command.
std::int32_t eventOrFound(std::int32_t eventId, const EventSearch& search);

/// The texts and offers of the host's dialog in which a command has its donor chosen.
struct DonorSearch {
    const char* title = "";
    const char* heading = "";
    const char* description = nullptr;
    bool showsAll = false;
};
/// The donor given, or the one that the user chooses or enters; 0 when there is none, which ends
/// the command.
std::int32_t donorOrChosen(std::int32_t donorId, const DonorSearch& search);

/// The store's question whether an action on a record of class `C` is valid.
template <typename C>
using ActionCheck = bool (EventsManage::*)(std::int32_t id, EventsActions, std::string* reason,
                                           Ref<C>* record);

/// Which refusals are told. None but those without a reason can be silent.
enum class Telling { whenExplained, always };

/// Tells the user why an action is refused; `forceUpdate`, where given, then becomes true.
void tellRefusal(const std::string& reason, Telling telling, bool* forceUpdate = nullptr);

/// The record when the action on it is valid; else nothing, and the user has been told why.
template <typename C>
Ref<C> allowed(ActionCheck<C> check, std::int32_t id, EventsActions action,
               Telling telling = Telling::whenExplained, bool* forceUpdate = nullptr)
{
    std::string reason;
    Ref<C> record;
    if (std::invoke(check, *eventsManage(), id, action, &reason, &record)) return record;
    tellRefusal(reason, telling, forceUpdate);
    return {};
}

/// Whether the lines or fields of a record that is being edited may change; if not, the user has
/// been told why. There is nothing in the database that could contradict a record not stored yet.
template <typename C>
bool mayChangeParts(ActionCheck<C> check, const C& record, EventsActions action)
{
    if (record.IsNew()) return true;
    std::string reason;
    if (std::invoke(check, *eventsManage(), record.Id(), action, &reason, nullptr)) return true;
    showRefusal(reason, RefusalEnding::sameLine);
    return false;
}

/// The object, which a command cannot do without; error 91 naming it when there is none.
template <typename T>
T& needed(const Ref<T>& object, const char* name)
{
    if (!object) throw Error::with(ErrorNumber::objectNotSet, std::string(name) + " is needed");
    return *object;
}

/// Tells the caller of a command that its lists must be read again.
inline void setTrue(bool* forceUpdate)
{
    if (forceUpdate) *forceUpdate = true;
}
/// Has the document that the host shows read again.
void refresh();
/// Moves the main view to a page; from a dialog page, once its window has closed.
void goTo(const std::string& address, bool inDialog);
/// Notes the tab on which the event's details page opens; the reservations tab opens on the
/// donor's reservations, by date.
void openOnTab(std::int32_t eventId, const std::string& tab, std::int32_t donorId);

} // namespace qmevents
