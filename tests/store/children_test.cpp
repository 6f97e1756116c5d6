#include <gtest/gtest.h>

#include "tests/support/scripted_host.h"

namespace qmevents {
namespace {

using testing::Log;
using testing::Rows;
using testing::ScriptedHost;

const Value none = Missing{};
const Value null = Null{};
const std::vector<std::string> audit{"CreateUser", "CreateDate", "LastUpdateUser",
                                     "LastUpdateDate"};

std::vector<std::string> withAudit(std::vector<std::string> columns)
{
    columns.insert(columns.end(), audit.begin(), audit.end());
    return columns;
}

// Rows whose audit columns are null.
Rows rowsOf(const std::vector<std::string>& columns, std::vector<std::vector<Value>> rows)
{
    for (auto& row : rows) row.insert(row.end(), audit.size(), null);
    return {withAudit(columns), std::move(rows)};
}

class Children : public ::testing::Test {
protected:
    template <typename... A>
    Value ask(const char* operation, A... arguments)
    {
        return call(host.store(), operation, arguments...);
    }
    template <typename... A>
    Ref<Object> read(const char* operation, A... arguments)
    {
        return toObject(ask(operation, arguments...));
    }
    static Ref<Object> itemByKey(const Ref<Object>& records, std::int32_t key)
    {
        return toObject(call(records, "ItemByKey", key));
    }
    static Ref<Object> item(const Ref<Object>& records, std::int32_t position)
    {
        return toObject(get(records, "Item", position));
    }
    static std::int32_t count(const Ref<Object>& records) { return toInt32(get(records, "Count")); }
    static std::string listed(const Ref<Object>& records, const char* separator)
    {
        return toText(call(records, "ToString", separator));
    }

