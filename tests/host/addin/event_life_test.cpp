// Events through the whole: object model, statements, dialect, database.
#include <thread>

#include "tests/host/addin/whole_host.h"

namespace refhost {
namespace {

using qmevents::Currency;
using qmevents::Date;
using qmevents::toInt32;
using qmevents::toText;

std::int32_t saveNew(const WholeHost& host, const std::string& name,
                     Date start = Date::of(2026, 12, 1, 18))
{
    const auto event = toObject(call(host.store(), "GetNewEvent"));
    put(event, "Name", name);
    put(event, "StartDateTime", start);
    EXPECT_TRUE(qmevents::toBool(call(host.store(), "UpdateEvent", event)));
    return toInt32(get(event, "Id"));
}

Ref<Object> load(const WholeHost& host, std::int32_t id)
{
    return toObject(call(host.store(), "GetEvent", id));
}

std::string namesFound(const WholeHost& host, const std::string& words)
{
    const auto criteria = toObject(call(host.store(), "GetNewEventsCriteria"));
    put(criteria, "SearchString", words);
    put(criteria, "CustomOrderBy", "Name");
    const auto events = toObject(call(host.store(), "GetEventsBySearch", criteria));
    std::string names;
    Value event;
    for (const auto walk = events->enumerate(); walk->next(event);) {
        names += toText(get(event.object(), "Name")) + ";";
    }
    return names;
}

class EventLife : public InBothDialects {
protected:
    WholeHost host{GetParam()};
};
INSTANTIATE_TEST_SUITE_P(Both, EventLife, ::testing::Values(Dialect::sqlServer, Dialect::jet),
                         testNameOf);

TEST_P(EventLife, KeepsEveryValueThatIsSaved)
{
    // Jet takes statements of less than 64,000 characters only.
    const std::size_t length = GetParam() == Dialect::jet ? 50000 : 100000;
    std::string longText;
    while (longText.size() < length) longText += "Tisch \xF0\x9F\x8E\x89 ";
    const std::pair<const char*, Value> values[] = {
        {"Name", "O'Neill's \"50%\" [Gala] {x} -- ; #1# \xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D"},
        {"Description", longText},
        {"Notes", "line one\r\nline two\n\ttabbed ]]> </field> \xF0\x9F\x8E\x89 N'x' \\"},
        {"StartDateTime", Date::of(2026, 12, 1, 18, 30, 59)},
        {"EndDateTime", Date::of(9999, 12, 31, 23, 59, 59)},
        {"RSVPDateTime", Date()},
        {"MaxCapacity", 2147483647},
        {"MinCapacity", -5},
        {"RevenueGoal", Currency::fromDouble(123456789.0125)},
        {"FKFundId", 0},
        {"FKCoordinatorId", 0}};
    const auto event = toObject(call(host.store(), "GetNewEvent"));
    for (const auto& [name, value] : values) put(event, name, value);
    ASSERT_TRUE(qmevents::toBool(call(host.store(), "UpdateEvent", event, false)));
    for (int round = 0; round < 2; ++round) { // as inserted, and as rewritten
        const auto read = load(host, toInt32(get(event, "Id")));
        for (const auto& [name, value] : values) {
            EXPECT_EQ(toText(get(read, name)), toText(value)) << name << round;
        }
        EXPECT_EQ(toText(get(read, "CreateDate")), "11/21/2026 12:00:00 PM");
        ASSERT_TRUE(qmevents::toBool(call(host.store(), "UpdateEvent", read, false)));
    }
    EXPECT_EQ(host.frontEnd.seen, (std::vector<std::string>{"refresh", "refresh", "refresh"}));
}

TEST_P(EventLife, RefusesWhatTheDatabaseCannotHoldAndLosesNothing)
{
    const auto event = toObject(call(host.store(), "GetNewEvent"));
    put(event, "StartDateTime", Date::of(2026, 12, 1));
    const std::string tooLong(GetParam() == Dialect::jet ? 70000 : 300, 'x');
    for (const std::string& name : {tooLong, std::string("nul \0 inside", 12)}) {
        put(event, "Name", name);
        host.frontEnd.seen.clear();
        EXPECT_FALSE(qmevents::toBool(call(host.store(), "UpdateEvent", event)));
        ASSERT_EQ(host.frontEnd.seen.size(), 1U);
        EXPECT_TRUE(host.frontEnd.seen[0].starts_with("unexpected error "));
        EXPECT_EQ(toText(get(event, "Name")), name);
        EXPECT_TRUE(qmevents::toBool(get(event, "IsNew")));
    }
    EXPECT_EQ(host.cell("SELECT COUNT(*) FROM events_event_info"), "0");
    put(event, "Name", "short enough");
    EXPECT_TRUE(qmevents::toBool(call(host.store(), "UpdateEvent", event)));
}

TEST_P(EventLife, FindsWordsInOrderWithoutCase)
{
    for (const char* name :
         {"Spring Gala", "Gala in Spring", "GALA of spring lights", "100% Auction", "Golf [day]"}) {
        saveNew(host, name);
    }
    EXPECT_EQ(namesFound(host, "gala spring"), "Gala in Spring;GALA of spring lights;");
    EXPECT_EQ(namesFound(host, "SPRING"), "Gala in Spring;GALA of spring lights;Spring Gala;");
    EXPECT_EQ(namesFound(host, "[%]"), "100% Auction;");
    EXPECT_EQ(namesFound(host, "[[]day"), "Golf [day];");
    EXPECT_EQ(namesFound(host, "x' OR '1'='1"), "");
}

TEST_P(EventLife, DeletesAllThatBelongsToAnEventOrNothing)
{
    const std::int32_t id = saveNew(host, "Gala");
    const std::int32_t other = saveNew(host, "Other");
    const std::string yes = GetParam() == Dialect::sqlServer ? "1" : "True";
    for (const std::int32_t event : {id, other}) {
        const std::string e = std::to_string(event);
        const std::string rows[] = {
            "INSERT INTO events_event_activities (FKEventId, Name, Sponsorship) VALUES (" + e +
                ", 'Seat', " + yes + ")",
            "INSERT INTO events_event_participants (FKEventId, FKDonorId, Status) VALUES (" + e +
                ", 1, 2)",
            "INSERT INTO events_event_participants_groups (FKEventId, FKDonorId, "
            "FKInvitationGroupId) VALUES (" +
                e + ", 1, 1)",
            "INSERT INTO events_event_reservations (FKEventId, FKDonorId) VALUES (" + e + ", 1)",
            "INSERT INTO events_event_expenses (FKEventId, Description) VALUES (" + e + ", 'Band')",
            "INSERT INTO events_event_tasks (FKEventId, Name) VALUES (" + e + ", 'Call')",
            "INSERT INTO donor_gifts (donorId, FKEventId, deleted) VALUES (1, " + e + ", 0)"};
        for (const auto& row : rows) host.execute(row);
        host.execute("INSERT INTO events_event_reservations_activities (FKReservationId, "
                     "FKActivityId, Quantity, Price) "
                     "SELECT MAX(Id), 1, 2, 30 FROM events_event_reservations");
        host.execute("INSERT INTO donor_gifts (donorId, FKReservationId, deleted) SELECT 1, "
                     "MAX(Id), 0 FROM events_event_reservations");
    }
    const auto counts = [&] {
        std::string all;
        for (const char* table :
             {"events_event_info", "events_event_activities", "events_event_participants",
              "events_event_participants_groups", "events_event_reservations",
              "events_event_reservations_activities", "events_event_expenses",
              "events_event_tasks"}) {
            all += host.cell(std::string("SELECT COUNT(*) FROM ") + table) + " ";
        }
        return all + "linked " +
               host.cell("SELECT COUNT(*) FROM donor_gifts WHERE FKEventId <> 0 OR FKReservationId "
                         "<> 0") +
               " deleted " + host.cell("SELECT COUNT(*) FROM donor_gifts WHERE deleted <> 0");
    };
    ASSERT_EQ(counts(), "2 2 2 2 2 2 2 2 linked 4 deleted 0");

    // Each statement fails in turn: everything is rolled back, the user is told, the lock is free.
    const auto deletesAllOrNothing = [&](std::int32_t event, bool withGifts) {
        const std::string before = counts();
        for (int failing = 0;; ++failing) {
            SCOPED_TRACE(failing);
            int left = failing;
            host.session->sql().beforeStatement = [&](std::string_view) {
                if (left-- == 0) throw qmevents::Error(3000, "Document", "the disk is full");
            };
            host.frontEnd.seen.clear();
            const bool deleted =
                qmevents::toBool(call(host.store(), "DeleteEvent", event, withGifts));
            host.session->sql().beforeStatement = nullptr;
            if (deleted) return failing;
            EXPECT_EQ(host.frontEnd.seen,
                      (std::vector<std::string>{"unexpected error the disk is full|"}));
            EXPECT_EQ(counts(), before);
        }
    };
    EXPECT_GE(deletesAllOrNothing(id, false), 10);
    EXPECT_EQ(counts(), "1 1 1 1 1 1 1 1 linked 2 deleted 0");
    EXPECT_TRUE(call(host.store(), "GetEvent", id).isNothing());
    EXPECT_GE(deletesAllOrNothing(other, true), 16);
    EXPECT_EQ(counts(), "0 0 0 0 0 0 0 0 linked 2 deleted 2");
}

TEST_P(EventLife, TellsTheSecondUserWhoHoldsTheEvent)
{
    const std::int32_t id = saveNew(host, "Gala");
    const Value held = call(host.document(), "GetLock", "event", id);
    std::thread([&] {
        const qmevents::PinnedClock clock(Date::of(2026, 11, 21, 12));
        WholeHost second(GetParam(), host.database, "bert");
        const auto event = load(second, id);
        put(event, "Name", "Typed by Bert");
        EXPECT_FALSE(qmevents::toBool(call(second.store(), "UpdateEvent", event)));
        EXPECT_FALSE(qmevents::toBool(call(second.store(), "DeleteEvent", id, false)));
        call(second.commands(), "EditEvent", id);
        ASSERT_EQ(second.frontEnd.seen.size(), 3U);
        for (const auto& message : second.frontEnd.seen) {
            EXPECT_NE(message.find("anna"), std::string::npos) << message;
            EXPECT_NE(message.find("Record In Use"), std::string::npos) << message;
        }
        EXPECT_EQ(toText(get(event, "Name")), "Typed by Bert");
    }).join();
    EXPECT_EQ(toText(get(load(host, id), "Name")), "Gala");
}

TEST_P(EventLife, ClearsAStatusFromTheEventsThatHadIt)
{
    const auto statuses = toObject(call(host.lists(), "GetEventStatuses", true));
    const auto status = toObject(get(statuses, "Item", 1));
    const auto event = load(host, saveNew(host, "Gala"));
    put(event, "FKStatusId", get(status, "Id"));
    ASSERT_TRUE(qmevents::toBool(call(host.store(), "UpdateEvent", event)));
    call(host.lists(), "DeleteEventStatus", status);
    EXPECT_EQ(toText(get(load(host, toInt32(get(event, "Id"))), "FKStatusId")), "0");
    host.frontEnd.seen.clear();
    EXPECT_FALSE(qmevents::toBool(call(host.store(), "UpdateEvent", event)));
    EXPECT_EQ(
        host.frontEnd.seen[0],
        "user error The selected event status no longer exists.\r\nIt may have been deleted by "
        "another user.|");
}

TEST_P(EventLife, KeepsAListItemsNameWithItsQuotes)
{
    const auto location = toObject(call(host.lists(), "GetNewItem", "eventlocation"));
    put(location, "Name", "Giulia's \"Hall\"");
    put(location, "Visible", false);
    ASSERT_TRUE(qmevents::toBool(call(host.lists(), "UpdateEventLocation", location)));
    EXPECT_EQ(toInt32(get(toObject(call(host.lists(), "GetEventLocations", false)), "Count")), 0);
    const auto all = toObject(call(host.lists(), "GetEventLocations", true));
    EXPECT_EQ(toText(call(all, "ToString")), "Giulia's \"Hall\"");
}

} // namespace
} // namespace refhost
