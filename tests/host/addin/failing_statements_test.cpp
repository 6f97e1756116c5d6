// Saving and deleting when the database fails at any statement.
#include "host/document/objects/lock_manager.h"
#include "tests/host/addin/full_event.h"

namespace refhost {
namespace {

using qmevents::toBool;
using Seen = std::vector<std::string>;

class FailingStatements : public InBothDialects {
protected:
    FailingStatements() { EventFiller(host).prepare(); }

    /// Does `act` with its nth statement failing; whether there was such a statement. The user must
    /// then have been told, once, and the event be free for others.
    bool failsAt(int failing, std::int32_t event, const std::function<bool()>& act)
    {
        int left = failing;
        host.session->sql().beforeStatement = [&](std::string_view text) {
            // A row whose key nobody can tell stays; saving it again makes another.
            if (text == "SELECT @@IDENTITY") return;
            if (left-- == 0) throw qmevents::Error(3000, "Document", "the disk is full");
        };
        host.frontEnd.seen.clear();
        const bool done = act();
        host.session->sql().beforeStatement = nullptr;
        const bool failed = left < 0;
        EXPECT_NE(done, failed);
        if (failed) { EXPECT_EQ(host.frontEnd.seen, Seen{"unexpected error the disk is full|"}); }
        const auto locks = LockManager::of(host.database->address());
        const auto another = locks->newSession();
        EXPECT_FALSE(locks->acquire({"event", event}, {another, "bert", {}}));
        locks->release({"event", event}, another);
        return failed;
    }
    std::string rowsOf(std::int32_t event) const
    {
        std::string rows;
        for (const char* table : {"activities", "participants", "participants_groups",
                                  "reservations", "expenses", "tasks"}) {
            rows += host.cell("SELECT COUNT(*) FROM events_event_" + std::string(table) +
                              " WHERE FKEventId = " + std::to_string(event)) +
                    " ";
        }
        return rows + "lines " +
               host.cell("SELECT COUNT(*) FROM events_event_reservations_activities l INNER JOIN "
                         "events_event_activities a ON l.FKActivityId = a.Id WHERE a.FKEventId = " +
                         std::to_string(event));
    }

    WholeHost host{GetParam()};
};
INSTANTIATE_TEST_SUITE_P(Both, FailingStatements,
                         ::testing::Values(Dialect::sqlServer, Dialect::jet), testNameOf);

TEST_P(FailingStatements, ADeletionThatFailedIsCompletedByTheNext)
{
    const Value none = qmevents::Missing{};
    const struct {
        const char* operation;
        std::int32_t FullEvent::*record;
        Value deletesDonations;
        const char *rows, *donations; ///< Left of the event; gifts that count, and linked ones.
        int statements;               ///< At least so many can fail.
    } cases[] = {
        {"DeleteEventActivity", &FullEvent::activity, none, "0 2 2 1 1 1 lines 0", "2 2", 2},
        {"DeleteEventParticipant", &FullEvent::participant, none, "1 1 1 1 1 1 lines 1", "2 2", 4},
        {"DeleteEventReservation", &FullEvent::reservation, false, "1 2 2 0 1 1 lines 0", "2 1", 5},
        {"DeleteEventReservation", &FullEvent::reservation, true, "1 2 2 0 1 1 lines 0", "1 1", 5},
        {"DeleteEventReservationActivity", &FullEvent::line, none, "1 2 2 1 1 1 lines 0", "2 2", 1},
        {"DeleteEventExpense", &FullEvent::expense, none, "1 2 2 1 0 1 lines 1", "2 2", 1},
        {"DeleteEventTask", &FullEvent::task, none, "1 2 2 1 1 0 lines 1", "2 2", 1},
    };
    for (const auto& one : cases) {
        int failing = 0;
        for (bool failed = true; failed; ++failing) {
            SCOPED_TRACE(one.operation + std::string(", statement ") + std::to_string(failing));
            host.execute("DELETE FROM donor_gifts");
            const FullEvent made = EventFiller(host).fill();
            const auto act = [&] {
                const std::int32_t id = made.*one.record;
                return toBool(one.deletesDonations.isMissing()
                                  ? call(host.store(), one.operation, made.event, id)
                                  : call(host.store(), one.operation, made.event, id, true, true,
                                         one.deletesDonations));
            };
            failed = failsAt(failing, made.event, act);
            if (failed) { EXPECT_TRUE(act()); }
            EXPECT_EQ(rowsOf(made.event), one.rows);
            EXPECT_EQ(host.cell("SELECT COUNT(*) FROM donor_gifts WHERE deleted = 0") + " " +
                          host.cell("SELECT COUNT(*) FROM donor_gifts WHERE deleted = 0 AND "
                                    "(FKEventId <> 0 OR FKReservationId <> 0)"),
                      one.donations);
        }
        EXPECT_GT(failing, one.statements) << one.operation;
    }
}

TEST_P(FailingStatements, ASaveThatFailedIsCompletedByTheNext)
{
    using New = Ref<Object> (*)(const EventFiller&, const FullEvent&);
    const struct {
        const char* operation;
        New make;
        const char* rows;  ///< Of the event with one more.
        int statements;    ///< At least so many can fail.
        const char* notes; ///< In the history of those who take part in it.
    } cases[] = {
        {"UpdateEventActivity",
         [](const EventFiller& filler, const FullEvent& e) { return filler.newActivity(e.event); },
         "2 2 2 1 1 1 lines 1", 2, "3"},
        {"UpdateEventParticipant",
         [](const EventFiller& filler, const FullEvent& e) {
             return filler.newParticipant(e.event, 1);
         },
         "1 3 2 1 1 1 lines 1", 6, "4"},
        {"UpdateEventReservation",
         [](const EventFiller& filler, const FullEvent& e) {
             return filler.newReservation(e.event, e.activity);
         },
         "1 2 2 2 1 1 lines 2", 7, "4"},
        {"UpdateEventExpense",
         [](const EventFiller& filler, const FullEvent& e) { return filler.newExpense(e.event); },
         "1 2 2 1 2 1 lines 1", 2, "3"},
        {"UpdateEventTask",
         [](const EventFiller& filler, const FullEvent& e) { return filler.newTask(e.event); },
         "1 2 2 1 1 2 lines 1", 2, "3"},
    };
    const EventFiller filler(host);
    for (const auto& one : cases) {
        int failing = 0;
        for (bool failed = true; failed; ++failing) {
            SCOPED_TRACE(one.operation + std::string(", statement ") + std::to_string(failing));
            const FullEvent made = filler.fill();
            const auto record = one.make(filler, made);
            const auto act = [&] { return toBool(call(host.store(), one.operation, record)); };
            failed = failsAt(failing, made.event, act);
            if (failed) { EXPECT_TRUE(act()); }
            EXPECT_EQ(rowsOf(made.event), one.rows);
            EXPECT_EQ(host.cell("SELECT COUNT(*) FROM actions_interactions WHERE reference = '" +
                                std::to_string(made.event) + "'"),
                      one.notes);
            EXPECT_FALSE(toBool(get(record, "IsNew")));
        }
        EXPECT_GT(failing, one.statements) << one.operation;
    }
}

} // namespace
} // namespace refhost
