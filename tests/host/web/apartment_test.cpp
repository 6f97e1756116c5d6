#include "host/web/apartment.h"

#include <gtest/gtest.h>

namespace refhost {
namespace {

TEST(Apartment, LetsGoOfThoseWhoseWorkIsDroppedWhenItStops)
{
    std::promise<void> isBusy, mayEnd;
    Apartment apartment([] {}, [] {});
    ASSERT_TRUE(apartment.post([&] {
        isBusy.set_value();
        mayEnd.get_future().wait();
    }));
    isBusy.get_future().wait();

    bool hasRun = false;
    auto waiting =
        std::async(std::launch::async, [&] { return apartment.run([&hasRun] { hasRun = true; }); });
    // It is either queued behind the busy piece by now, or comes when the apartment has stopped.
    waiting.wait_for(std::chrono::milliseconds(50));
    apartment.stop();
    mayEnd.set_value();

    ASSERT_EQ(waiting.wait_for(std::chrono::seconds(20)), std::future_status::ready);
    EXPECT_FALSE(waiting.get());
    EXPECT_FALSE(hasRun);
}

TEST(Apartment, HandsTheFailureOfWorkToTheOneWhoWaits)
{
    Apartment apartment([] {}, [] {});
    EXPECT_THROW(apartment.run([] { throw std::runtime_error("no"); }), std::runtime_error);
    EXPECT_TRUE(apartment.run([] {}));
}

} // namespace
} // namespace refhost
