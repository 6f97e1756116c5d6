#pragma once

#include <functional>
#include <string>

#include "store/table.h"

namespace qmevents {

/// What tells one lookup list from another: its item key, its table with the columns in order, the
/// column that identifies a row, how the whole list is read, and what refers to its items.
template <typename T>
struct LookupList {
    std::string itemKey; ///< Stands in the items' ObjectType.
    Table<T> table;
    std::string identity; ///< "Id", or "FKDonorId" for the coordinators.
    std::string readsAll; ///< SELECT of the whole list, without condition and order.
    /// The statement that clears, or removes, what refers to the item with this identity.
    std::function<std::string(std::int32_t id)> clearUses;
};

const LookupList<cEventCategory>& categoryList();
const LookupList<cEventStatus>& statusList();
const LookupList<cEventLocation>& locationList();
const LookupList<cEventCoordinator>& coordinatorList();
const LookupList<cEventInvitationGroup>& invitationGroupList();

} // namespace qmevents
