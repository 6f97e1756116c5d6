// The tests' program is a host: it lives in a single-threaded apartment and reaches the add-in by
// its registered names.

#include <cmath>

#include "automation/clock.h"
#include "tests/com/client.h"
#include "tests/support/transport.h"

namespace {

using qmevents::Clock;
using qmevents::Date;

bool sameMinute(Date a, Date b)
{
    constexpr double minute = 1.0 / 1440;
    return std::abs(a.serial() - b.serial()) < minute;
}

// The component's present is this program's, however the test has pinned its clock.
Date asPinned(Date moment)
{
    const Date pinned = Clock::now();
    Clock::pin(std::nullopt);
    const Date present = Clock::now();
    if (!sameMinute(pinned, present)) Clock::pin(pinned);
    return sameMinute(moment, present) ? pinned : moment;
}

} // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    qmevents::testing::transport = {
        .makeRoot = qmevents::com::testing::createByCom,
        .release = [] {}, // the component lets go by itself, with its last root object
        .written = asPinned};
    const int outcome = RUN_ALL_TESTS();
    CoUninitialize();
    return outcome;
}
