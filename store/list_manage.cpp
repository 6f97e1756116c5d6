#include "store/list_manage.h"

#include "core/context.h"
#include "core/reporting.h"
#include "store/lookup_list.h"

namespace qmevents {
namespace {

template <typename T>
Ref<T> newItem(const LookupList<T>& list)
{
    auto item = makeRef<T>();
    item->ObjectType = list.itemKey;
    StoreAccess::markNew(*item);
    return item;
}

// The identity of an item as its list's statements need it.
std::int32_t identityOf(const NamedItem& item) { return item.Id(); }
std::int32_t identityOf(const cEventCoordinator& item) { return item.FKdonorId; }

// A row's own key stands in deletions as plain digits, the donor's as a literal.
std::string identityInDeletion(const NamedItem& item) { return std::to_string(item.Id()); }
std::string identityInDeletion(const cEventCoordinator& item)
{
    return literal(item.FKdonorId.get(), Kind::number);
}

void loadDisplay(NamedItem&, const RecordReader&) {}
void loadDisplay(cEventCoordinator& coordinator, const RecordReader& rows)
{
    StoreAccess::loadDisplay(coordinator, rows.column("Display").valueOr(std::string()));
}

template <typename T>
Ref<T> loadItem(const LookupList<T>& list, const RecordReader::Column& id,
                const typename Table<T>::Loader& loader)
{
    auto item = makeRef<T>();
    item->ObjectType = list.itemKey;
    StoreAccess::setId(*item, toInt32(id.value()));
    loader.load(*item);
    StoreAccess::markStored(*item);
    return item;
}

template <typename T>
Ref<T> findItem(const LookupList<T>& list, std::int32_t id)
{
    const RecordReader row("SELECT * FROM " + list.table.name() + " WHERE " + list.identity +
                           " = " + literal(id, Kind::number));
    if (row.atEnd()) return {};
    return loadItem(list, row.column(list.identity), typename Table<T>::Loader(list.table, row));
}

std::string inOrder(const std::string& select, bool includeHidden)
{
    return select + (includeHidden ? "" : " WHERE visible = " + literal(true, Kind::yesNo)) +
           " ORDER BY [order] ASC";
}

template <typename Items, typename T>
Ref<Items> readItems(const LookupList<T>& list, bool includeHidden)
{
    return reported([&] {
        auto items = makeRef<Items>();
        RecordReader rows(inOrder(list.readsAll, includeHidden));
        if (rows.atEnd()) return items;
        const auto id = rows.column(list.identity);
        const typename Table<T>::Loader loader(list.table, rows);
        for (; !rows.atEnd(); rows.next()) {
            auto item = loadItem(list, id, loader);
            loadDisplay(*item, rows);
            items->add(item);
        }
        return items;
    });
}

template <typename T>
bool requireItem(const Ref<T>& item)
{
    if (item) return true;
    host().shell().errorUnexpected("A valid " + std::string(T::ClassName) + " must be provided.");
    return false;
}

template <typename T>
bool writeItem(const LookupList<T>& list, T& item)
{
    host().document().execute(item.IsNew()
                                  ? list.table.insertText(item)
                                  : list.table.updateText(item, list.identity, identityOf(item)));
    StoreAccess::markStored(item);
    return true;
}

template <typename T>
bool updateItem(const LookupList<T>& list, const Ref<T>& item)
{
    return reported([&] { return requireItem(item) && writeItem(list, *item); });
}

// A coordinator is a donor: the donor must exist, and is locked while the list is written.
bool updateItem(const LookupList<cEventCoordinator>& list, const Ref<cEventCoordinator>& item)
{
    return reported([&] {
        if (!requireItem(item)) return false;
        const std::int32_t donorId = item->FKdonorId;
        if (!host().modules().donor().donor(donorId)) {
            host().shell().errorUser(std::string("The selected donor no longer exists.") +
                                     lineBreak + deletedByAnotherUser);
            return false;
        }
        const RecordLock lock("event", donorId);
        return writeItem(list, *item);
    });
}

template <typename T>
bool deleteItem(const LookupList<T>& list, const Ref<T>& item)
{
    return reported([&] {
        if (!requireItem(item)) return false;
        const Document document = host().document();
        document.execute("DELETE FROM " + list.table.name() + " WHERE " + list.identity + " = " +
                         identityInDeletion(*item));
        document.execute(list.clearUses(identityOf(*item)));
        return true;
    });
}

// The columns that an attribute table has of those that a value needs. Host tables keep the names
// in a column of their own choice.
std::vector<Column<cAttributeValue>> attributeColumns(const RecordReader& rows,
                                                      const std::string& attributeName)
{
    using V = cAttributeValue;
    std::vector<Column<V>> columns;
    for (const std::string& name : {attributeName, std::string("Name"), std::string("value")}) {
        if (name.empty() || !rows.hasColumn(name)) continue;
        columns.push_back(column<V>(name, Kind::listName, &V::Name));
        break;
    }
    const Column<V> others[] = {column<V>("Description", Kind::text, &V::Description),
                                column<V>("Visible", Kind::yesNo, &V::Visible),
                                column<V>("Order", Kind::number, &V::Order)};
    for (const auto& other : others) {
        if (rows.hasColumn(other.name)) columns.push_back(other);
    }
    return columns;
}

// Stops at the first item that could not be written; its failure has been shown.
template <typename T, typename Items>
bool updateItems(const LookupList<T>& list, const Ref<Items>& items)
{
    return reported([&] {
        if (!items) {
            host().shell().errorUnexpected("A valid " + std::string(Items::ClassName) +
                                           " must be provided.");
            return false;
        }
        bool written = true;
        items->eachDeleted(
            [&](const Ref<T>& item) { written = written && deleteItem(list, item); });
        items->each([&](const Ref<T>& item) { written = written && updateItem(list, item); });
        return written;
    });
}

} // namespace

Ref<cEventCategory> findCategory(std::int32_t id) { return findItem(categoryList(), id); }
Ref<cEventStatus> findStatus(std::int32_t id) { return findItem(statusList(), id); }
Ref<cEventLocation> findLocation(std::int32_t id) { return findItem(locationList(), id); }
Ref<cEventCoordinator> findCoordinator(std::int32_t donorId)
{
    return findItem(coordinatorList(), donorId);
}
Ref<cEventInvitationGroup> findInvitationGroup(std::int32_t id)
{
    return findItem(invitationGroupList(), id);
}

Ref<ListManage> listManage() { return rootPart<ListManage>("ListManage"); }

Ref<Object> ListManage::GetNewItem(const std::string& Key)
{
    if (Key == categoryList().itemKey) return newItem(categoryList());
    if (Key == statusList().itemKey) return newItem(statusList());
    if (Key == locationList().itemKey) return newItem(locationList());
    if (Key == coordinatorList().itemKey) return newItem(coordinatorList());
    if (Key == invitationGroupList().itemKey) return newItem(invitationGroupList());
    host().shell().errorUnexpected(
        "A valid item key must be provided.  Valid keys are: eventcategory, eventstatus, "
        "eventlocation, eventcoordinator, eventinvitationgroup");
    return {};
}

// The five lists in the same words: what differs stands in their LookupList.
Ref<cEventCategory> ListManage::GetEventCategory(std::int32_t Id)
{
    return reported([&] { return findCategory(Id); });
}
Ref<cEventStatus> ListManage::GetEventStatus(std::int32_t Id)
{
    return reported([&] { return findStatus(Id); });
}
Ref<cEventLocation> ListManage::GetEventLocation(std::int32_t Id)
{
    return reported([&] { return findLocation(Id); });
}
Ref<cEventCoordinator> ListManage::GetEventCoordinator(std::int32_t Id)
{
    return reported([&] { return findCoordinator(Id); });
}
Ref<cEventInvitationGroup> ListManage::GetEventInvitationGroup(std::int32_t Id)
{
    return reported([&] { return findInvitationGroup(Id); });
}

Ref<cEventCategories> ListManage::GetEventCategories(bool IncludeHidden)
{
    return readItems<cEventCategories>(categoryList(), IncludeHidden);
}
Ref<cEventStatuses> ListManage::GetEventStatuses(bool IncludeHidden)
{
    return readItems<cEventStatuses>(statusList(), IncludeHidden);
}
Ref<cEventLocations> ListManage::GetEventLocations(bool IncludeHidden)
{
    return readItems<cEventLocations>(locationList(), IncludeHidden);
}
Ref<cEventCoordinators> ListManage::GetEventCoordinators(bool IncludeHidden)
{
    return readItems<cEventCoordinators>(coordinatorList(), IncludeHidden);
}
Ref<cEventInvitationGroups> ListManage::GetEventInvitationGroups(bool IncludeHidden)
{
    return readItems<cEventInvitationGroups>(invitationGroupList(), IncludeHidden);
}

Ref<cAttributeValues> ListManage::GetAttributeValues(const std::string& table,
                                                     const std::string& AttributeName,
                                                     bool IncludeHidden)
{
    return reported([&] {
        auto values = makeRef<cAttributeValues>();
        RecordReader rows(inOrder("SELECT * FROM " + table, IncludeHidden));
        if (rows.atEnd()) return values;
        using V = cAttributeValue;
        const Table<V> columns(table, attributeColumns(rows, AttributeName));
        const auto id = rows.column("Id");
        const Table<V>::Loader loader(columns, rows);
        for (; !rows.atEnd(); rows.next()) {
            auto value = makeRef<V>();
            value->ObjectType = table;
            StoreAccess::setId(*value, toInt32(id.value()));
            loader.load(*value);
            StoreAccess::markStored(*value);
            values->add(value);
        }
        return values;
    });
}

bool ListManage::UpdateEventCategory(const Ref<cEventCategory>& EventCategory)
{
    return updateItem(categoryList(), EventCategory);
}
bool ListManage::UpdateEventStatus(const Ref<cEventStatus>& EventStatus)
{
    return updateItem(statusList(), EventStatus);
}
bool ListManage::UpdateEventLocation(const Ref<cEventLocation>& EventLocation)
{
    return updateItem(locationList(), EventLocation);
}
bool ListManage::UpdateEventCoordinator(const Ref<cEventCoordinator>& EventCoordinator)
{
    return updateItem(coordinatorList(), EventCoordinator);
}
bool ListManage::UpdateEventInvitationGroup(const Ref<cEventInvitationGroup>& EventInvitationGroup)
{
    return updateItem(invitationGroupList(), EventInvitationGroup);
}

bool ListManage::DeleteEventCategory(const Ref<cEventCategory>& EventCategory)
{
    return deleteItem(categoryList(), EventCategory);
}
bool ListManage::DeleteEventStatus(const Ref<cEventStatus>& EventStatus)
{
    return deleteItem(statusList(), EventStatus);
}
bool ListManage::DeleteEventLocation(const Ref<cEventLocation>& EventLocation)
{
    return deleteItem(locationList(), EventLocation);
}
bool ListManage::DeleteEventCoordinator(const Ref<cEventCoordinator>& EventCoordinator)
{
    return deleteItem(coordinatorList(), EventCoordinator);
}
bool ListManage::DeleteEventInvitationGroup(const Ref<cEventInvitationGroup>& EventInvitationGroup)
{
    return deleteItem(invitationGroupList(), EventInvitationGroup);
}

bool ListManage::UpdateEventCategories(const Ref<cEventCategories>& EventCategories)
{
    return updateItems(categoryList(), EventCategories);
}
bool ListManage::UpdateEventStatuses(const Ref<cEventStatuses>& EventStatuses)
{
    return updateItems(statusList(), EventStatuses);
}
bool ListManage::UpdateEventLocations(const Ref<cEventLocations>& EventLocations)
{
    return updateItems(locationList(), EventLocations);
}
bool ListManage::UpdateEventCoordinators(const Ref<cEventCoordinators>& EventCoordinators)
{
    return updateItems(coordinatorList(), EventCoordinators);
}
bool ListManage::UpdateEventInvitationGroups(
    const Ref<cEventInvitationGroups>& EventInvitationGroups)
{
    return updateItems(invitationGroupList(), EventInvitationGroups);
}

} // namespace qmevents
