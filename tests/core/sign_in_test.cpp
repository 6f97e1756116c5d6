#include <gtest/gtest.h>

#include "tests/support/scripted_host.h"

namespace qmevents {
namespace {

using testing::Log;
using testing::puppet;
using testing::ScriptedHost;

class SignIn : public ::testing::TestWithParam<std::int32_t> {
protected:
    SignIn()
    {
        host.documentType = GetParam();
        host.settings["events-addin-init"] = "2";
    }
    Log signIn()
    {
        auto event = puppet("Event");
        event->holds("Key", "application-signin").holds("Data", Value());
        call(host.root("Handler"), "EventHandler", event);
        return host.takeLog();
    }
    /// As many rows of the nth kind as are given refer to what is gone.
    void isBroken(std::vector<std::vector<Value>> found)
    {
        host.answer("UNION ALL", {{"Place", "Broken"}, std::move(found)});
    }
    ScriptedHost host;
};
INSTANTIATE_TEST_SUITE_P(Both, SignIn, ::testing::Values(1, 0));

const std::string goneDonor =
    "events_event_reservations.FKDonorId > 0 AND NOT EXISTS (SELECT k.id FROM donor_donors k "
    "WHERE k.id = events_event_reservations.FKDonorId AND (k.deleted = 0 OR k.deleted IS NULL))";

TEST_P(SignIn, ShowsTheProgressOfARepairAndEndsWithTheChosenPage)
{
    host.preferences["events/signin-page"] = "events";
    isBroken({{0, 0}, {4, 3}, {5, 2}, {6, 0}});
    const auto step = [](const std::string& what, const std::string& done) {
        return Log{"Dialog description = " + what, "Dialog done = " + done, "Dialog total = 5",
                   "DoEvents"};
    };
    const std::string words = "Some events refer to donors, funds, campaigns, appeals or assignees "
                              "that have been deleted.";
    Log expected{"Dialog title = Repair Events",  "Dialog heading = Repairing Events",
                 "Dialog description = " + words, "ShowDialog progressbar missing missing 468 550",
                 "Dialog.ClearClipboard",         "Dialog heading = Repairing Events",
                 "Dialog description = " + words, "BeginTrans"};
    const auto add = [&](const Log& lines) {
        expected.insert(expected.end(), lines.begin(), lines.end());
    };
    const std::string those = " WHERE FKReservationId IN (SELECT events_event_reservations.Id FROM "
                              "events_event_reservations WHERE " +
                              goneDonor + ")";
    add(step("Reservations", "0"));
    add({"UPDATE donor_gifts SET FKReservationId = 0" + those});
    add(step("Reservations", "0"));
    add({"DELETE FROM events_event_reservations_activities" + those});
    add(step("Reservations", "0"));
    add({"DELETE FROM events_event_reservations WHERE " + goneDonor});
    add(step("Funds of events", "3"));
    add({"UPDATE events_event_info SET FKFundId = 0 WHERE events_event_info.FKFundId > 0 AND NOT "
         "EXISTS (SELECT k.id FROM donor_funds k WHERE k.id = events_event_info.FKFundId)"});
    add(step("Finishing", "5"));
    add({"CommitTrans", "ForceUpdate", "Dialog.Close ", "Dialog.ClearClipboard",
         "Navigate: obsidian://events/events-view"});
    Log log = signIn();
    ASSERT_FALSE(log.empty());
    EXPECT_TRUE(log.front().starts_with("SELECT 0 AS Place, COUNT(*) AS Broken FROM "));
    log.erase(log.begin());
    EXPECT_EQ(log, expected);
}

TEST_P(SignIn, StaysOnTheHostsPageUnlessTheUserMayAndWantsToSeeTheEvents)
{
    const struct {
        Value preference;
        bool mayView, goes;
    } cases[] = {{Value(), true, false},   {"home", true, false},  {false, true, false},
                 {"events", false, false}, {"events", true, true}, {"Events", true, true}};
    for (const auto& [preference, mayView, goes] : cases) {
        host.preferences["events/signin-page"] = preference;
        host.deniedRights =
            mayView ? std::set<std::string>{} : std::set<std::string>{"events/view"};
        const Log log = signIn();
        EXPECT_EQ(log.size(), goes ? 2U : 1U);
        EXPECT_EQ(log.back() == "Navigate: obsidian://events/events-view", goes);
    }
    for (const char* newer : {"3", "90000000000"}) {
        host.settings["events-addin-init"] = newer;
        EXPECT_EQ(
            signIn(),
            (Log{"ErrorUser: This Addin cannot work with this database.  Please contact Corvane."}))
            << "nothing is done to a database that this add-in does not know";
    }
    host.settings["events-addin-init"] = Null{};
    host.requiredSchema = 0;
    EXPECT_EQ(signIn().size(), 2U) << "a setting that is not there is version 0";
}

} // namespace
} // namespace qmevents
