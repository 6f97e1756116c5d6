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
    return std::visit(
        []<typename T>(const T& held) -> std::string {
            if constexpr (std::is_same_v<T, std::string>) {
                return held;
            } else if constexpr (std::is_arithmetic_v<T>) {
                return std::to_string(held);
            } else {
                return "null";
            }
        },
        value);
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
        for (int event = 1; event <= 2; ++event) {
            const FullEvent made = filler.fill();
            host.execute("UPDATE events_event_info SET FKCoordinatorId = 2, FKFundId = 1, "
                         "FKCampaignId = 2, FKAppealId = 1 WHERE Id = " +
                         std::to_string(made.event));
            host.execute("UPDATE events_event_activities SET FKFundId = 2, FKCampaignId = 1, "
                         "FKAppealId = 2 WHERE Id = " +
                         std::to_string(made.activity));
            host.execute("UPDATE events_event_tasks SET FKAssignedToId = " + std::to_string(event) +
                         " WHERE Id = " + std::to_string(made.task));
        }
    }
    /// The first donor and all campaigns go; the groups, the participants, the reservations with
    /// their gifts and lines, and the campaigns of events and activities are to be repaired.
    void breakSomething() const
    {
        host.execute("DELETE FROM donor_donors WHERE id = 1");
        host.execute("DELETE FROM donor_campaigns");
        put(host.document(), "Preferences", "events", "signin-page", "events");
    }
    static constexpr int repairStatements = 7;
    const std::string goesOn = "go obsidian://events/events-view";

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

TEST_P(ReferenceRepair, RollsBackAfterAFailureTellsItAndSignsIn)
{
    breakSomething();
    const std::string before = dump(host);
    for (int failing = 0; failing <= repairStatements; ++failing) {
        SCOPED_TRACE(failing);
        host.frontEnd.seen.clear();
        int left = failing;
        host.session->sql().beforeStatement = [&](std::string_view) {
            if (left-- == 0) throw qmevents::Error(3000, "Document", "the disk is full");
        };
        signIn();
        host.session->sql().beforeStatement = nullptr;
        EXPECT_EQ(dump(host), before);
        const std::string told = "unexpected error the disk is full|";
        EXPECT_EQ(host.frontEnd.seen,
                  failing == 0 ? (Seen{told, goesOn})
                               : (Seen{"open progressbar", "close progressbar", told, goesOn}));
    }
    host.frontEnd.seen.clear();
    signIn();
    EXPECT_NE(dump(host), before);
    EXPECT_EQ(host.frontEnd.seen,
              (Seen{"open progressbar", "refresh", "close progressbar", goesOn}));
}

TEST_P(ReferenceRepair, RollsBackWhenTheUserClosesTheProgress)
{
    breakSomething();
    const std::string before = dump(host);
    auto& engine = host.session->application().shell()->dialogEngine();
    for (int done = 1; done <= repairStatements; ++done) {
        SCOPED_TRACE(done);
        host.frontEnd.seen.clear();
        host.frontEnd.windows = {[&](int window) {
            host.session->sql().beforeStatement = [&, window, left = done](auto) mutable {
                if (--left == 0) engine.closePage(window, false);
            };
        }};
        signIn();
        host.session->sql().beforeStatement = nullptr;
        EXPECT_EQ(dump(host), before);
        EXPECT_EQ(host.frontEnd.seen, (Seen{"open progressbar", "close progressbar", goesOn}));
    }
}

} // namespace
} // namespace refhost
