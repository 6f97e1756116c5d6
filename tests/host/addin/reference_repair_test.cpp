// What sign-in does about references to records that were deleted without the add-in.
#include <variant>

#include "host/app/app.h"
#include "tests/host/addin/full_event.h"

namespace refhost {
namespace {

using qmevents::toBool;
using Seen = std::vector<std::string>;

std::string shown(const HostValue& value)
{
    if (const auto* number = std::get_if<std::int64_t>(&value)) return std::to_string(*number);
    if (const auto* real = std::get_if<double>(&value)) return std::to_string(*real);
    const auto* text = std::get_if<std::string>(&value);
    return text ? *text : "null";
}

/// Every row that sign-in could touch, as text.
std::string dump(const WholeHost& host)
{
    std::string all;
    for (const std::string table :
         {"events_event_info", "events_event_activities", "events_event_participants",
          "events_event_participants_groups", "events_event_reservations",
          "events_event_reservations_activities", "events_event_expenses", "events_event_tasks",
          "events_list_eventcoordinators", "donor_gifts"}) {
        all += table + "\n";
        for (const auto& row : host.session->sql().hostQuery("SELECT * FROM " + table)) {
            for (const auto& cell : row) all += shown(cell) + "|";
            all += "\n";
        }
    }
    return all;
}

class ReferenceRepair : public InBothDialects {
protected:
    ReferenceRepair() { fill(host); }

    /// Two events that refer to everything, by both donors; the second donor coordinates.
    static void fill(const WholeHost& host)
    {
        const EventFiller filler(host);
        filler.prepare();
        for (const char* table : {"donor_funds", "donor_campaigns", "donor_list_gifts_sources",
                                  "donor_list_assignedto"}) {
            for (const char* value : {"Kept", "Other"}) {
                host.execute("INSERT INTO " + std::string(table) + " ([value]) VALUES ('" + value +
                             "')");
            }
        }
        const auto coordinator = toObject(call(host.lists(), "GetNewItem", "eventcoordinator"));
        put(coordinator, "FKdonorId", 2);
        EXPECT_TRUE(toBool(call(host.lists(), "UpdateEventCoordinator", coordinator)));
        filler.fill();
        filler.fill();
        host.execute("UPDATE events_event_info SET FKCoordinatorId = 2, FKFundId = 1, "
                     "FKCampaignId = 2, FKAppealId = 1");
        host.execute("UPDATE events_event_activities SET FKFundId = 2, FKCampaignId = 1, "
                     "FKAppealId = 2");
        host.execute("UPDATE events_event_tasks SET FKAssignedToId = FKEventId");
    }
    void signIn() const { host.session->raise("application-signin"); }

