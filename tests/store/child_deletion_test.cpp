#include "tests/store/late_store.h"

namespace qmevents {
namespace {

using testing::LateStore;
using testing::Log;
using testing::null;
using testing::Rows;
using testing::rowsOf;

const std::string full = "ErrorUnexpected: the disk is full";

// Participant 8 is donor 9 at event 5, reservation 8 one of the same donor.
const Rows participantRow =
    rowsOf("Id FKEventId FKDonorId Status Notes Attended display InvitationGroupName",
           {{8, 5, 9, 1, null, false, "Lee", null}});
const Rows reservationRow = rowsOf(
    "Id FKEventId FKDonorId ReservationDate Description AmountPaid EventName EventFKStatusId",
    {{8, 5, 9, Date::of(2026, 11, 20), null, 0, "Gala", 0}});

class ChildDeletion : public LateStore {
protected:
    ChildDeletion()
    {
        host.answer("eep.Id = <3:8>", participantRow);
        host.answer("eep.FKDonorId=<2:9>", participantRow);
        host.answer("eer.Id = <3:8>", reservationRow);
        host.answer("WHERE FKDonorId=<2:9>", reservationRow);
        host.answer("FKReservationId= 8", {{"Id"}, {{101}, {102}}});
    }
};

struct Kind {
    std::string thing;
    const char *name, *idName;
    Log statements; ///< For record 8.
};
const Kind kinds[] = {
    {"EventActivity",
     "event activity",
     "Activityid",
     {"DELETE FROM events_event_reservations_activities WHERE FKActivityId = 8",
      "DELETE FROM events_event_activities WHERE Id = 8"}},
    {"EventExpense",
     "event expense",
     "expenseid",
     {"DELETE FROM events_event_expenses WHERE Id = 8"}},
    {"EventTask", "event task", "taskid", {"DELETE FROM events_event_tasks WHERE Id = 8"}},
    {"EventReservationActivity",
     "event reservation activity",
     "reservationativityid",
     {"DELETE FROM events_event_reservations_activities WHERE Id = 8"}},
    {"EventParticipant",
     "event participant",
     "participantid",
     {"SELECT * FROM events_event_participants eep WHERE eep.Id = <3:8>",
      "DELETE events_event_participants_groups FROM events_event_participants_groups LEFT JOIN "
      "events_event_participants ON events_event_participants_groups.FKDonorId = "
      "events_event_participants.FKDonorId AND events_event_participants_groups.FKEventId = "
      "events_event_participants.FKEventId WHERE events_event_participants.Id = 8",
      "DELETE FROM events_event_participants WHERE Id = 8",
      "SELECT * FROM events_event_info WHERE Id = <2:5>",
      "Note 9 Event 5: Removed From Participant List: Gala &lt;&amp;&gt; &quot;Ball&quot;<br>"
      "Removed By: Anna<br>Event Date: 12/1/2026"}},
    {"EventReservation",
     "event reservation",
     "reservationid",
     {"SELECT * FROM events_event_reservations eer WHERE eer.Id = <3:8>",
      "UPDATE donor_gifts SET FKReservationId = 0 WHERE FKReservationId=8",
      "DELETE FROM events_event_reservations_activities WHERE FKReservationId = 8",
      "DELETE FROM events_event_reservations WHERE Id = 8",
      "SELECT * FROM events_event_info WHERE Id = <2:5>",
      "Note 9 Event 5: Reservation Removed From Event: Gala &lt;&amp;&gt; &quot;Ball&quot;<br>"
      "Removed By: Anna<br>Reservation Date: 11/20/2026"}},
};

TEST_F(ChildDeletion, RunsItsCascadeUnderTheEventsLock)
{
    for (const auto& [thing, name, idName, statements] : kinds) {
        SCOPED_TRACE(thing);
        Log whole{"Lock event 5"};
        whole.insert(whole.end(), statements.begin(), statements.end());
        whole.emplace_back("Unlock event 5");
        EXPECT_TRUE(succeeds("Delete" + thing, 5, 8));
        EXPECT_EQ(host.takeLog(), whole);

        EXPECT_FALSE(succeeds("Delete" + thing, 5, 0));
        EXPECT_EQ(host.takeLog(), Log{std::string("ErrorUnexpected: Could not delete ") + name +
                                      " because " + name + " id is not valid (" + idName + "=0)"});
        host.lockHeldByAnother = true;
        EXPECT_FALSE(succeeds("Delete" + thing, 5, 8));
        EXPECT_EQ(host.takeLog(), Log{"Lock refused event 5"});
        host.lockHeldByAnother = false;
        host.deniedRights = {"events/edit"};
        EXPECT_FALSE(succeeds("Delete" + thing, 5, 8));
        EXPECT_TRUE(host.takeLog().at(0).ends_with(" | Not Authorized To Update Event"));
        host.deniedRights.clear();
    }
}

TEST_F(ChildDeletion, LeavesOutLockAndHistoryOnDemandAndDeletesGifts)
{
    host.documentType = 2;
    EXPECT_TRUE(succeeds("DeleteEventParticipant", 5, 8, false, false));
    EXPECT_EQ(host.takeLog(),
              (Log{"DELETE DISTINCTROW events_event_participants_groups.* FROM "
                   "events_event_participants_groups LEFT JOIN events_event_participants ON "
                   "events_event_participants_groups.FKDonorId = "
                   "events_event_participants.FKDonorId AND "
                   "events_event_participants_groups.FKEventId = "
                   "events_event_participants.FKEventId WHERE events_event_participants.Id = 8",
                   "DELETE FROM events_event_participants WHERE Id = 8"}));
    EXPECT_TRUE(succeeds("DeleteEventReservation", 5, 8, false, false, true));
    EXPECT_EQ(host.takeLog(),
              (Log{"SELECT Id FROM donor_gifts WHERE FKReservationId= 8", "Donation.Delete 101",
                   "Donation.Delete 102",
                   "DELETE FROM events_event_reservations_activities WHERE FKReservationId = 8",
                   "DELETE FROM events_event_reservations WHERE Id = 8"}));
}

TEST_F(ChildDeletion, ADonorLeavesListParticipationsAndReservations)
{
    EXPECT_TRUE(succeeds("DeleteDonorFromEvents", 9, false));
    const Log log = host.takeLog();
    ASSERT_EQ(log.size(), 9U);
    EXPECT_EQ(log[0], "DELETE FROM events_list_eventcoordinators WHERE FKDonorId = <3:9>");
    EXPECT_EQ(log[1],
              "UPDATE events_event_info SET FKCoordinatorId = <2:0> WHERE FKCoordinatorId = <3:9>");
    EXPECT_TRUE(log[2].starts_with("SELECT eep.*"));
    EXPECT_EQ(log[4], "DELETE FROM events_event_participants WHERE Id = 8");
    EXPECT_TRUE(log[5].ends_with("WHERE FKDonorId=<2:9> ORDER BY ReservationDate DESC"));
    EXPECT_EQ(log[6], "UPDATE donor_gifts SET FKReservationId = 0 WHERE FKReservationId=8");
    EXPECT_EQ(log[8], "DELETE FROM events_event_reservations WHERE Id = 8");
    EXPECT_FALSE(succeeds("DeleteDonorFromEvents", 0, false)) << "0 is nobody, not everybody";
    EXPECT_EQ(host.log.size(), 1U);
}

TEST_F(ChildDeletion, AMailingGoesToEachOfThoseChosenOnce)
{
    const auto groups = makeRef<Collection>();
    auto group = testing::puppet("Group");
    group->holds("Id", 71);
    groups->append(group);
    Rows participants = participantRow;
    participants.rows.clear();
    for (const auto& [donor, status] : {std::pair(9, 1), std::pair(4, 2), std::pair(6, 11)}) {
        auto& row = participants.rows.emplace_back(participantRow.rows[0]);
        row[0] = row[2] = donor;
        row[3] = status;
    }
    host.answer("eep.FKEventId=<2:5>", participants);
    host.answer("eepg.FKEventId = <2:5>",
                {{"FKEventId", "FKDonorId", "FKInvitationGroupId", "Name"},
                 {{5, 9, 70, "A"}, {5, 4, 71, "B"}, {5, 4, 71, "B"}}});
    Rows lines = lineRows(3, {{1, 7, 2}, {2, 7, 1}});
    const Rows sponsored = lineRows(4, {{3, 8, 1}});
    lines.rows.push_back(sponsored.rows[0]);
    lines.rows.back()[7] = 4;
    host.answer("As ActivitySponsorship", lines);
    const struct {
        const char *type, *statuses;
        bool sponsorships, others;
        const char* activities;
        std::vector<int> donors;
    } cases[] = {
        {"1", "~1~2~", false, false, "", {9, 4}}, {"1", "2, 11", false, false, "", {4, 6}},
        {"1", "", true, true, "~3~", {}},         {"2", "", false, false, "~3~", {9}},
        {"2", "", false, false, "~13~~4~", {4}},  {"2", "", false, false, "3,4", {}},
        {"2", "", false, false, "", {}},          {"3", "", true, false, "", {4}},
        {"3", "", false, true, "", {9}},          {"3", "", true, true, "", {9, 4}},
        {"4", "", false, false, "", {4}},         {"5", "~1~", true, true, "~3~", {}},
    };
    for (const auto& [type, statuses, sponsorships, others, activities, donors] : cases) {
        SCOPED_TRACE(std::string(type) + statuses + activities);
        EXPECT_TRUE(succeeds("StartEventMailingProcess", 5, type, statuses, groups, sponsorships,
                             others, activities));
        Log log = host.takeLog();
        std::erase_if(log, [](const auto& line) { return line.starts_with("SELECT"); });
        Log expected{"OpenMailingDialog"};
        for (const int donor : donors) {
            expected.push_back("AddToMailingList {1} " + std::to_string(donor));
        }
        expected.insert(expected.end(), {"CloseMailingDialog", "StartMailingProcess Event {1}"});
        EXPECT_EQ(log, expected);
    }
    const auto start = [&](int event) {
        return succeeds("StartEventMailingProcess", event, "1", "~1~", Value::nothing(), false,
                        false, "");
    };
    EXPECT_FALSE(start(6));
    EXPECT_EQ(host.takeLog(), Log{"SELECT * FROM events_event_info WHERE Id = <2:6>"});
    host.deniedRights = {"mailings/send"};
    EXPECT_FALSE(start(5));
    EXPECT_EQ(host.takeLog(),
              Log{"MsgBox: Based on your current security settings, you are not authorized to send "
                  "mailings.  Contact your database administrator | Not Authorized To Send "
                  "Mailings"});
}

TEST_F(ChildDeletion, ActionsAreJudgedByWhetherTheRecordExists)
{
    offer(8, 10, {{1, 7, 2}});
    const struct {
        std::string thing, name;
        std::vector<std::pair<int, const char*>> verbs; // all but Create
    } cases[] = {
        {"EventActivity",
         "event activity",
         {{2, "Edit"}, {4, "Delete"}, {5, "change the reservation information for"}, {10, "Copy"}}},
        {"EventReservation",
         "event reservation",
         {{2, "Edit"}, {3, "View"}, {4, "Delete"}, {6, "change the activities for "}}},
        {"EventExpense", "event expense", {{2, "Edit"}, {4, "Delete"}}},
        {"EventParticipant",
         "event participant",
         {{2, "Edit"},
          {4, "Delete"},
          {8, "add a reservation for"},
          {9, "view the donor information for"}}},
        {"EventTask", "event task", {{2, "Edit"}, {4, "Delete"}, {7, "Complete"}}},
    };
    host.answer("eee.Id = <3:8>",
                rowsOf("Id FKEventId ExpenseDate Description Amount", {{8, 5, null, null, 3}}));
    host.answer("eet.Id = <3:8>",
                rowsOf("Id FKEventId Name Notes DueDateTime Completed FKAssignedToId",
                       {{8, 5, "Call", null, null, false, 0}}));
    for (const auto& one : cases) {
        const std::string thing = one.thing;
        const std::string name = one.name;
        const auto& verbs = one.verbs;
        const auto judge = [&](std::int32_t id, std::int32_t action) {
            Value arguments[] = {id, action, Value(), Value()};
            const bool valid = toBool(invokeNamed(host.store(), "IsValid" + thing + "Action",
                                                  CallKind::method, arguments));
            EXPECT_EQ(arguments[3].isObject() && !arguments[3].isNothing(), valid);
            if (valid) { EXPECT_EQ(is(arguments[3].object(), "IsNew"), action == 1); }
            return toText(arguments[2]);
        };
        const auto refusal = [&](const std::string& verb, const std::string& reason) {
            return "The request to " + verb + " the " + name + " is no longer valid.</br></br>" +
                   reason;
        };
        EXPECT_EQ(judge(0, 1), "");
        EXPECT_EQ(judge(8, 1), refusal("Create", "The " + name + " already exists."));
        for (int action = 0; action <= 11; ++action) {
            if (action == 1) continue;
            SCOPED_TRACE(thing + " " + std::to_string(action));
            const auto known = std::find_if(verbs.begin(), verbs.end(),
                                            [&](const auto& verb) { return verb.first == action; });
            host.log.clear();
            const std::string message = judge(8, action);
            if (known == verbs.end()) {
                EXPECT_EQ(host.log,
                          Log{"ErrorUnexpected: A valid " + name + " action must be provided."});
                continue;
            }
            const bool inUse = thing == "EventActivity" && action == 4;
            EXPECT_EQ(message, inUse ? refusal("Delete", "The event has reservations that include "
                                                         "the activity.")
                                     : "");
            EXPECT_EQ(judge(99, action),
                      refusal(known->second, "The " + name + " no longer exists."));
            EXPECT_EQ(judge(0, action),
                      refusal(known->second, "The " + name + " no longer exists."));
        }
    }
}

TEST_F(ChildDeletion, WhicheverStatementFailsTheUserIsToldAndARepeatedCallSucceeds)
{
    offer(3, 10, {});
    using Arguments = std::vector<Value>;
    const auto record = [&](const char* maker, const testing::Cells& cells) {
        return [=, this] { return Arguments{with(make(maker, 5), cells)}; };
    };
    const auto withGroup = [&] {
        const auto one = make("GetNewEventParticipant", 5, 9);
        call(one, "AddInvitationGroup", 70, "");
        return one;
    };
    const auto threeOfThem = [&] {
        const auto all = make("GetNewEventParticipants");
        for (int i = 0; i < 3; ++i) call(all, "Add", withGroup(), 0);
        return all;
    };
    const auto eight = [] { return Arguments{5, 8}; };
    const Date day = Date::of(2026, 1, 2);
    const struct {
        const char* operation;
        std::function<Arguments()> fresh; // arguments for one try
    } operations[] = {
        {"UpdateEventActivity", record("GetNewEventActivity", {{"Name", "Ticket"}})},
        {"UpdateEventExpense",
         record("GetNewEventExpense", {{"Description", "F"}, {"ExpenseDate", day}, {"Amount", 1}})},
        {"UpdateEventTask", record("GetNewEventTask", {{"Name", "Call"}, {"DueDateTime", day}})},
        {"UpdateEventParticipant", [&] { return Arguments{withGroup()}; }},
        {"AddEventParticipants",
         [&] {
             return Arguments{5, threeOfThem()};
         }},
        {"UpdateEventReservation",
         [&] {
             return Arguments{reservation({{3, 1}, {3, 2}})};
         }},
        {"DeleteEventActivity", eight},
        {"DeleteEventExpense", eight},
        {"DeleteEventTask", eight},
        {"DeleteEventParticipant", eight},
        {"DeleteEventReservation", eight},
        {"DeleteEventReservation",
         [] {
             return Arguments{5, 8, true, true, true};
         }},
        {"DeleteDonorFromEvents",
         [] {
             return Arguments{9, true};
         }},
        {"StartEventMailingProcess",
         [] { return Arguments{5, "2", "", Value::nothing(), false, false, "~3~"}; }},
    };
    for (const auto& tried : operations) {
        const std::string what = tried.operation;
        bool failed = true;
        for (std::size_t failing = 0; failed; ++failing) {
            SCOPED_TRACE(what + ", statement " + std::to_string(failing));
            Arguments arguments = tried.fresh();
            const auto act = [&] {
                return toBool(invokeNamed(host.store(), what, CallKind::method, arguments));
            };
            host.log.clear();
            host.failingStatement = failing;
            const bool done = act();
            failed = !host.failingStatement;
            host.failingStatement.reset();
            const Log log = host.takeLog();
            const auto count = [&](const std::string& start) {
                return std::count_if(log.begin(), log.end(),
                                     [&](const auto& line) { return line.starts_with(start); });
            };
            EXPECT_NE(done, failed);
            EXPECT_EQ(count(full), failed ? 1 : 0);
            EXPECT_EQ(count("Error"), failed ? 1 : 0) << "and nothing else";
            EXPECT_EQ(count("Lock "), count("Unlock "));
            EXPECT_EQ(count("OpenMailingDialog"), what.starts_with("Start") && failing > 0 ? 1 : 0);
            EXPECT_TRUE(act());
            ASSERT_LT(failing, 60U);
        }
    }
}

} // namespace
} // namespace qmevents
