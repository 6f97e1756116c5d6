#include <gtest/gtest.h>

#include "automation/clock.h"
#include "tests/support/scripted_host.h"

namespace qmevents {
namespace {

using testing::Log;
using testing::Rows;
using testing::ScriptedHost;

Rows galaRow()
{
    return testing::eventRow(12, {{"Name", "Gala"},
                                  {"StartDateTime", Date::of(2026, 12, 1, 18)},
                                  {"RevenueGoal", Currency::fromUnits(5000)}});
}

class Store : public ::testing::Test {
protected:
    // What `act` had the host do.
    template <typename Act>
    Log logOf(Act act)
    {
        host.log.clear();
        act();
        return host.takeLog();
    }
    Ref<Object> newGala()
    {
        auto event = toObject(call(host.store(), "GetNewEvent"));
        put(event, "Name", "Gala");
        put(event, "StartDateTime", Date::of(2026, 12, 1, 18));
        return event;
    }
    Ref<Object> storedGala()
    {
        host.answer("FROM events_event_info WHERE Id = <2:12>", galaRow());
        return toObject(call(host.store(), "GetEvent", 12));
    }
    static bool is(const Ref<Object>& event, const char* flag) { return toBool(get(event, flag)); }
    bool update(const Ref<Object>& event)
    {
        return toBool(call(host.store(), "UpdateEvent", event));
    }

