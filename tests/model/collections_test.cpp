#include <gtest/gtest.h>

#include "tests/support/scripted_host.h"

namespace qmevents {
namespace {

using testing::Log;
using testing::ScriptedHost;

std::string order(const Ref<Object>& events)
{
    std::string names;
    const Value sorted = get(events, "SortedItems");
    for (const auto& item : sorted.array()->items) {
        names += (names.empty() ? "" : " ") +
                 (item.isNothing() ? "-" : toText(get(item.object(), "Name")));
    }
    return names;
}

class Collections : public ::testing::Test {
protected:
    Ref<Object> newEvents() { return toObject(call(host.store(), "GetEvents")); }
    Ref<Object> event(const std::string& name, std::int32_t id = 0)
    {
        if (id != 0) {
            host.answer("WHERE Id = <2:" + std::to_string(id) + ">",
                        testing::eventRow(id, {{"Name", name}}));
            return toObject(call(host.store(), "GetEvent", id));
        }
        auto made = toObject(call(host.store(), "GetNewEvent"));
        put(made, "Name", name);
        return made;
    }
    // Adds a new item and gives the key that was written back.
    std::int32_t addNew(const Ref<Object>& events, const std::string& name)
    {
        Value arguments[] = {Value(event(name)), Value(0)};
        invokeNamed(events, "Add", CallKind::method, arguments);
        return toInt32(arguments[1]);
    }
    Ref<Object> newStatus() { return toObject(call(host.lists(), "GetNewItem", "eventstatus")); }