    ScriptedHost host;
};

struct Read {
    const char* operation;
    std::vector<Value> arguments;
    const char* statement;
};

// The statements that are written once for both databases.
const Read reads[] = {
    {"GetEventActivities",
     {5},
     "SELECT * FROM events_event_activities WHERE FKEventId=<2:5> ORDER BY Name "},
    {"GetEventActivity", {8}, "SELECT * FROM events_event_activities eea WHERE eea.Id = <3:8>"},
    {"GetEventExpenses",
     {5},
     "SELECT * FROM events_event_expenses WHERE FKEventId=<2:5> ORDER BY expensedate DESC"},
    {"GetEventExpense", {8}, "SELECT * FROM events_event_expenses eee WHERE eee.Id = <3:8>"},
    {"GetEventTasks",
     {5},
     "SELECT * FROM events_event_tasks WHERE FKEventId=<2:5> ORDER BY duedatetime DESC"},
    {"GetEventTask", {8}, "SELECT * FROM events_event_tasks eet WHERE eet.Id = <3:8>"},
    {"GetEventsTasksByDate",
     {"duedatetime < #2026-12-01#"},
     "SELECT tasks.*, events.Name as EventName FROM ((events_event_tasks AS tasks INNER JOIN "
     "events_event_info AS events ON tasks.FKEventId = Events.Id) INNER JOIN donor_list_assignedto "
     "AS dlassignedto ON tasks.FKAssignedToId = dlassignedto.Id) WHERE Completed = 0 AND "
     "dlassignedto.FKuserId = <3:5> AND duedatetime < #2026-12-01# ORDER BY duedatetime ASC"},
    {"GetEventsTasksByDate",
     {""},
     "SELECT tasks.*, events.Name as EventName FROM ((events_event_tasks AS tasks INNER JOIN "
     "events_event_info AS events ON tasks.FKEventId = Events.Id) INNER JOIN donor_list_assignedto "
     "AS dlassignedto ON tasks.FKAssignedToId = dlassignedto.Id) WHERE Completed = 0 AND "
     "dlassignedto.FKuserId = <3:5> ORDER BY duedatetime ASC"},
    {"GetEventParticipants",
     {5, none},
     "SELECT eep.*, dd.display, eligg.Name As InvitationGroupName FROM "
     "(((events_event_participants eep INNER JOIN donor_donors dd ON eep.FKDonorId = dd.id) LEFT "
     "JOIN events_event_participants_groups eepg ON (eep.FKDonorId = eepg.FKDonorId) AND "
     "(eep.FKEventId = eepg.FKEventId)) LEFT JOIN events_list_eventinvitationgroups eligg ON "
     "eepg.FKInvitationGroupId = eligg.Id) WHERE eep.FKEventId=<2:5> ORDER BY eep.Id, "
     "eepg.FKInvitationGroupId"},
    {"GetEventParticipants",
     {none, 9},
     "SELECT eep.*, dd.display FROM events_event_participants eep LEFT JOIN donor_donors dd ON "
     "eep.FKDonorId = dd.id WHERE eep.FKDonorId=<2:9>"},
    {"GetEventParticipant",
     {8, none, none},
     "SELECT * FROM events_event_participants eep WHERE eep.Id = <3:8>"},
    {"GetEventParticipant",
     {none, 5, 9},
     "SELECT * FROM events_event_participants eep WHERE eep.FKEventId = <2:5> AND eep.FKDonorId = "
     "<2:9>"},
    {"GetEventParticipantInvitationGroups",
     {5, none},
     "SELECT eepg.FKEventId, eepg.FKDonorId, eepg.FKInvitationGroupId, el.Name FROM "
     "(events_event_participants_groups eepg INNER JOIN events_event_participants eep ON "
     "(eepg.FKDonorId = eep.FKDonorId) AND (eepg.FKEventId = eep.FKEventId)) INNER JOIN "
     "events_list_eventinvitationgroups el ON eepg.FKInvitationGroupId = el.Id WHERE "
     "eepg.FKEventId = <2:5> ORDER BY el.[Order]"},
    {"GetEventParticipantInvitationGroups",
     {5, 9},
     "SELECT eepg.FKEventId, eepg.FKDonorId, eepg.FKInvitationGroupId, el.Name FROM "
     "(events_event_participants_groups eepg INNER JOIN events_event_participants eep ON "
     "(eepg.FKDonorId = eep.FKDonorId) AND (eepg.FKEventId = eep.FKEventId)) INNER JOIN "
     "events_list_eventinvitationgroups el ON eepg.FKInvitationGroupId = el.Id WHERE "
     "eepg.FKEventId = <2:5> AND eepg.FKDonorId = <2:9> ORDER BY el.[Order]"},
    {"GetEventReservations",
     {5, none, none},
     "SELECT events_event_reservations.*, events_event_info.Name As EventName, "
     "events_event_info.FKStatusId As EventFKStatusId FROM events_event_reservations LEFT JOIN "
     "events_event_info ON events_event_reservations.FKEventId = events_event_info.Id WHERE "
     "FKEventId=<2:5> ORDER BY ReservationDate DESC"},
    {"GetEventReservations",
     {none, 9, "AmountPaid"},
     "SELECT events_event_reservations.*, events_event_info.Name As EventName, "
     "events_event_info.FKStatusId As EventFKStatusId FROM events_event_reservations LEFT JOIN "
     "events_event_info ON events_event_reservations.FKEventId = events_event_info.Id WHERE "
     "FKDonorId=<2:9> ORDER BY AmountPaid"},
    {"GetEventReservation",
     {8},
     "SELECT * FROM events_event_reservations eer WHERE eer.Id = <3:8>"},
    {"GetEventReservationActivities",
     {7, none},
     "SELECT * FROM events_event_reservations_activities WHERE FKReservationId=<2:7>"},
    {"GetEventReservationActivities",
     {none, 5},
     "SELECT eera.*, eer.FKDonorId, eea.Sponsorship As ActivitySponsorship FROM "
     "(((events_event_reservations_activities eera INNER JOIN events_event_reservations eer ON "
     "eera.FKReservationId = eer.id) INNER JOIN events_event_activities eea ON eera.FKActivityID = "
     "eea.Id) LEFT JOIN donor_donors dd ON eer.FKDonorId = dd.Id) WHERE eer.FKEventId=<2:5>"},
    {"GetEventReservationActivity",
     {8},
     "SELECT * FROM events_event_reservations_activities WHERE Id=<3:8>"},
    {"GetEventActivityReservations",
     {3, "DonorName"},
     "SELECT eera.*, eer.FKDonorId, dd.Id As DonorIdCheck, dd.Display As DonorName FROM "
     "((events_event_reservations_activities eera INNER JOIN events_event_reservations eer ON "
     "eera.FKReservationId = eer.id) LEFT JOIN donor_donors dd ON eer.FKDonorId = dd.Id) WHERE "
     "FKActivityId=<2:3> ORDER BY DonorName"},
    {"GetEventSponsorships",
     {5},
     "SELECT eera.*, eer.FKDonorId, dd.Id As DonorIdCheck, dd.Display As DonorName, eea.Name As "
     "ActivityName FROM (((events_event_reservations_activities eera INNER JOIN "
     "events_event_reservations eer ON eera.FKReservationId = eer.id) INNER JOIN "
     "events_event_activities eea ON eera.FKActivityID = eea.Id) LEFT JOIN donor_donors dd ON "
     "eer.FKDonorId = dd.Id) WHERE eer.FKEventId=<2:5> AND eea.Sponsorship <> 0 ORDER BY "
     "dd.Display, eea.Name"},
};

TEST_F(Children, AreReadWithTheSameTextFromBothDatabases)
{
    for (const auto& [operation, arguments, statement] : reads) {
        SCOPED_TRACE(statement);
        for (const std::int32_t type : {1, 0}) {
            host.documentType = type;
            auto given = arguments;
            const Value result =
                invokeNamed(host.store(), operation, CallKind::method, std::span<Value>(given));
            EXPECT_EQ(host.takeLog(), Log{statement});
            if (!result.isNothing()) { EXPECT_EQ(toInt32(get(toObject(result), "Count")), 0); }
        }
    }
}

TEST_F(Children, ReservationsWithLinesComeAsTheHostsOwnRecordSet)
{
    const struct {
        std::int32_t documentType;
        const char *payments, *sum;
    } dialects[] = {
        {1,
         "eer.AmountPaid As ReservationAmountPaid, "
         "IsNull(ReservationPayments.DonationPaymentsAmount,0) As ReservationPayments, eera.Id",
         "(SELECT eer.Id, IsNull(SUM(actualAmount),0) As DonationPaymentsAmount FROM"},
        {2,
         "eer.AmountPaid As ReservationAmountPaid, "
         "IIf(IsNull(ReservationPayments.DonationPaymentsAmount),0,"
         "ReservationPayments.DonationPaymentsAmount) As ReservationPayments, eera.Id",
         "(SELECT eer.Id, IIf(IsNull(SUM(actualAmount)),0,SUM(actualAmount)) As "
         "DonationPaymentsAmount FROM"}};
    host.answer("ReservationPayments", {{"ReservationId"}, {{7}}});
    for (const auto& [documentType, payments, sum] : dialects) {
        SCOPED_TRACE(documentType);
        host.documentType = documentType;
        const auto rows = toObject(ask("GetEventReservationAndActivitiesRecordSet", 5,
                                       "dd.Display, eer.Id", "eera.FKActivityId = 3"));
        ASSERT_TRUE(rows);
        EXPECT_FALSE(toBool(get(rows, "EOF"))) << "it is handed over unread";
        const std::string statement = host.takeLog().at(0);
        EXPECT_NE(statement.find(payments), std::string::npos) << statement;
        EXPECT_NE(statement.find(sum), std::string::npos) << statement;
        EXPECT_TRUE(statement.ends_with("WHERE eer.FKEventId=<2:5> AND eera.FKActivityId = 3 "
                                        "ORDER BY dd.Display, eer.Id"))
            << statement;
        EXPECT_EQ(statement.find("  "), std::string::npos);
    }
}

TEST_F(Children, RowsOfOneParticipantMakeOneWithItsGroupsInRowOrder)
{
    const std::vector<std::string> columns{
        "Id",    "FKEventId", "FKDonorId", "Status",
        "Notes", "Attended",  "display",   "InvitationGroupName"};
    host.answer("InvitationGroupName",
                rowsOf(columns, {
                                    {31, 5, 9, 2, "vegan", true, "Lee, Kim", "Board"},
                                    {31, 5, 9, 2, "vegan", true, "Lee, Kim", "Press"},
                                    {32, 5, 4, null, null, null, null, null},
                                    {33, 5, 6, 1, null, false, "Ode, Ann", "Board"},
                                }));
    const auto participants = read("GetEventParticipants", 5);
    ASSERT_EQ(count(participants), 3);
    const auto first = itemByKey(participants, 31);
    EXPECT_EQ(toText(get(first, "InvitationGroupsString")), "Board, Press");
    EXPECT_EQ(toInt32(get(first, "FKdonorId")), 9);
    EXPECT_EQ(toText(get(first, "StatusText")), "Accepted");
    EXPECT_TRUE(toBool(get(first, "Attended")));
    EXPECT_FALSE(toBool(get(first, "IsDirty")) || toBool(get(first, "IsNew")));
    const auto second = itemByKey(participants, 32);
    EXPECT_EQ(toText(get(second, "InvitationGroupsString")), "");
    EXPECT_EQ(toInt32(get(second, "Status")), 0) << "a null leaves the default";
    host.donors[4] = "Asked, Later";
    EXPECT_EQ(listed(participants, "; "), "Lee, Kim; Asked, Later; Ode, Ann");
}

TEST_F(Children, MembershipsTakeTheKeysOfTheirCollectionAndArePartOfTheParticipant)
{
    host.answer("eepg.FKDonorId = <2:9>",
                {{"FKEventId", "FKDonorId", "FKInvitationGroupId", "Name"},
                 {{5, 9, 70, "Board"}, {5, 9, 71, "Press"}}});
    const auto participant = read("GetNewEventParticipant", 5, 9);
    EXPECT_FALSE(toBool(get(participant, "InvitationGroupsLoaded")));
    call(participant, "AddInvitationGroup", 72, "Crew");
    host.log.clear();
    const auto groups = getObject(participant, "InvitationGroups");
    EXPECT_EQ(host.log, Log{}) << "they are kept";
    EXPECT_EQ(listed(groups, ", "), "Board, Press, Crew");
    EXPECT_TRUE(toBool(call(groups, "Contains", 71)));
    EXPECT_FALSE(toBool(call(groups, "Contains", 73)));
    call(groups, "RemoveByKey", get(item(groups, 2), "Id"), false);
    EXPECT_EQ(listed(groups, ", "), "Board, Crew");
    EXPECT_EQ(get(groups, "SortedItems").array()->items.size(), 2U);
}

const std::vector<std::string> lineColumns{"Id",    "FKReservationId", "FKActivityId",   "Quantity",
                                           "Price", "Notes",           "ReservationInfo"};

std::vector<Value> line(std::int32_t id, std::int32_t reservation, std::int32_t activity,
                        std::int32_t quantity, std::int32_t price)
{
    return {id, reservation, activity, quantity, Currency::fromUnits(price), null, null};
}

Rows linesOf(std::vector<std::vector<Value>> rows) { return rowsOf(lineColumns, std::move(rows)); }

// The same with the cells of joined columns behind.
Rows joined(Rows rows, const std::vector<std::string>& columns, const std::vector<Value>& cells)
{
    rows.columns.insert(rows.columns.end(), columns.begin(), columns.end());
    for (auto& row : rows.rows) row.insert(row.end(), cells.begin(), cells.end());
    return rows;
}

TEST_F(Children, LinesBringWhatTheirQueryJoined)
{
    host.answer("FKActivityId=<2:3>",
                joined(linesOf({line(1, 7, 3, 2, 100)}), {"FKDonorId", "DonorIdCheck", "DonorName"},
                       {9, null, null}));
    host.answer("As ActivitySponsorship", joined(linesOf({line(1, 7, 3, 2, 100)}),
                                                 {"FKDonorId", "ActivitySponsorship"}, {9, true}));
    const auto orphans = read("GetEventActivityReservations", 3);
    const auto orphan = item(orphans, 1);
    EXPECT_EQ(toInt32(get(orphan, "FKdonorId")), 9);
    EXPECT_FALSE(toBool(get(orphan, "DonorExists"))) << "the host has no such donor any more";

    const auto byEvent = read("GetEventReservationActivities", 0, 5);
    EXPECT_EQ(toCurrency(get(byEvent, "TotalSponsorship")), Currency::fromUnits(200));
    EXPECT_EQ(host.log.size(), 2U) << "no line asked for its activity";
}

TEST_F(Children, LinesOfAReservationAskForTheirActivityOnce)
{
    host.answer("FKReservationId=<2:7>", linesOf({line(1, 7, 3, 2, 100), line(2, 7, 4, 1, 50)}));
    std::vector<Value> table(13, null);
    table[0] = 4;
    table[2] = "Table";
    table[7] = true;
    host.answer("eea.Id = <3:4>",
                rowsOf({"Id", "FKEventId", "Name", "Description", "ListPrice", "Cost",
                        "QuantityAvailable", "Sponsorship", "ReservationInfo", "QuantityType",
                        "FKFundId", "FKCampaignId", "FKAppealId"},
                       {table}));
    const auto lines = read("GetEventReservationActivities", 7);
    host.failingStatement = 1;
    EXPECT_THROW(get(lines, "TotalSponsorship"), Error) << "unknown is not zero";
    host.log.clear();
    EXPECT_EQ(toCurrency(get(lines, "TotalExpected")), Currency::fromUnits(250));
    EXPECT_EQ(toCurrency(get(lines, "TotalSponsorship")), Currency::fromUnits(50));
    EXPECT_EQ(listed(lines, ", "), ", Table") << "activity 3 is gone";
    EXPECT_EQ(host.log.size(), 1U) << "only what could not be read is asked for again";
}

TEST_F(Children, TotalsOfReservationsReadAllLinesAtOnceAndLoseNone)
{
    const auto reservations = [](std::vector<std::vector<Value>> rows) {
        return rowsOf({"Id", "FKEventId", "FKDonorId", "ReservationDate", "Description",
                       "AmountPaid", "EventName", "EventFKStatusId"},
                      std::move(rows));
    };
    const auto row = [](std::int32_t id, std::int32_t event) {
        return std::vector<Value>{id, event, 9, null, null, null, null, null};
    };
    host.answer("WHERE FKEventId=<2:5>", reservations({row(7, 5), row(8, 5), row(10, 5)}));
    host.answer("eer.Id = <3:9>", reservations({row(9, 6)}));
    auto known = joined(linesOf({line(1, 7, 3, 2, 100), line(2, 8, 3, 1, 100)}),
                        {"ActivityName", "ActivitySponsorship"}, {"Table", true});
    known.rows.push_back(joined(linesOf({line(3, 8, 99, 1, 30)}), {"", ""}, {null, null}).rows[0]);
    host.answer("eer.FKEventId=<2:5>", known);
    host.answer("FKReservationId=<2:9>", linesOf({line(4, 9, 4, 1, 7)}));
    const auto all = read("GetEventReservations", 5);
    call(all, "Add", read("GetEventReservation", 9), 9);
    host.log.clear();

    EXPECT_EQ(toCurrency(get(all, "TotalExpected")), Currency::fromUnits(337));
    EXPECT_EQ(host.takeLog(),
              (Log{"SELECT eera.*, eea.Name As ActivityName, eea.Sponsorship As "
                   "ActivitySponsorship FROM ((events_event_reservations_activities eera INNER "
                   "JOIN events_event_reservations eer ON eera.FKReservationId = eer.id) LEFT JOIN "
                   "events_event_activities eea ON eera.FKActivityId = eea.Id) WHERE "
                   "eer.FKEventId=<2:5>",
                   "SELECT * FROM events_event_reservations_activities WHERE "
                   "FKReservationId=<2:9>"}))
        << "a reservation of another event is asked for its own";
    EXPECT_EQ(toInt32(get(all, "TotalActivities")), 3);
    EXPECT_EQ(count(getObject(item(all, 3), "Activities")), 0);
    const auto lines = getObject(item(all, 2), "Activities");
    EXPECT_EQ(listed(lines, ", "), "Table, ") << "activity 99 is gone";
    EXPECT_TRUE(toBool(get(item(lines, 1), "Sponsorship")));
    EXPECT_TRUE(host.log.empty());
    put(item(lines, 1), "FKActivityId", 4);
    EXPECT_FALSE(toBool(get(item(lines, 1), "Sponsorship"))) << "which is another activity";
    EXPECT_EQ(toCurrency(get(all, "TotalSponsorship")), Currency::fromUnits(200));
}

TEST_F(Children, QuantityInUseLeavesOutTheLineOrElseTheReservationNamed)
{
    host.answer(
        "FKActivityId=<2:0>",
        joined(linesOf({line(1, 7, 0, 2, 100), line(2, 7, 0, 3, 100), line(3, 8, 0, 5, 100)}),
               {"FKDonorId", "DonorIdCheck", "DonorName"}, {9, 9, "Lee, Kim"}));
    const auto activity = toObject(ask("GetNewEventActivity", 5));
    const struct {
        Value line, reservation;
        std::int32_t units;
    } cases[] = {{none, none, 10}, {2, none, 7}, {2, 7, 7},
                 {none, 7, 5},     {0, 7, 10},   {99, none, 10}};
    for (const auto& [line, reservation, units] : cases) {
        SCOPED_TRACE(::testing::Message() << typeName(line) << " " << typeName(reservation));
        EXPECT_EQ(toInt32(get(activity, "QuantityInUse", line, reservation)), units);
    }
    EXPECT_EQ(host.log.size(), 1U) << "the lines are kept";

    host.failingStatement = 0;
    EXPECT_THROW(get(toObject(ask("GetNewEventActivity", 5)), "QuantityInUse"), Error)
        << "unknown is not zero";
}

TEST_F(Children, AFailureIsReportedAndGivesNothing)
{
    for (const auto& [operation, arguments, statement] : reads) {
        SCOPED_TRACE(statement);
        host.failingStatement = 0;
        auto given = arguments;
        const Value result =
            invokeNamed(host.store(), operation, CallKind::method, std::span<Value>(given));
        EXPECT_TRUE(result.isNothing());
        EXPECT_EQ(host.takeLog(), (Log{statement, "ErrorUnexpected: the disk is full"}));
    }
}

TEST_F(Children, NewOnesKnowTheirEventAndAreClean)
{
    for (const char* maker : {"GetNewEventActivity", "GetNewEventExpense", "GetNewEventTask",
                              "GetNewEventReservation", "GetNewEventParticipant"}) {
        SCOPED_TRACE(maker);
        const auto record = toObject(ask(maker, 5));
        EXPECT_EQ(toInt32(get(record, "FKEventId")), 5);
        EXPECT_TRUE(toBool(get(record, "IsNew")));
        EXPECT_FALSE(toBool(get(record, "IsDirty")));
    }
    EXPECT_TRUE(toBool(get(toObject(ask("GetNewEventReservationActivity")), "IsNew")));
    const auto participant = read("GetNewEventParticipant", 5, 9);
    EXPECT_EQ(toInt32(get(participant, "FKdonorId")), 9);
    EXPECT_FALSE(toBool(get(participant, "IsDirty")));
    EXPECT_EQ(count(read("GetNewEventParticipants")), 0);
}

} // namespace
} // namespace qmevents
