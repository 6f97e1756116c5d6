#include <gtest/gtest.h>

#include "model/event.h"
#include "model/secure_collection.h"
#include "store/store_access.h"
#include "tests/support/scripted_host.h"

// What collections do that no host can reach: the engine by itself, and great numbers.
namespace qmevents {
namespace {

using testing::puppet;
using testing::ScriptedHost;

Ref<cEvent> event(const std::string& name, std::int32_t id = 0)
{
    auto made = makeRef<cEvent>();
    made->Name = name;
    StoreAccess::setId(*made, id);
    return made;
}

TEST(ManyItems, FindTheirTemporaryKeysWithoutTryingTheTakenOnesAgain)
{
    // A hundred thousand tries for each item would take minutes.
    const auto events = makeRef<cEvents>();
    const auto shared = event("all");
    for (int i = 1; i <= 100000; ++i) {
        Value key = 0;
        events->Add(shared, &key);
        ASSERT_EQ(toInt32(key), -i);
    }
    for (int i = 0; i < 1000; ++i) {
        events->RemoveByKey(-1, false);
        Value key = 0;
        events->Add(shared, &key);
        ASSERT_EQ(toInt32(key), -1);
        if (i == 0) break; // the removal clears every entry with id 0 from the order
    }
}

TEST(ManyItems, SortQuicklyWhenEqualOrSorted)
{
    const auto events = makeRef<cEvents>();
    for (int id = 1; id <= 20000; ++id) events->Add(event(id % 2 ? "same" : "other", id), nullptr);
    events->Sort("Name");
    events->Sort("Name");
    const Value result = events->SortedItems();
    EXPECT_EQ(toText(get(result.array()->items.front().object(), "Name")), "other");
    EXPECT_EQ(toText(get(result.array()->items.back().object(), "Name")), "same");
    EXPECT_THROW(events->Sort("NoSuchProperty"), Error);
    EXPECT_EQ(events->SortedItems().array()->items.size(), 20000U);
}

TEST(CollectionTemplate, HoldsNothingBeforeItIsInitialisedOrAfterItIsTerminated)
{
    const auto engine = makeRef<CollectionTemplate>();
    EXPECT_THROW(get(engine, "Count"), Error);
    call(engine, "Initialize");
    call(engine, "Add", event("x"));
    call(engine, "Terminate");
    EXPECT_THROW(call(engine, "Add", event("x")), Error);
}

TEST(SecureCollection, HoldsOnlyWhatTheUserMaySee)
{
    ScriptedHost host;
    host.deniedRights = {"donations/view"};
    const auto tabs = makeRef<SecureCollection>();
    for (const char* operation : {"donations/view", "events/view"}) {
        auto tab = puppet("Tab");
        tab->holds("Operation", operation);
        call(tabs, "Add", tab, operation);
    }
    EXPECT_EQ(toInt32(get(tabs, "Count")), 1);
    EXPECT_THROW(get(tabs, "Item", "donations/view"), Error);
    call(tabs, "Remove", "events/view");
    EXPECT_EQ(toInt32(get(tabs, "Count")), 0);
}

} // namespace
} // namespace qmevents
