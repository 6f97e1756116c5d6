#include <gtest/gtest.h>

#include "tests/support/scripted_host.h"

namespace qmevents {
namespace {

using testing::Log;
using testing::ScriptedHost;

// How each list stands in the store's members and statements.
struct List {
    std::string one, all, itemKey, table, identity, clears;
};
const List lists[] = {
    {"EventCategory", "EventCategories", "eventcategory", "events_list_eventcategories", "Id",
     "UPDATE events_event_info SET FKCategoryId = <3:0> WHERE FKCategoryId = <3:7>"},
    {"EventStatus", "EventStatuses", "eventstatus", "events_list_eventstatuses", "Id",
     "UPDATE events_event_info SET FKStatusId = <3:0> WHERE FKStatusId = <3:7>"},
    {"EventLocation", "EventLocations", "eventlocation", "events_list_eventlocations", "Id",
     "UPDATE events_event_info SET FKLocationId = <3:0> WHERE FKLocationId = <3:7>"},
    {"EventCoordinator", "EventCoordinators", "eventcoordinator", "events_list_eventcoordinators",
     "FKDonorId",
     "UPDATE events_event_info SET FKCoordinatorId = <2:0> WHERE FKCoordinatorId = <3:7>"},
    {"EventInvitationGroup", "EventInvitationGroups", "eventinvitationgroup",
     "events_list_eventinvitationgroups", "Id",
     "DELETE FROM events_event_participants_groups WHERE FKInvitationGroupId = <2:7>"},
};
constexpr const char* coordinatorSelect =
    "SELECT vl.*, dd.Id as DonorId, dd.Display FROM events_list_eventcoordinators vl INNER JOIN "
    "donor_donors dd ON vl.FKDonorId = dd.Id";

class Lists : public ::testing::Test {
protected:
    template <typename Act>
    Log logOf(Act act)
    {
        host.log.clear();
        act();
        return host.takeLog();
    }
    // A row of any list: every column that any of them reads.
    void answerRow(const std::string& part)
    {
        host.answer(part,
                    {{"Id", "FKDonorId", "DonorId", "Display", "Name", "Description", "ContactName",
                      "Address", "Phone", "Fax", "Email", "Notes", "Visible", "Order"},
                     {{7, 7, 7, "Display", "It's", Null{}, "", "", "", "", "", "", true, 3}}});
    }
    Ref<Object> newItem(const std::string& key)
    {
        return toObject(call(host.lists(), "GetNewItem", key));
    }
    ScriptedHost host;
};

TEST_F(Lists, ReadOneItemOrTheWholeListInItsOrder)
{
    answerRow("FROM events_list_");
    for (const auto& list : lists) {
        SCOPED_TRACE(list.one);
        EXPECT_EQ(logOf([&] {
                      const auto item = toObject(call(host.lists(), "Get" + list.one, 7));
                      EXPECT_EQ(toInt32(get(item, "Id")), 7);
                      EXPECT_EQ(toInt32(get(item, "Order")), 3);
                      EXPECT_EQ(toText(get(item, "ObjectType")), list.itemKey);
                  }),
                  (Log{"SELECT * FROM " + list.table + " WHERE " + list.identity + " = <3:7>"}));
        const std::string select =
            list.one == "EventCoordinator" ? coordinatorSelect : "SELECT * FROM " + list.table;
        EXPECT_EQ(logOf([&] { call(host.lists(), "Get" + list.all, false); }),
                  (Log{select + " WHERE visible = <7:True> ORDER BY [order] ASC"}));
        EXPECT_EQ(logOf([&] {
                      const auto all = toObject(call(host.lists(), "Get" + list.all, true));
                      EXPECT_EQ(toInt32(get(toObject(call(all, "ItemByKey", 7)), "Id")), 7);
                  }),
                  (Log{select + " ORDER BY [order] ASC"}));
    }
    const auto coordinators = toObject(call(host.lists(), "GetEventCoordinators"));
    const auto coordinator = toObject(get(coordinators, "Item", 1));
    EXPECT_EQ(toText(get(coordinator, "Display")), "Display");
    EXPECT_EQ(toInt32(get(coordinator, "FKdonorId")), 7);
}

TEST_F(Lists, InsertNewItemsAndRewriteExistingOnes)
{
    host.donors[7] = "Coordinator";
    answerRow("FROM events_list_");
    const std::string contact = "ContactName = <5:>, Address = <5:>, Phone = <5:>, Fax = <5:>, "
                                "Email = <5:>, Notes = <5:>, ";
    for (const auto& list : lists) {
        SCOPED_TRACE(list.one);
        const bool isLocation = list.one == "EventLocation";
        const bool isCoordinator = list.one == "EventCoordinator";
        const auto item = newItem(list.itemKey);
        put(item, isCoordinator ? "FKdonorId" : "Name", isCoordinator ? Value(7) : Value("It's"));
        put(item, "Visible", true);
        put(item, "Order", 3);
        Log log =
            logOf([&] { EXPECT_TRUE(toBool(call(host.lists(), "Update" + list.one, item))); });
        const std::string insert =
            isCoordinator ? "INSERT INTO events_list_eventcoordinators (FKDonorId, Description, "
                            "Visible, [Order]) VALUES (<3:7>, <5:>, <7:True>, <3:3>)"
            : isLocation  ? "INSERT INTO events_list_eventlocations (Name, Description, "
                            "ContactName, Address, Phone, Fax, Email, Notes, Visible, [Order]) "
                            "VALUES (<6:It's>, <5:>, <5:>, <5:>, <5:>, <5:>, <5:>, <5:>, "
                            "<7:True>, <3:3>)"
                          : "INSERT INTO " + list.table +
                               " (Name, Description, Visible, [Order]) "
                               "VALUES (<6:It's>, <5:>, <7:True>, <3:3>)";
        EXPECT_EQ(log,
                  isCoordinator ? (Log{"Lock event 7", insert, "Unlock event 7"}) : Log{insert});
        const auto stored = toObject(call(host.lists(), "Get" + list.one, 7));
        log = logOf([&] { EXPECT_TRUE(toBool(call(host.lists(), "Update" + list.one, stored))); });
        EXPECT_EQ(log[isCoordinator ? 1 : 0],
                  "UPDATE " + list.table + " SET " + (isCoordinator ? "" : "Name = <6:It's>, ") +
                      "Description = <5:>, " + (isLocation ? contact : "") +
                      "Visible = <7:True>, [Order] = <3:3> WHERE " + list.identity + " = <3:7>");
    }
}

TEST_F(Lists, DeleteAnItemAndWhatRefersToIt)
{
    answerRow("FROM events_list_");
    for (const auto& list : lists) {
        SCOPED_TRACE(list.one);
        const auto item = toObject(call(host.lists(), "Get" + list.one, 7));
        EXPECT_EQ(
            logOf([&] { EXPECT_TRUE(toBool(call(host.lists(), "Delete" + list.one, item))); }),
            (Log{"DELETE FROM " + list.table + " WHERE " + list.identity +
                     (list.identity == "Id" ? " = 7" : " = <3:7>"),
                 list.clears}));
    }
}

TEST_F(Lists, SaveAWholeListDeletedItemsFirst)
{
    host.answer("FROM events_list_eventstatuses",
                {{"Id", "Name", "Description", "Visible", "Order"},
                 {{1, "a", "", true, 1}, {2, "b", "", true, 2}, {3, "c", "", true, 3}}});
    const auto statuses = toObject(call(host.lists(), "GetEventStatuses", true));
    call(statuses, "RemoveByKey", 1, true);
    put(toObject(call(statuses, "ItemByKey", 3)), "Order", 1);
    EXPECT_EQ(
        logOf([&] { EXPECT_TRUE(toBool(call(host.lists(), "UpdateEventStatuses", statuses))); }),
        (Log{"DELETE FROM events_list_eventstatuses WHERE Id = 1",
             "UPDATE events_event_info SET FKStatusId = <3:0> WHERE FKStatusId = <3:1>",
             "UPDATE events_list_eventstatuses SET Name = <6:b>, Description = <5:>, Visible "
             "= <7:True>, [Order] = <3:2> WHERE Id = <3:2>",
             "UPDATE events_list_eventstatuses SET Name = <6:c>, Description = <5:>, Visible "
             "= <7:True>, [Order] = <3:1> WHERE Id = <3:3>"}));
    host.failingStatement = 2; // the list stops where it failed and says so
    const Log log =
        logOf([&] { EXPECT_FALSE(toBool(call(host.lists(), "UpdateEventStatuses", statuses))); });
    EXPECT_EQ(log.back(), "ErrorUnexpected: the disk is full");
    EXPECT_EQ(log.size(), 4U);
}

TEST_F(Lists, RefuseUnknownKeysMissingItemsAndMissingDonors)
{
    for (const char* key : {"eventcategories", "EventCategory", "", "event"}) {
        EXPECT_EQ(logOf([&] { EXPECT_TRUE(call(host.lists(), "GetNewItem", key).isNothing()); }),
                  (Log{"ErrorUnexpected: A valid item key must be provided.  Valid keys are: "
                       "eventcategory, eventstatus, eventlocation, eventcoordinator, "
                       "eventinvitationgroup"}));
    }
    EXPECT_TRUE(call(host.lists(), "GetEventStatus", 99).isNothing());
    EXPECT_FALSE(toBool(call(host.lists(), "UpdateEventStatus", Value::nothing())));
    EXPECT_THROW(call(host.lists(), "UpdateEventStatus", newItem("eventlocation")), Error);
    const auto coordinator = newItem("eventcoordinator");
    put(coordinator, "FKdonorId", 404);
    EXPECT_EQ(logOf([&] {
                  EXPECT_FALSE(toBool(call(host.lists(), "UpdateEventCoordinator", coordinator)));
              }),
              (Log{"ErrorUser: The selected donor no longer exists.\r\nIt may have been deleted by "
                   "another user."}));
}

TEST_F(Lists, ReadHostAttributeTables)
{
    host.answer("FROM donor_funds", {{"Id", "value", "Order"}, {{4, "General", 1}}});
    EXPECT_EQ(logOf([&] {
                  const auto values = toObject(
                      call(host.lists(), "GetAttributeValues", "donor_funds", "fund", false));
                  EXPECT_EQ(toText(get(toObject(call(values, "ItemByKey", 4)), "Name")), "General");
              }),
              (Log{"SELECT * FROM donor_funds WHERE visible = <7:True> ORDER BY [order] ASC"}));
}

} // namespace
} // namespace qmevents
