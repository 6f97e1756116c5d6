#include <gtest/gtest.h>

#include "automation/clock.h"
#include "automation/locale.h"
#include "core/date_time_util.h"
#include "core/fiscal_year.h"
#include "tests/support/scripted_host.h"

namespace qmevents {
namespace {

using testing::ScriptedHost;

TEST(ShortTime, CutsTheLastZerosWhereverTheyStand)
{
    struct {
        Date time;
        const char* text;
    } const cases[] = {{Date::of(2026, 3, 7, 15, 45), "3:45 PM"},
                       {Date::of(2026, 3, 7, 10), "10:00 AM"},
                       {Date::of(2026, 3, 7, 15, 0, 15), "3:15 PM"},
                       {Date::of(2026, 3, 7, 12, 30, 45), "12:30:45 PM"},
                       {Date::of(2026, 3, 7, 20, 20, 0), "8:20 PM"},
                       {Date::of(2026, 3, 7), ""}};
    DateTimeUtil util;
    for (const auto& [time, text] : cases) EXPECT_EQ(util.GetShortTime(time), text) << time.iso();
    EXPECT_EQ(util.GetShortTime(Date(), false), "12:00 AM");
}

TEST(ShortDate, SaysTodayAndOtherwiseLeavesOutLeadingZeros)
{
    const PinnedClock clock(Date::of(2026, 11, 21, 9));
    const auto util = makeRef<DateTimeUtil>();
    EXPECT_EQ(toText(call(util, "GetShortDate", Date::of(2026, 11, 21, 23, 59))), "Today");
    EXPECT_EQ(toText(call(util, "GetShortDate", Date::of(2026, 3, 7))), "3/7/26");
    EXPECT_EQ(toText(call(util, "GetShortDate", "12/31/2008")), "12/31/08");
    EXPECT_EQ(toText(call(util, "GetShortDateTime", Date::of(2026, 3, 7, 18))), "3/7/26 6:00 PM");
    EXPECT_EQ(toText(call(util, "GetShortDateTime", Date::of(2026, 3, 7))), "3/7/26 ");
    EXPECT_THROW(call(util, "GetShortDate", Null{}), Error);
}

TEST(FiscalYear, StartsOnTheLastStartDayThatHasPassed)
{
    const PinnedClock clock(Date::of(2026, 3, 15, 12));
    struct {
        Value month, day;
        const char* start;
    } const cases[] = {
        {7, 1, "2025-07-01"},       {3, 15, "2026-03-15"},  {3, 16, "2025-03-16"},
        {" 7 ", "1", "2025-07-01"}, {"x", 1, "2026-01-01"}, {13, 1, "2026-01-01"},
        {2, 31, "2026-01-01"},      {0, 0, "2026-01-01"},   {Null{}, 1, "2026-01-01"},
        {"7.5", 1, "2026-01-01"},   {2, 29, "2026-01-01"}};
    for (const auto& [month, day, start] : cases) {
        EXPECT_EQ(fiscalYearStart(month, day).iso().substr(0, 10), start);
    }
}

TEST(FiscalYear, FillsEveryPlaceholderWithALiteralOfTheDatabase)
{
    const ScriptedHost host;
    const PinnedClock clock(Date::of(2026, 3, 15));
    EXPECT_EQ(withFiscalYears("d >= {CURRENTFISCALYEARSTART} AND d <= {CURRENTFISCALYEAREND} OR "
                              "{PREVIOUSFISCALYEARSTART} {PREVIOUSFISCALYEAREND} "
                              "{CURRENTFISCALYEARSTART} {OTHER}",
                              7, 1),
              "d >= <1:2025-07-01 00:00:00> AND d <= <1:2026-06-30 23:59:59> OR "
              "<1:2024-07-01 00:00:00> <1:2025-06-30 23:59:59> <1:2025-07-01 00:00:00> {OTHER}");
}

} // namespace
} // namespace qmevents
