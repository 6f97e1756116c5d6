#include "store/lookup_list.h"

namespace qmevents {
namespace {

std::string tableName(const std::string& plural) { return "events_list_" + plural; }

template <typename T>
void addPlace(std::vector<Column<T>>& columns)
{
    columns.push_back(column<T>("Visible", Kind::yesNo, &T::Visible));
    columns.push_back(column<T>("[Order]", Kind::number, &T::Order));
}

template <typename T>
std::vector<Column<T>> namedColumns()
{
    return {column<T>("Name", Kind::listName, &T::Name),
            column<T>("Description", Kind::text, &T::Description)};
}

// A list whose items have a name and a key of their own.
template <typename T>
LookupList<T> namedList(const std::string& itemKey, const std::string& plural,
                        std::vector<Column<T>> columns,
                        std::function<std::string(std::int32_t)> clearUses)
{
    addPlace(columns);
    return {itemKey, Table<T>(tableName(plural), std::move(columns)), "Id",
            "SELECT * FROM " + tableName(plural), std::move(clearUses)};
}

// Events that refer to the item refer to none from then on.
auto clearKey(const std::string& column, Kind kindOfNone = Kind::number)
{
    return [=](std::int32_t id) {
        return "UPDATE events_event_info SET " + column + " = " + literal(0, kindOfNone) +
               " WHERE " + column + " = " + literal(id, Kind::number);
    };
}

} // namespace

const LookupList<cEventCategory>& categoryList()
{
    static const auto list =
        namedList<cEventCategory>("eventcategory", "eventcategories",
                                  namedColumns<cEventCategory>(), clearKey("FKCategoryId"));
    return list;
}

const LookupList<cEventStatus>& statusList()
{
    static const auto list = namedList<cEventStatus>(
        "eventstatus", "eventstatuses", namedColumns<cEventStatus>(), clearKey("FKStatusId"));
    return list;
}

const LookupList<cEventLocation>& locationList()
{
    static const auto list = [] {
        using L = cEventLocation;
        auto columns = namedColumns<L>();
        columns.push_back(column("ContactName", Kind::text, &L::ContactName));
        columns.push_back(column("Address", Kind::text, &L::Address));
        columns.push_back(column("Phone", Kind::text, &L::Phone));
        columns.push_back(column("Fax", Kind::text, &L::Fax));
        columns.push_back(column("Email", Kind::text, &L::Email));
        columns.push_back(column("Notes", Kind::text, &L::Notes));
        return namedList<L>("eventlocation", "eventlocations", std::move(columns),
                            clearKey("FKLocationId"));
    }();
    return list;
}

const LookupList<cEventInvitationGroup>& invitationGroupList()
{
    // Memberships of a group that is gone are removed, not cleared.
    static const auto list = namedList<cEventInvitationGroup>(
        "eventinvitationgroup", "eventinvitationgroups", namedColumns<cEventInvitationGroup>(),
        [](std::int32_t id) {
            return "DELETE FROM events_event_participants_groups WHERE FKInvitationGroupId = " +
                   literal(id, Kind::key);
        });
    return list;
}

const LookupList<cEventCoordinator>& coordinatorList()
{
    static const auto list = [] {
        using C = cEventCoordinator;
        std::vector<Column<C>> columns{
            column<C>("FKDonorId", Kind::number, &C::FKdonorId, Written::onInsert),
            column<C>("Description", Kind::text, &C::Description)};
        addPlace(columns);
        return LookupList<C>{
            "eventcoordinator", Table<C>(tableName("eventcoordinators"), std::move(columns)),
            "FKDonorId",
            "SELECT vl.*, dd.Id as DonorId, dd.Display FROM events_list_eventcoordinators vl "
            "INNER JOIN donor_donors dd ON vl.FKDonorId = dd.Id",
            clearKey("FKCoordinatorId", Kind::key)};
    }();
    return list;
}

} // namespace qmevents
