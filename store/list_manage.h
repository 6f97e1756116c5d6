#pragma once

#include <string>

#include "model/lookup_items.h"

namespace qmevents {

/// The store of the five lookup lists that events refer to, and of the host's attribute lists.
class ListManage : public DescribedObject {
public:
    static constexpr std::string_view ClassName = "ListManage";
    const Members& members() const override;

    /// A new item of the list with this item key ("eventcategory", ...); nothing for another key,
    /// which is reported.
    Ref<Object> GetNewItem(const std::string& Key);

    Ref<cEventCategory> GetEventCategory(std::int32_t Id);
    Ref<cEventStatus> GetEventStatus(std::int32_t Id);
    Ref<cEventLocation> GetEventLocation(std::int32_t Id);
    Ref<cEventCoordinator> GetEventCoordinator(std::int32_t Id); ///< `Id` is the donor's.
    Ref<cEventInvitationGroup> GetEventInvitationGroup(std::int32_t Id);

    // Whole lists in their order; hidden items on demand.
    Ref<cEventCategories> GetEventCategories(bool IncludeHidden);
    Ref<cEventStatuses> GetEventStatuses(bool IncludeHidden);
    Ref<cEventLocations> GetEventLocations(bool IncludeHidden);
    Ref<cEventCoordinators> GetEventCoordinators(bool IncludeHidden);
    Ref<cEventInvitationGroups> GetEventInvitationGroups(bool IncludeHidden);
    /// The values of a host attribute table; `AttributeName` is the column that holds the names.
    Ref<cAttributeValues> GetAttributeValues(const std::string& table,
                                             const std::string& AttributeName, bool IncludeHidden);

    bool UpdateEventCategory(const Ref<cEventCategory>& EventCategory);
    bool UpdateEventStatus(const Ref<cEventStatus>& EventStatus);
    bool UpdateEventLocation(const Ref<cEventLocation>& EventLocation);
    bool UpdateEventCoordinator(const Ref<cEventCoordinator>& EventCoordinator);
    bool UpdateEventInvitationGroup(const Ref<cEventInvitationGroup>& EventInvitationGroup);

    // Delete an item and clear, or remove, what refers to it.
    bool DeleteEventCategory(const Ref<cEventCategory>& EventCategory);
    bool DeleteEventStatus(const Ref<cEventStatus>& EventStatus);
    bool DeleteEventLocation(const Ref<cEventLocation>& EventLocation);
    bool DeleteEventCoordinator(const Ref<cEventCoordinator>& EventCoordinator);
    bool DeleteEventInvitationGroup(const Ref<cEventInvitationGroup>& EventInvitationGroup);

    // Save a whole list: deleted items first, then every live item with its order.
    bool UpdateEventCategories(const Ref<cEventCategories>& EventCategories);
    bool UpdateEventStatuses(const Ref<cEventStatuses>& EventStatuses);
    bool UpdateEventLocations(const Ref<cEventLocations>& EventLocations);
    bool UpdateEventCoordinators(const Ref<cEventCoordinators>& EventCoordinators);
    bool UpdateEventInvitationGroups(const Ref<cEventInvitationGroups>& EventInvitationGroups);
};

// One item, or nothing, for use inside an operation: a failure is thrown, where the list store
// reports it and gives nothing.
Ref<cEventCategory> findCategory(std::int32_t id);
Ref<cEventStatus> findStatus(std::int32_t id);
Ref<cEventLocation> findLocation(std::int32_t id);
Ref<cEventCoordinator> findCoordinator(std::int32_t donorId);
Ref<cEventInvitationGroup> findInvitationGroup(std::int32_t id);

/// The list store behind the add-in's root object.
Ref<ListManage> listManage();

} // namespace qmevents
