#include <gtest/gtest.h>

#include "automation/collection.h"
#include "automation/error.h"

namespace qmevents {
namespace {

std::string joined(Collection& collection)
{
    std::string all;
    Value item;
    for (const auto walk = collection.enumerate(); walk->next(item);) all += toText(item) + " ";
    return all;
}

TEST(Collection, KeepsItsOrderUnderKeysWhileItemsLeave)
{
    const auto collection = makeRef<Collection>();
    for (const char* key : {"a", "b", "c", "d"}) call(collection, "Add", key, key);
    call(collection, "Remove", "B");
    call(collection, "Remove", 1);
    call(collection, "Add", "e", "b");
    EXPECT_EQ(joined(*collection), "c d e ");
    EXPECT_EQ(toText(get(collection, "Item", "D")), "d");
    EXPECT_EQ(toText(get(collection, "Item", 3)), "e");
    EXPECT_EQ(toInt32(get(collection, "Count")), 3);
}

TEST(Collection, RefusesTakenKeysAndUnknownItems)
{
    const auto collection = makeRef<Collection>();
    call(collection, "Add", 1, "key");
    struct {
        const char* member;
        Value argument;
        int number;
    } const cases[] = {{"Item", 0, 9},
                       {"Item", 2, 9},
                       {"Item", -1, 9},
                       {"Item", "none", 5},
                       {"Remove", "none", 5}};
    for (const auto& [member, argument, number] : cases) {
        try {
            call(collection, member, argument);
            ADD_FAILURE() << member << " accepted " << toText(argument);
        } catch (const Error& error) {
            EXPECT_EQ(error.number(), number) << member << toText(argument);
        }
    }
    EXPECT_THROW(call(collection, "Add", 2, "KEY"), Error);
    EXPECT_EQ(collection->size(), 1U);
}

} // namespace
} // namespace qmevents
