#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "automation/clock.h"
#include "tests/host/session/fixture.h"

namespace refhost {
namespace {

using qmevents::Date;

Ref<Object> lock(const HostFixture& host, const char* kind, int id)
{
    return toObject(call(host.document(), "GetLock", kind, id));
}

TEST(RecordLock, TellsTheUserWhoHasTheRecordAndSinceWhen)
{
    const HostFixture ann;
    const HostFixture ben(Dialect::jet, ann.database, "Ben");
    Ref<Object> held;
    {
        const qmevents::PinnedClock clock(Date::of(2026, 3, 7, 15, 45));
        held = lock(ann, "event", 12);
    }
    EXPECT_EQ(toText(get(held, "Owner")), "Ann Admin");
    EXPECT_EQ(qmevents::toInt32(get(held, "Id")), 12);
    EXPECT_EQ(failureOf([&] { lock(ben, "Event", 12); }),
              "70 The event 12 is in use by Ann Admin since 3/7/2026 3:45:00 PM.");
    EXPECT_EQ(ben.frontEnd.seen,
              std::vector<std::string>{"box This event is in use by Ann Admin since 3/7/2026 "
                                       "3:45:00 PM.\r\nPlease try again later.|Record In Use"});
    EXPECT_TRUE(lock(ben, "event", 13));
    EXPECT_TRUE(lock(ben, "donor", 12));
    held = {}; // dropping it lets go
    EXPECT_TRUE(lock(ben, "event", 12));
    EXPECT_TRUE(ann.frontEnd.seen.empty());
}

TEST(RecordLock, IsFreeOnceItsSessionHasLetGoAsOftenAsItTookIt)
{
    const HostFixture ann;
    HostFixture ben(Dialect::sqlServer, ann.database, "Ben");
    auto outer = lock(ann, "event", 1);
    auto inner = lock(ann, "event", 1);
    call(outer, "Release");
    call(outer, "Release"); // counts once
    outer = {};
    EXPECT_NE(failureOf([&] { lock(ben, "event", 1); }), "");
    inner = {};
    auto bens = lock(ben, "event", 1);
    EXPECT_NE(failureOf([&] { lock(ann, "event", 1); }), "");
    put(ben.app, "Session", "kept", bens); // what a session keeps goes with it
    bens = {};
    ben.session.reset();
    EXPECT_TRUE(lock(ann, "event", 1));
    const HostFixture elsewhere; // another database has locks of its own
    const auto held = lock(ann, "event", 2);
    EXPECT_TRUE(lock(elsewhere, "event", 2));
}

TEST(RecordLock, LeavesRecordsWithoutAnIdToEverybody)
{
    const HostFixture ann;
    const HostFixture ben(Dialect::jet, ann.database, "Ben");
    const auto held = lock(ann, "event", 0);
    EXPECT_TRUE(lock(ben, "event", 0));
}

TEST(LockManager, GrantsARecordToOneOfManyThreadsAtATime)
{
    const auto locks = LockManager::of("threads");
    std::atomic<int> inside{0}, mostInside{0}, granted{0};
    const auto work = [&] {
        const LockHolder me{locks->newSession(), "me", {}};
        for (int i = 0; i < 20000; ++i) {
            if (locks->acquire({"event", 1}, me)) continue;
            mostInside = std::max(mostInside.load(), ++inside);
            ++granted;
            --inside;
            locks->release({"event", 1}, me.session);
        }
    };
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) threads.emplace_back(work);
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(mostInside, 1);
    EXPECT_GT(granted, 0);
    EXPECT_FALSE(locks->acquire({"event", 1}, {locks->newSession(), "last", {}}));
}

} // namespace
} // namespace refhost
