#include "model/lookup_items.h"

namespace qmevents {
namespace {

template <typename C>
void commonMembers(Describe<C>& table)
{
    table.stored("ObjectType", &C::ObjectType, leavesClean, "The list's item key.")
        .stored("Description", &C::Description, marksDirty, "Description.")
        .stored("Visible", &C::Visible, marksDirty, "Whether choice lists offer the item.")
        .stored("Order", &C::Order, marksDirty, "Position in the list.");
}

template <typename C>
void sortOrder(Describe<C>& table)
{
    table.readOnly("SortOrder", &C::SortOrder, "Order as text with 15 digits, for sorting.");
}

template <typename C>
void namedMembers(Describe<C>& table)
{
    table.property("Id", &C::Id, &C::setId, "Key of the item.", marksDirty)
        .stored("Name", &C::Name, marksDirty, "Display name.")
        .with(commonMembers<C>);
}

// The member table of a typed list; the lists differ in their documentation only.
template <typename C>
Members listMembers(const char* documentation)
{
    return describe<C>(documentation).with(collectionMembers<C>).with(joinsNames<C>);
}

} // namespace

std::string LookupItem::SortOrder() const
{
    constexpr std::size_t width = 15;
    const std::string text = std::string(width, '0') + std::to_string(Order.get());
    return text.substr(text.size() - width);
}

std::string cEventCoordinator::Display() const { return display_.of(FKdonorId); }

void cEventCoordinator::setDisplay(const std::string& display)
{
    display_.set(display);
    markDirty();
}

const Members& cEventCategory::members() const
{
    static const Members table = describe<cEventCategory>("One item of the list of categories.")
                                     .with(namedMembers<cEventCategory>)
                                     .with(sortOrder<cEventCategory>);
    return table;
}

const Members& cEventStatus::members() const
{
    static const Members table = describe<cEventStatus>("One item of the list of statuses.")
                                     .with(namedMembers<cEventStatus>)
                                     .with(sortOrder<cEventStatus>);
    return table;
}

const Members& cEventLocation::members() const
{
    static const Members table =
        describe<cEventLocation>("One item of the list of locations.")
            .with(namedMembers<cEventLocation>)
            .with(sortOrder<cEventLocation>)
            .stored("ContactName", &cEventLocation::ContactName, marksDirty, "Whom to ask there.")
            .stored("Address", &cEventLocation::Address, marksDirty, "Address.")
            .stored("Phone", &cEventLocation::Phone, marksDirty, "Telephone number.")
            .stored("Fax", &cEventLocation::Fax, marksDirty, "Fax number.")
            .stored("Email", &cEventLocation::Email, marksDirty, "Mail address.")
            .stored("Notes", &cEventLocation::Notes, marksDirty, "Free notes.");
    return table;
}

const Members& cEventInvitationGroup::members() const
{
    static const Members table =
        describe<cEventInvitationGroup>("One item of the list of invitation groups.")
            .with(namedMembers<cEventInvitationGroup>)
            .with(sortOrder<cEventInvitationGroup>)
            .stored("FKEventId", &cEventInvitationGroup::FKEventId, marksDirty,
                    "Event, where the group is picked for one.")
            .stored("FKdonorId", &cEventInvitationGroup::FKdonorId, marksDirty,
                    "Donor, where the group is picked for one.")
            .stored("IsSelected", &cEventInvitationGroup::IsSelected, marksDirty,
                    "Selection mark of the group pickers.");
    return table;
}

const Members& cEventCoordinator::members() const
{
    static const Members table =
        describe<cEventCoordinator>("A donor who coordinates events.")
            .readOnly("Id", &cEventCoordinator::Id, "The donor's id.")
            .storeOnly()
            .property("Display", &cEventCoordinator::Display, &cEventCoordinator::setDisplay,
                      "The donor's display name.", marksDirty)
            .with(commonMembers<cEventCoordinator>)
            .with(sortOrder<cEventCoordinator>)
            .stored("FKdonorId", &cEventCoordinator::FKdonorId, marksDirty,
                    "The donor who is the coordinator.");
    return table;
}

const Members& cAttributeValue::members() const
{
    static const Members table = describe<cAttributeValue>("One value of a host attribute table.")
                                     .with(namedMembers<cAttributeValue>);
    return table;
}

const Members& cEventCategories::members() const
{
    static const Members table = listMembers<cEventCategories>("The list of event categories.");
    return table;
}
const Members& cEventStatuses::members() const
{
    static const Members table = listMembers<cEventStatuses>("The list of event statuses.");
    return table;
}
const Members& cEventLocations::members() const
{
    static const Members table = listMembers<cEventLocations>("The list of event locations.");
    return table;
}
const Members& cEventCoordinators::members() const
{
    static const Members table = listMembers<cEventCoordinators>("The list of coordinators.");
    return table;
}
const Members& cEventInvitationGroups::members() const
{
    static const Members table =
        listMembers<cEventInvitationGroups>("The list of invitation groups.");
    return table;
}
const Members& cAttributeValues::members() const
{
    static const Members table = listMembers<cAttributeValues>("The values of an attribute table.");
    return table;
}

} // namespace qmevents
