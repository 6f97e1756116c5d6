#include <set>

#include <gtest/gtest.h>

#include "host/demo/event_series.h"
#include "host/demo/names.h"
#include "host/demo/random.h"

namespace refhost::demo {
namespace {

TEST(Random, GivesTheSameNumbersEverywhere)
{
    Random random(1);
    EXPECT_EQ(random.below(1000), 566u);
    EXPECT_EQ(random.between(-5, 5), 3);
    EXPECT_EQ(random.branch(7).below(1000), random.branch(7).below(1000));
    EXPECT_NE(Random(1).branch(1).below(1'000'000), Random(1).branch(2).below(1'000'000));
}

TEST(Random, StaysWithinItsBoundsAndReachesThem)
{
    Random random(5);
    std::set<int> seen;
    for (int draw = 0; draw < 500; ++draw) seen.insert(random.between(2, 6));
    EXPECT_EQ(seen, (std::set<int>{2, 3, 4, 5, 6}));
    EXPECT_EQ(random.below(0), 0u);
}

TEST(Names, MakeAddressesThatAnyMailProgramTakes)
{
    Random random(9);
    EXPECT_TRUE(
        emailAddress("Zoë and Hugo", "Łąkowska", random).starts_with("zoeandhugo.lakowska"));
    for (int draw = 0; draw < 2000; ++draw) {
        const std::string name = surname(random);
        const std::string address = emailAddress(firstName(random), name, random);
        EXPECT_EQ(address.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789.@"),
                  std::string::npos)
            << address;
        EXPECT_FALSE(postalCode(town(random)).empty());
    }
}

TEST(EventSeries, NameOnlyLocationsThatThereAre)
{
    std::set<std::string_view> known;
    for (const LocationPlan& place : locations()) known.insert(place.name);
    for (const EventSeries& series : eventSeries()) {
        EXPECT_EQ(known.count(series.location), 1u) << series.name;
        EXPECT_LE(series.goals.minimum, series.goals.maximum) << series.name;
    }
}

} // namespace
} // namespace refhost::demo
