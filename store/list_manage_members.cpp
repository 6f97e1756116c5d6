// The public face of the list store.
#include "store/list_manage.h"

namespace qmevents {
namespace {

// The five members that each list has, under the list's own names.
template <auto readOne, auto readAll, auto update, auto erase, auto updateAll>
void listMembers(Describe<ListManage>& table, const std::string& one, const std::string& all)
{
    table.method("Get" + one, readOne, {arg("Id")}, "The item, hidden or not, or Nothing.")
        .method("Get" + all, readAll, {optional("IncludeHidden", false)},
                "The list in its order; hidden items on demand.")
        .method("Update" + one, update, {arg(one)}, "Writes an item.")
        .method("Delete" + one, erase, {arg(one)},
                "Deletes an item and clears or removes what refers to it.")
        .method("Update" + all, updateAll, {arg(all)},
                "Saves the list: deletes its deleted items, then writes every item.");
}

} // namespace

const Members& ListManage::members() const
{
    using C = ListManage;
    static const Members table =
        describe<C>("The store of the lookup lists that events refer to.")
            .method("GetNewItem", &C::GetNewItem, {arg("Key")},
                    "A new item of the list with this item key.")
            .with([](Describe<C>& t) {
                listMembers<&C::GetEventCategory, &C::GetEventCategories, &C::UpdateEventCategory,
                            &C::DeleteEventCategory, &C::UpdateEventCategories>(t, "EventCategory",
                                                                                "EventCategories");
                listMembers<&C::GetEventStatus, &C::GetEventStatuses, &C::UpdateEventStatus,
                            &C::DeleteEventStatus, &C::UpdateEventStatuses>(t, "EventStatus",
                                                                            "EventStatuses");
                listMembers<&C::GetEventLocation, &C::GetEventLocations, &C::UpdateEventLocation,
                            &C::DeleteEventLocation, &C::UpdateEventLocations>(t, "EventLocation",
                                                                               "EventLocations");
                listMembers<&C::GetEventCoordinator, &C::GetEventCoordinators,
                            &C::UpdateEventCoordinator, &C::DeleteEventCoordinator,
                            &C::UpdateEventCoordinators>(t, "EventCoordinator",
                                                         "EventCoordinators");
                listMembers<&C::GetEventInvitationGroup, &C::GetEventInvitationGroups,
                            &C::UpdateEventInvitationGroup, &C::DeleteEventInvitationGroup,
                            &C::UpdateEventInvitationGroups>(t, "EventInvitationGroup",
                                                             "EventInvitationGroups");
            })
            .method("GetAttributeValues", &C::GetAttributeValues,
                    {arg("table"), optional("AttributeName", ""), optional("IncludeHidden", false)},
                    "The values of a host attribute table.");
    return table;
}

} // namespace qmevents