    WholeHost host{GetParam()};
};
INSTANTIATE_TEST_SUITE_P(Both, ReferenceRepair, ::testing::Values(Dialect::sqlServer, Dialect::jet),
                         testNameOf);

TEST_P(ReferenceRepair, LooksOnceAndLeavesSoundDataAlone)
{
    const std::string before = dump(host);
    host.statements.clear();
    host.frontEnd.seen.clear();
    signIn();
    EXPECT_EQ(host.statements.size(), 1U);
    EXPECT_EQ(host.frontEnd.seen, Seen{});
    EXPECT_EQ(dump(host), before);
}

TEST_P(ReferenceRepair, DoesWhatRemovingTheDonorWouldHaveDone)
{
    for (const char* donor : {"1", "2"}) {
        for (const char* deletion : {"UPDATE donor_donors SET deleted = 1 WHERE id = ",
                                     "DELETE FROM donor_donors WHERE id = "}) {
            SCOPED_TRACE(std::string(deletion) + donor);
            const auto with = [&](const std::function<void(WholeHost&)>& act) {
                WholeHost other(GetParam());
                fill(other);
                act(other);
                return dump(other);
            };
            host.session.reset(); // one session a thread
            const std::string removed = with([&](WholeHost& other) {
                EXPECT_TRUE(
                    toBool(call(other.store(), "DeleteDonorFromEvents", std::stoi(donor), false)));
            });
            const std::string repaired = with([&](WholeHost& other) {
                other.execute(std::string(deletion) + donor);
                other.frontEnd.seen.clear();
                other.session->raise("application-signin");
                EXPECT_EQ(other.frontEnd.seen,
                          (Seen{"open progressbar", "refresh", "close progressbar"}));
            });
            EXPECT_EQ(repaired, removed);
        }
    }
}

TEST_P(ReferenceRepair, ClearsTheKeysOfDeletedCodesAndNoOthers)
{
    for (const char* table :
         {"donor_funds", "donor_campaigns", "donor_list_gifts_sources", "donor_list_assignedto"}) {
        host.execute("DELETE FROM " + std::string(table) + " WHERE id = 2");
        // Hidden is not deleted.
        host.execute("UPDATE " + std::string(table) + " SET visible = 0");
    }
    signIn();
    const struct {
        const char *query, *cell;
    } cases[] = {
        {"SELECT COUNT(*) FROM events_event_info WHERE FKFundId = 1 AND FKCampaignId = 0 AND "
         "FKAppealId = 1 AND FKCoordinatorId = 2",
         "2"},
        {"SELECT COUNT(*) FROM events_event_activities WHERE FKFundId = 0 AND FKCampaignId = 1 "
         "AND FKAppealId = 0",
         "2"},
        {"SELECT COUNT(*) FROM events_event_tasks WHERE FKAssignedToId = 0", "1"},
        {"SELECT COUNT(*) FROM events_event_tasks WHERE FKAssignedToId = 1", "1"},
        {"SELECT COUNT(*) FROM events_event_participants", "4"},
        {"SELECT COUNT(*) FROM events_event_reservations_activities", "2"},
        {"SELECT COUNT(*) FROM donor_gifts WHERE FKReservationId <> 0", "2"},
    };
    for (const auto& [query, cell] : cases) EXPECT_EQ(host.cell(query), cell) << query;
}

TEST_P(ReferenceRepair, RollsBackAfterAFailureOrACancelAndSignsIn)
{
    // The groups, the participants, the reservations with their gifts and lines, and the campaigns
    // of events and activities.
    constexpr int statements = 7;
    host.execute("DELETE FROM donor_donors WHERE id = 1");
    host.execute("DELETE FROM donor_campaigns");
    put(host.document(), "Preferences", "events", "signin-page", "events");
    const std::string before = dump(host);
    const std::string goesOn = "go obsidian://events/events-view";
    auto& engine = host.session->application().shell()->dialogEngine();
    for (const bool fails : {true, false}) {
        for (int done = fails ? 0 : 1; done <= statements; ++done) {
            SCOPED_TRACE(std::string(fails ? "failure " : "cancel ") + std::to_string(done));
            host.frontEnd.seen.clear();
            int window = 0;
            host.frontEnd.windows = {[&](int opened) { window = opened; }};
            host.session->sql().beforeStatement = [&, left = done](std::string_view) mutable {
                if (left-- != 0) return;
                if (fails) throw qmevents::Error(3000, "Document", "the disk is full");
                engine.closePage(window, false);
            };
            signIn();
            host.session->sql().beforeStatement = nullptr;
            EXPECT_EQ(dump(host), before);
            Seen expected;
            if (done > 0) expected = {"open progressbar", "close progressbar"};
            if (fails) expected.emplace_back("unexpected error the disk is full|");
            expected.push_back(goesOn);
            EXPECT_EQ(host.frontEnd.seen, expected);
        }
    }
    host.frontEnd.seen.clear();
    signIn();
    EXPECT_NE(dump(host), before);
    EXPECT_EQ(host.frontEnd.seen,
              (Seen{"open progressbar", "refresh", "close progressbar", goesOn}));
}

} // namespace
} // namespace refhost
