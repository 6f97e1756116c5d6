#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/reporting.h"
#include "store/audit.h"
#include "store/refusals.h"

namespace qmevents {

/// How the messages speak of a kind of record that belongs to an event, and what goes when one of
/// them goes.
struct ChildNames {
    const char* updateMethod = ""; ///< The saving operation; of one kind by an older name.
    const char* thing = "";        ///< "event expense".
    const char* idName = "";       ///< Its key, in the message about an impossible one.
    /// The statements that delete the record with key `id`, in order.
    std::vector<std::string> (*cascade)(const std::string& id) = nullptr;
};

/// What differs between the kinds of records that belong to an event. With its columns, this is
/// the whole story of one.
template <typename C>
struct ChildStory : ChildNames {
    const Table<C>& (*table)() = nullptr;
    /// Whether the rules hold; if not, the first broken one has been shown.
    std::function<bool(C&)> isValid;
    /// Whether there is what a save needs besides the event; if not, that has been reported.
    std::function<bool(const C&)> isComplete = [](const C&) { return true; };
    /// Writes what stands in other tables, right behind the row. False when that failed and has
    /// been reported.
    std::function<bool(C&, bool wasNew)> saveRest = [](C&, bool) { return true; };
    /// Tells of a new record that it has been stored, with all that belongs to it.
    std::function<void(const C&)> added = [](const C&) {};
};

/// Whether the event's row still exists; if not, the user has been told.
bool eventStillExists(std::int32_t eventId);

/// A new record of an event, clean until someone else assigns to it.
template <typename C>
Ref<C> newChild(std::int32_t eventId)
{
    auto child = makeRef<C>();
    child->FKEventId = eventId;
    StoreAccess::markNew(*child);
    return child;
}

/// The rule that a record has an event.
template <typename C>
bool lacksEvent(const C& record)
{
    return record.FKEventId < 1;
}
inline constexpr const char* eventRequired = "A valid event id is required.";

template <typename C>
bool isValidChild(const ChildStory<C>& story, const Ref<C>& record)
{
    if (record) return story.isValid(*record);
    refuse("The Validate method requires a valid " + std::string(story.thing) + " object");
    return false;
}

/// Writes the record's row and what belongs to it. The event is locked.
template <typename C>
bool saveChild(const ChildStory<C>& story, C& record)
{
    const bool wasNew = record.IsNew();
    writeRow(story.table(), record);
    // Told last, and owed until then: after a failure the record is no longer new.
    bool& isUntold = StoreAccess::isUntold(record);
    isUntold = isUntold || wasNew;
    if (!story.saveRest(record, wasNew)) return false;
    if (isUntold) story.added(record);
    isUntold = false;
    StoreAccess::markStored(record);
    return true;
}

/// Whether a save has what it needs; if not, that has been reported.
template <typename C>
bool canBeSaved(const ChildStory<C>& story, const Ref<C>& record)
{
    return isGivenTo(bool(record), story.updateMethod, std::string(story.thing) + " class") &&
           isGivenTo(record->FKEventId >= 1, story.updateMethod, "event id") &&
           story.isComplete(*record);
}

/// The one path on which records are saved: right, record, lock, rules, event, row.
template <typename C>
bool updateChild(const ChildStory<C>& story, const Ref<C>& record, bool validate)
{
    return reported([&] {
        if (!mayUpdateEvents() || !canBeSaved(story, record)) return false;
        const RecordLock lock = lockEvent(record->FKEventId);
        if (validate && !isValidChild(story, record)) return false;
        return eventStillExists(record->FKEventId) && saveChild(story, *record);
    });
}

template <typename C>
bool validateChild(const ChildStory<C>& story, const Ref<C>& record)
{
    return reported([&] { return isValidChild(story, record); });
}

/// What a deletion does besides its statements.
struct Deletion {
    bool lockEvent = true;
    std::function<void()> before = [] {};
    std::function<void()> after = [] {};
};

/// Whether a record can have this key; if not, that has been reported.
bool canBeDeleted(const ChildNames& child, std::int32_t id);
void runCascade(const ChildNames& child, std::int32_t id);

/// The one path on which records are deleted: right, key, lock, statements.
bool deleteChild(const ChildNames& child, std::int32_t eventId, std::int32_t id,
                 const Deletion& deletion = {});

} // namespace qmevents