    ScriptedHost host;
};

TEST_F(Collections, GiveNewItemsTheFreeNumbersNearestToZero)
{
    const auto events = newEvents();
    EXPECT_EQ(addNew(events, "a"), -1);
    EXPECT_EQ(addNew(events, "b"), -2);
    EXPECT_EQ(addNew(events, "c"), -3);
    call(events, "RemoveByKey", -2);
    EXPECT_EQ(addNew(events, "d"), -2);
    call(events, "Add", event("own"), -5); // a caller's own negative key is passed over
    EXPECT_EQ(addNew(events, "e"), -4);
    EXPECT_EQ(addNew(events, "f"), -6);
    call(getObject(events, "Items"), "Remove", "FK=-1"); // the live items are open to callers
    EXPECT_EQ(addNew(events, "g"), -1);
    call(events, "Remove", 1);
    call(events, "RemoveAll");
    EXPECT_EQ(addNew(events, "h"), -1);
    EXPECT_EQ(toText(get(toObject(call(events, "Item", "FK=-1")), "Name")), "h");
}

TEST_F(Collections, FindItemsByPositionKeyAndRecordKey)
{
    const auto events = newEvents();
    call(events, "Add", event("loose"));
    call(events, "Add", event("keyed", 42), "42");
    EXPECT_EQ(toText(get(toObject(call(events, "ItemByKey", 42)), "Name")), "keyed");
    EXPECT_EQ(toText(get(toObject(call(events, "Item", "FK=42")), "Name")), "keyed");
    EXPECT_EQ(toText(get(toObject(get(events, "Item", 1)), "Name")), "loose");
    EXPECT_EQ(toInt32(get(events, "Count")), 2);
    const std::tuple<const char*, Value, int> bad[] = {{"ItemByKey", 7, 5},
                                                       {"Item", 3, 9},
                                                       {"Item", 0, 9},
                                                       {"Item", "42", 5},
                                                       {"RemoveByKey", 7, 5}};
    for (const auto& [member, argument, number] : bad) {
        try {
            call(events, member, argument);
            ADD_FAILURE() << member;
        } catch (const Error& error) {
            EXPECT_EQ(error.number(), number) << member;
        }
    }
    EXPECT_THROW(call(events, "Add", event("again", 42), 42), Error);
    EXPECT_THROW(call(events, "Add", newStatus(), 1), Error);
    EXPECT_THROW(call(events, "Add", event("no number"), "seven"), Error);
    EXPECT_THROW(call(events, "Add", Value::nothing()), Error);
    EXPECT_EQ(toInt32(get(events, "Count")), 2);
    EXPECT_EQ(order(events), "loose keyed");
}

TEST_F(Collections, RemoveByPositionAndByKeyDiffer)
{
    const auto events = newEvents();
    for (int id = 1; id <= 4; ++id)
        call(events, "Add", event(std::string(1, char('a' + id - 1)), id), id);
    call(events, "RemoveByKey", 4);
    EXPECT_EQ(toInt32(get(getObject(events, "DeletedItems"), "Count")), 0);
    EXPECT_EQ(order(events), "a b c");
    call(events, "Remove", 1); // recorded as deleted, but its place in the order stays
    EXPECT_EQ(order(events), "a b c");
    call(events, "Add", event("e", 5), 5); // sizes the order to the count and takes the last place
    EXPECT_EQ(order(events), "a b e");
    call(events, "Remove", 1, true);
    EXPECT_EQ(order(events), "a e");
    call(events, "RemoveByKey", 5, true);
    EXPECT_EQ(toInt32(get(getObject(events, "DeletedItems"), "Count")), 3);
    call(events, "RemoveAll");
    EXPECT_EQ(toInt32(get(getObject(events, "DeletedItems"), "Count")), 4);
    EXPECT_EQ(order(events), "");
    EXPECT_EQ(get(events, "SortedItems").array()->dimensions[0].lower, 1);
}

TEST_F(Collections, SortByTextWithoutCaseAndLeaveTheItemsAlone)
{
    const auto sorted = [&](const std::vector<std::string>& names) {
        const auto events = newEvents();
        std::int32_t id = 0;
        for (const auto& name : names) call(events, "Add", event(name, ++id), id);
        call(events, "Sort", "name");
        EXPECT_EQ(toText(get(toObject(get(events, "Item", 1)), "Name")), names[0]);
        return order(events);
    };
    EXPECT_EQ(sorted({"beta", "Alpha", "alpha2"}), "Alpha alpha2 beta");
    EXPECT_EQ(sorted({"9", "10", "100"}), "10 100 9");
    EXPECT_EQ(sorted({"b", "a"}), "a b");
    EXPECT_EQ(sorted({"einsatz", "Élan", "élan2", "zebra"}), "einsatz zebra Élan élan2");
    EXPECT_EQ(sorted({"c", "b", "a", "f", "e", "d", "i", "h", "g", "b", "a"}),
              "a a b b c d e f g h i");
}

TEST_F(Collections, MoveOneStepAndReportTheEnds)
{
    const auto events = newEvents();
    for (int id = 1; id <= 3; ++id)
        call(events, "Add", event(std::string(1, char('a' + id - 1)), id), id);
    host.log.clear();
    call(events, "Move", 1, 0, 1); // down in an ascending list
    EXPECT_EQ(order(events), "b a c");
    call(events, "MoveByKey", 1, 1, 0); // up in a descending one
    EXPECT_EQ(order(events), "b c a");
    call(events, "MoveByKey", 1, 0, 0);
    EXPECT_EQ(order(events), "b a c");
    EXPECT_TRUE(host.log.empty());
    call(events, "MoveByKey", 2, 0, 0);
    call(events, "MoveByKey", 3, 0, 1);
    EXPECT_EQ(order(events), "b a c");
    EXPECT_EQ(host.log, (Log{"ErrorUnexpected: Error calculating the move to index.",
                             "ErrorUnexpected: Error calculating the move to index."}));
}

TEST_F(Collections, AreEnumeratedAndShownWhole)
{
    const auto events = newEvents();
    for (const char* name : {"b", "a"}) addNew(events, name);
    std::string names;
    Value item;
    for (const auto walk = events->enumerate(); walk->next(item);) {
        names += toText(get(item.object(), "Name"));
    }
    EXPECT_EQ(names, "ba");
    const auto items = getObject(events, "Items");
    EXPECT_EQ(toInt32(get(items, "Count")), 2);
    EXPECT_THROW(call(events, "Initialize"), Error); // the engine's own, not shown

    // What is no record, put there by hand, is not taken out by halves.
    call(items, "Add", "no record", "FK=7");
    EXPECT_THROW(call(events, "RemoveByKey", 7), Error);
    EXPECT_THROW(call(events, "Remove", 3, true), Error);
    EXPECT_EQ(toInt32(get(items, "Count")), 3);
    EXPECT_EQ(order(events), "b a");
}

TEST_F(Collections, OfLookupItemsSortByTheirNumbersThroughText)
{
    const auto statuses = toObject(call(host.lists(), "GetEventStatuses"));
    for (int place : {12, 7, 100}) {
        const auto status = newStatus();
        put(status, "Name", "n" + std::to_string(place));
        put(status, "Order", place);
        put(status, "Id", place);
        call(statuses, "Add", status, place);
    }
    EXPECT_EQ(toText(get(toObject(call(statuses, "ItemByKey", 7)), "SortOrder")),
              "000000000000007");
    call(statuses, "Sort", "SortOrder");
    EXPECT_EQ(order(statuses), "n7 n12 n100");
    EXPECT_EQ(toText(call(statuses, "ToString")), "n12, n7, n100");
    EXPECT_EQ(toText(call(statuses, "ToString", "|")), "n12|n7|n100");
    EXPECT_EQ(toText(call(toObject(call(host.lists(), "GetEventStatuses")), "ToString")), "");
}

} // namespace
} // namespace qmevents
