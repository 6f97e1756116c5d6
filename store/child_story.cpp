#include "store/child_story.h"

namespace qmevents {

bool eventStillExists(std::int32_t eventId)
{
    const RecordReader row("SELECT id FROM events_event_info WHERE id=" +
                           literal(eventId, Kind::number));
    if (!row.atEnd()) return true;
    // Two blanks behind the full stop, and no line break, are the text's own.
    refuse("The event does not exist.  " + std::string(deletedByAnotherUser));
    return false;
}

bool canBeDeleted(const ChildNames& child, std::int32_t id)
{
    if (id >= 1) return true;
    const std::string thing = child.thing;
    host().shell().errorUnexpected("Could not delete " + thing + " because " + thing +
                                   " id is not valid (" + child.idName + "=" + std::to_string(id) +
                                   ")");
    return false;
}

void runCascade(const ChildNames& child, std::int32_t id)
{
    const Document document = host().document();
    for (const auto& statement : child.cascade(std::to_string(id))) document.execute(statement);
}

bool deleteChild(const ChildNames& child, std::int32_t eventId, std::int32_t id,
                 const Deletion& deletion)
{
    return reported([&] {
        if (!mayUpdateEvents() || !canBeDeleted(child, id)) return false;
        std::optional<RecordLock> lock;
        if (deletion.lockEvent) lock.emplace(lockEvent(eventId));
        deletion.before();
        runCascade(child, id);
        deletion.after();
        return true;
    });
}

} // namespace qmevents
