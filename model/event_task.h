#pragma once

#include "model/entity.h"
#include "model/typed_collection.h"

namespace qmevents {

/// One thing to do for an event.
class cEventTask : public Entity, public AuditFields {
public:
    static constexpr std::string_view ClassName = "cEventTask";
    const Members& members() const override;

    Tracked<std::int32_t> FKEventId{*this};
    Tracked<std::string> Name{*this};
    Tracked<std::string> Notes{*this};
    Tracked<Date> DueDateTime{*this};
    Tracked<bool> Completed{*this};
    Tracked<std::int32_t> FKAssignedToId{*this}; ///< Key in the host's list of assignees.

    std::string displayName() const { return Name; }
};

/// Tasks under their keys.
class cEventTasks : public TypedCollection<cEventTask> {
public:
    static constexpr std::string_view ClassName = "cEventTasks";
    const Members& members() const override;
};

} // namespace qmevents