    ScriptedHost host;
    PinnedClock clock{Date::of(2026, 11, 21, 10)};
};

TEST_F(Store, SearchesByEveryCriterionInOrder)
{
    const auto search = [&](const std::vector<std::pair<const char*, Value>>& given) {
        const auto criteria = toObject(call(host.store(), "GetNewEventsCriteria"));
        for (const auto& [name, value] : given) put(criteria, name, value);
        const Log log = logOf([&] { call(host.store(), "GetEventsBySearch", criteria); });
        return log.size() == 1 ? log[0] : "not one statement";
    };
    EXPECT_EQ(search({}), "SELECT * FROM events_event_info");
    EXPECT_EQ(search({{"MaxRows", 0}}), "SELECT * FROM events_event_info");
    EXPECT_EQ(search({{"MaxRows", -3}}), "SELECT * FROM events_event_info");
    EXPECT_EQ(search({{"MaxRows", 50}, {"CustomOrderBy", "StartDateTime DESC, Name"}}),
              "SELECT TOP 50 * FROM events_event_info ORDER BY StartDateTime DESC, Name");
    EXPECT_EQ(search({{"CustomWhere", "StartDateTime > x"},
                      {"SearchString", "spring gala"},
                      {"FKAppealId", 8},
                      {"FKCampaignId", 7},
                      {"FKFundId", 6},
                      {"FKCoordinatorId", 5},
                      {"FKStatusId", 4},
                      {"FKCategoryId", 3},
                      {"FKLocationId", "2"},
                      {"EventId", 1}}),
              "SELECT * FROM events_event_info WHERE Id = <2:1> AND FKLocationId = <3:2> AND "
              "FKCategoryId = <3:3> AND FKStatusId = <3:4> AND FKCoordinatorId = <3:5> AND "
              "FKFundId = <2:6> AND FKCampaignId = <2:7> AND FKAppealId = <2:8> AND Name LIKE "
              "<5:%spring%gala%> AND StartDateTime > x");
    EXPECT_EQ(search({{"FKStatusId", 0}}), // 0 asks for events without a status
              "SELECT * FROM events_event_info WHERE FKStatusId = <3:0>");
    EXPECT_EQ(search({{"SearchString", "  "}}),
              "SELECT * FROM events_event_info WHERE Name LIKE <5:%%%%>");
    EXPECT_EQ(search({{"SearchString", ""}, {"FKStatusId", Null{}}, {"CustomWhere", ""}}),
              "SELECT * FROM events_event_info");
}

TEST_F(Store, LoadsEventsCleanWithDefaultsForNulls)
{
    host.answer("FROM events_event_info", galaRow());
    const auto event = toObject(call(host.store(), "GetEvent", 12));
    EXPECT_EQ(toText(get(event, "Name")), "Gala");
    EXPECT_EQ(toText(get(event, "RevenueGoal")), "5000");
    EXPECT_EQ(toText(get(event, "Description")), "");
    EXPECT_EQ(toInt32(get(event, "MaxCapacity")), 0);
    EXPECT_EQ(toInt32(get(event, "Id")), 12);
    EXPECT_FALSE(toBool(get(event, "IsNew")) || toBool(get(event, "IsDirty")));
    const auto all = toObject(call(host.store(), "GetEvents"));
    EXPECT_EQ(toText(get(toObject(call(all, "ItemByKey", 12)), "Name")), "Gala");
}

TEST_F(Store, ReportsImpossibleReadsAndStaysSilentAboutMissingEvents)
{
    EXPECT_EQ(logOf([&] { EXPECT_TRUE(call(host.store(), "GetEvent", 0).isNothing()); }),
              (Log{"ErrorUnexpected: Could not retrieve event because event id is not valid "
                   "(eventid=0)"}));
    EXPECT_EQ(logOf([&] { EXPECT_TRUE(call(host.store(), "GetEvent", 99).isNothing()); }).size(),
              1U);
    EXPECT_EQ(logOf([&] {
                  EXPECT_TRUE(
                      call(host.store(), "GetEventsBySearch", Value::nothing()).isNothing());
              }),
              (Log{"ErrorUnexpected: The GetEventsBySearch method requires a valid search class"}));
    host.failingStatement = 0;
    EXPECT_EQ(logOf([&] { EXPECT_TRUE(call(host.store(), "GetEvents").isNothing()); }),
              (Log{"SELECT * FROM events_event_info", "ErrorUnexpected: the disk is full"}));
    EXPECT_THROW(call(host.store(), "GetEventsBySearch", newGala()), Error);
}

TEST_F(Store, InsertsANewEventAndTakesItsKey)
{
    host.answer("@@IDENTITY", {{"Expr1000"}, {{34}}});
    const auto event = newGala();
    put(event, "Name", "O'Neill's \"Gala\"");
    put(event, "RevenueGoal", Currency::fromDouble(12.5));
    put(event, "FKFundId", 0);
    EXPECT_EQ(
        logOf([&] { EXPECT_TRUE(toBool(call(host.store(), "UpdateEvent", event, false, false))); }),
        (Log{"INSERT INTO events_event_info (Name, Description, FKLocationId, StartDateTime, "
             "EndDateTime, RSVPDateTime, MaxCapacity, MinCapacity, FKCategoryId, FKStatusId, "
             "FKCoordinatorId, RevenueGoal, AttendanceGoal, FKFundId, FKCampaignId, FKAppealId, "
             "Notes, CreateUser, CreateDate) VALUES (<5:O'Neill's \"Gala\">, <5:>, <3:0>, "
             "<1:2026-12-01 18:00:00>, <1:1899-12-30 00:00:00>, <1:1899-12-30 00:00:00>, <3:0>, "
             "<3:0>, <3:0>, <3:0>, <3:0>, <3:12.5>, <3:0>, <2:0>, <2:0>, <2:0>, <5:>, <3:5>, "
             "<1:2026-11-21 10:00:00>)",
             "SELECT @@IDENTITY"}));
    EXPECT_EQ(toInt32(get(event, "Id")), 34);
    EXPECT_FALSE(is(event, "IsNew") || is(event, "IsDirty"));
    EXPECT_EQ(toInt32(get(event, "CreateUser")), 5);
}

TEST_F(Store, RewritesAnExistingEventWholeUnderItsLock)
{
    const auto event = storedGala();
    EXPECT_EQ(logOf([&] { EXPECT_TRUE(update(event)); }),
              (Log{"Lock event 12",
                   "UPDATE events_event_info SET Name = <5:Gala>, Description = <5:>, FKLocationId "
                   "= <3:0>, StartDateTime = <1:2026-12-01 18:00:00>, EndDateTime = <1:1899-12-30 "
                   "00:00:00>, RSVPDateTime = <1:1899-12-30 00:00:00>, MaxCapacity = <3:0>, "
                   "MinCapacity = <3:0>, FKCategoryId = <3:0>, FKStatusId = <3:0>, FKCoordinatorId "
                   "= <3:0>, RevenueGoal = <3:5000>, AttendanceGoal = <3:0>, FKFundId = <2:0>, "
                   "FKCampaignId = <2:0>, FKAppealId = <2:0>, Notes = <5:>, LastUpdateUser = "
                   "<3:5>, LastUpdateDate = <1:2026-11-21 10:00:00> WHERE Id = <3:12>",
                   "ForceUpdate", "Unlock event 12"}));
}

TEST_F(Store, RefusesToSaveWithoutRightEventOrLock)
{
    EXPECT_EQ(
        logOf([&] { EXPECT_FALSE(toBool(call(host.store(), "UpdateEvent", Value::nothing()))); }),
        (Log{"ErrorUnexpected: The UpdateEvent method requires a valid event object"}));
    host.lockHeldByAnother = true;
    const auto stored = storedGala();
    EXPECT_EQ(logOf([&] { EXPECT_FALSE(update(stored)); }), (Log{"Lock refused event 12"}));
    host.deniedRights = {"events/edit"};
    EXPECT_EQ(logOf([&] { EXPECT_FALSE(update(newGala())); }),
              (Log{"MsgBox: Based on your current security settings, you are not authorized to "
                   "update an event.  Contact your database administrator | Not Authorized To "
                   "Update Event"}));
}

TEST_F(Store, KeepsAnEventNewAndDirtyWhenItsInsertFails)
{
    const auto event = newGala();
    put(event, "Name", "typed");
    host.failingStatement = 0;
    const Log log = logOf([&] { EXPECT_FALSE(update(event)); });
    EXPECT_EQ(log.back(), "ErrorUnexpected: the disk is full");
    EXPECT_TRUE(is(event, "IsNew") && is(event, "IsDirty"));
    EXPECT_EQ(toText(get(event, "Name")), "typed");
}

TEST_F(Store, ShowsTheFirstBrokenRuleOnly)
{
    const Date day = Date::of(2026, 12, 1, 18);
    const Date onlyTime = Date::fromSerial(0.75);
    host.codes = {{"fund", {1}}, {"campaign", {1}}, {"giftsource", {1}}};
    const std::string gone = "\r\nIt may have been deleted by another user.";
    struct {
        std::vector<std::pair<const char*, Value>> assigned;
        std::string message;
    } const cases[] = {
        {{{"Name", "   "}}, "The event name is required."},
        {{{"StartDateTime", onlyTime}}, "The event start date is required."},
        {{{"EndDateTime", onlyTime}}, "The event end date is required if an end time is entered."},
        {{{"EndDateTime", day.plusSeconds(-1)}},
         "The event end date cannot be before the event start date."},
        {{{"RSVPDateTime", onlyTime}},
         "The event RSVP date is required if an RSVP time is entered."},
        {{{"FKLocationId", 9}}, "The selected event location no longer exists." + gone},
        {{{"FKCategoryId", 9}}, "The selected event category no longer exists." + gone},
        {{{"FKStatusId", 9}}, "The selected event status no longer exists." + gone},
        {{{"FKCoordinatorId", 9}}, "The selected event coordinator no longer exists." + gone},
        {{{"FKFundId", 9}}, "The selected fund no longer exists." + gone},
        {{{"FKCampaignId", 9}}, "The selected campaign no longer exists." + gone},
        {{{"FKAppealId", 9}}, "The selected appeal no longer exists." + gone},
        {{{"Name", ""}, {"StartDateTime", Date()}, {"FKFundId", 9}}, "The event name is required."},
    };
    for (const auto& [assigned, message] : cases) {
        SCOPED_TRACE(message);
        const auto event = newGala();
        for (const auto& [name, value] : assigned) put(event, name, value);
        const auto refuse = [&] {
            EXPECT_FALSE(toBool(call(host.store(), "ValidateEvent", event)));
        };
        const Log log = logOf(refuse);
        EXPECT_EQ(log.back(), "ErrorUser: " + message);
        if (log.size() < 2) continue;
        host.failingStatement = 0;
        EXPECT_EQ(logOf(refuse), (Log{log[0], "ErrorUnexpected: the disk is full"}))
            << "what could not be read is not gone";
    }
    EXPECT_EQ(logOf([&] { call(host.store(), "ValidateEvent", Value::nothing()); }),
              (Log{"ErrorUnexpected: The Validate method requires a valid event object"}));
    const auto fine = newGala();
    put(fine, "EndDateTime", get(fine, "StartDateTime"));
    put(fine, "FKFundId", 1);
    EXPECT_TRUE(toBool(call(host.store(), "ValidateEvent", fine)));
}

// The cascade of event 7, gifts unlinked, for SQL Server.
const Log cascade{
    "Lock event 7",
    "BeginTrans",
    "GetAssignments Event 7",
    "DeleteAssignment 77",
    "UPDATE donor_gifts SET FKEventId = 0 WHERE FKEventId = 7",
    "UPDATE donor_gifts SET FKReservationId = 0 FROM donor_gifts INNER JOIN "
    "events_event_reservations ON donor_gifts.FKReservationId = events_event_reservations.Id WHERE "
    "events_event_reservations.FKEventId = 7",
    "DELETE FROM events_event_activities WHERE FKEventId = 7",
    "DELETE FROM events_event_participants_groups WHERE FKEventId = 7",
    "DELETE FROM events_event_participants WHERE FKEventId = 7",
    "DELETE events_event_reservations_activities FROM events_event_reservations_activities LEFT "
    "JOIN events_event_reservations ON events_event_reservations_activities.FKReservationId = "
    "events_event_reservations.Id WHERE events_event_reservations.FKEventId = 7",
    "DELETE FROM events_event_reservations WHERE FKEventId = 7",
    "DELETE FROM events_event_expenses WHERE FKEventId = 7",
    "DELETE FROM events_event_tasks WHERE FKEventId = 7",
    "DELETE FROM events_event_info WHERE Id = 7",
    "ForceUpdate",
    "CommitTrans",
    "Unlock event 7"};

TEST_F(Store, DeletesAnEventWithItsChildrenInOneTransaction)
{
    const auto erase = [&](bool gifts) {
        return logOf([&] { EXPECT_TRUE(toBool(call(host.store(), "DeleteEvent", 7, gifts))); });
    };
    EXPECT_EQ(erase(false), cascade);
    host.documentType = 2;
    Log jet = cascade;
    jet[5] = "UPDATE donor_gifts INNER JOIN events_event_reservations ON "
             "donor_gifts.FKReservationId = events_event_reservations.Id SET FKReservationId = 0 "
             "WHERE events_event_reservations.FKEventId = 7";
    jet[9] = "DELETE DISTINCTROW events_event_reservations_activities.* FROM "
             "events_event_reservations_activities LEFT JOIN events_event_reservations ON "
             "events_event_reservations_activities.FKReservationId = events_event_reservations.Id "
             "WHERE events_event_reservations.FKEventId = 7";
    EXPECT_EQ(erase(false), jet);
    host.answer("WHERE FKEventId= 7", {{"DonorId", "Id"}, {{9, 101}, {9, 102}}});
    host.answer("events_event_reservations.FKEventId= 7", {{"Id"}, {{102}, {103}}});
    Log deleting(jet.begin(), jet.begin() + 4);
    const Log gifts{
        "SELECT Id FROM donor_gifts WHERE FKEventId= 7", "Donation.Delete 101",
        "Donation.Delete 102",
        "SELECT donor_gifts.Id FROM donor_gifts INNER JOIN events_event_reservations ON "
        "donor_gifts.FKReservationId = events_event_reservations.Id WHERE "
        "donor_gifts.FKReservationId <> 0 AND events_event_reservations.FKEventId= 7",
        "Donation.Delete 103"};
    deleting.insert(deleting.end(), gifts.begin(), gifts.end());
    deleting.insert(deleting.end(), jet.begin() + 6, jet.end());
    EXPECT_EQ(erase(true), deleting);
}

TEST_F(Store, RollsAFailedDeletionBackWhereverItFails)
{
    const std::size_t statements = 12; // with the clean-up of assignments
    for (std::size_t failing = 0; failing < statements; ++failing) {
        SCOPED_TRACE(failing);
        host.failingStatement = failing;
        const Log log =
            logOf([&] { EXPECT_FALSE(toBool(call(host.store(), "DeleteEvent", 7, false))); });
        EXPECT_FALSE(host.failingStatement) << "every statement was made to fail once";
        ASSERT_GE(log.size(), 3U);
        EXPECT_EQ(Log(log.end() - 3, log.end()),
                  (Log{"RollbackTrans", "Unlock event 7", "ErrorUnexpected: the disk is full"}));
        EXPECT_EQ(std::count(log.begin(), log.end(), "CommitTrans"), 0);
    }
    EXPECT_EQ(logOf([&] { call(host.store(), "DeleteEvent", 7, false); }), cascade);
}

TEST_F(Store, LeavesATransactionAloneThatItDidNotBegin)
{
    host.transactionOpen = true;
    Log log = logOf([&] { EXPECT_TRUE(toBool(call(host.store(), "DeleteEvent", 7, false))); });
    EXPECT_EQ(std::count(log.begin(), log.end(), "CommitTrans"), 0);
    host.failingStatement = 3;
    log = logOf([&] { EXPECT_FALSE(toBool(call(host.store(), "DeleteEvent", 7, false))); });
    EXPECT_EQ(std::count(log.begin(), log.end(), "RollbackTrans"), 0);
}

TEST_F(Store, RefusesToDeleteWithoutRightIdOrLock)
{
    const auto erase = [&](std::int32_t id) {
        return logOf([&] { EXPECT_FALSE(toBool(call(host.store(), "DeleteEvent", id, false))); });
    };
    EXPECT_EQ(erase(0),
              (Log{"ErrorUnexpected: Could not delete event because event id is not valid "
                   "(eventid=0)"}));
    host.lockHeldByAnother = true;
    EXPECT_EQ(erase(7), (Log{"Lock refused event 7"}));
    host.deniedRights = {"events/delete"};
    EXPECT_EQ(erase(7), (Log{"MsgBox: Based on your current security settings, you are not "
                             "authorized to delete an event.  Contact your database administrator "
                             "| Not Authorized To Delete Event"}));
}

TEST_F(Store, JudgesActionsByWhetherTheEventExists)
{
    host.answer("WHERE Id = <2:12>", galaRow());
    struct {
        std::int32_t id, action;
        bool valid;
        const char* message;
    } const cases[] = {
        {12, 2, true, ""},
        {12, 10, true, ""},
        {0, 1, true, ""},
        {12, 1, false,
         "The request to Create the event is no longer valid.</br></br>The event already exists."},
        {99, 3, false,
         "The request to View the event is no longer valid.</br></br>The event no longer exists."},
        {99, 4, false,
         "The request to Delete the event is no longer valid.</br></br>The event no longer "
         "exists."},
        {0, 2, false,
         "The request to Edit the event is no longer valid.</br></br>The event no longer exists."},
        {99, 1, true, ""},
    };
    for (const auto& [id, action, valid, message] : cases) {
        SCOPED_TRACE(std::to_string(id) + " " + std::to_string(action));
        Value arguments[] = {Value(id), Value(action), Value("no reason"), Value("no record")};
        EXPECT_EQ(
            toBool(invokeNamed(host.store(), "IsValidEventAction", CallKind::method, arguments)),
            valid);
        EXPECT_EQ(toText(arguments[2]), valid ? "no reason" : message);
        if (valid) {
            EXPECT_EQ(toBool(get(toObject(arguments[3]), "IsNew")), action == 1);
        } else {
            EXPECT_EQ(toText(arguments[3]), "no record");
        }
    }
    for (const std::int32_t action : {0, 5, 9, 11, -1}) {
        EXPECT_EQ(logOf([&] {
                      EXPECT_FALSE(toBool(call(host.store(), "IsValidEventAction", 12, action)));
                  }),
                  (Log{"ErrorUnexpected: A valid event action must be provided."}));
    }
    EXPECT_TRUE(logOf([&] { call(host.store(), "IsValidEventAction", 0, 1); }).empty());
}

} // namespace
} // namespace qmevents
