#pragma once

#include <string>

#include "workflow/command_steps.h"

namespace qmevents {

/// What differs between the kinds of records of an event that commands enter and change in a
/// dialog.
template <typename C>
struct EditedInDialog {
    ActionCheck<C> check;
    const char* dialogKey;
    const char* property; ///< Under which the dialog has the record.
    bool (*save)(EventsManage&, const Ref<C>&);
};

/// Has the user fill in a record and saves it; true when it may have been written, also when the
/// save failed half-way.
template <typename C>
bool enter(const EditedInDialog<C>& kind, const char* action, const Ref<C>& record)
{
    const auto dialog = newDialog(kind.dialogKey);
    dialog->set("Title", "");
    dialog->set("Heading", "");
    dialog->set("Action", action);
    dialog->set(kind.property, record);
    if (!confirmed(dialog)) return false;
    kind.save(*eventsManage(), record);
    return true;
}

/// Has the user change a stored record; `forceUpdate` becomes true when a refusal was shown.
template <typename C>
bool edit(const EditedInDialog<C>& kind, std::int32_t eventId, std::int32_t id,
          bool* forceUpdate = nullptr)
{
    const RecordLock lock = lockEvent(eventId);
    const auto record =
        allowed(kind.check, id, EventsActions::Edit, Telling::whenExplained, forceUpdate);
    return record && enter(kind, "edit", record);
}

/// What differs between the kinds of records of an event that commands delete after asking.
template <typename C>
struct DeletedAfterAsking {
    ActionCheck<C> check;
    bool (*remove)(EventsManage&, std::int32_t eventId, std::int32_t id);
    const char* title;
    std::string (*question)(const C&);
};

/// Deletes a record when the user says yes; true when it may have been deleted.
template <typename C>
bool deleteAfterAsking(const DeletedAfterAsking<C>& kind, std::int32_t eventId, std::int32_t id,
                       bool* forceUpdate = nullptr)
{
    const RecordLock lock = lockEvent(eventId);
    const auto record =
        allowed(kind.check, id, EventsActions::Delete, Telling::whenExplained, forceUpdate);
    if (!record || !host().shell().askYesNo(kind.question(*record), kind.title)) return false;
    kind.remove(*eventsManage(), eventId, id);
    return true;
}

} // namespace qmevents
