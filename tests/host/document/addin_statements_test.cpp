#include <gtest/gtest.h>

#include <optional>

#include "sql_testing.h"

// Statements as the add-in sends them, on a small database of one event.

namespace refhost::testing {
namespace {

constexpr const char* tables[] = {
    "CREATE TABLE donor_donors (id COUNTER PRIMARY KEY, display TEXT(50))",
    "CREATE TABLE donor_funds (id COUNTER PRIMARY KEY, [value] TEXT(50))",
    "CREATE TABLE donor_gifts (id COUNTER PRIMARY KEY, donorId LONG, created DATETIME, "
    "pledge YESNO, deleted YESNO, FKFund LONG, FKMatch LONG, FKEventId LONG, "
    "FKReservationId LONG)",
    "CREATE TABLE donor_gifts_payments (id COUNTER PRIMARY KEY, giftId LONG, "
    "expectedDate DATETIME, expectedAmount CURRENCY, actualDate DATETIME, actualAmount CURRENCY, "
    "FKFund LONG, FKMatch LONG)",
    "CREATE TABLE events_event_info (Id COUNTER PRIMARY KEY, Name TEXT(255) NOT NULL, "
    "StartDateTime DATETIME, RevenueGoal CURRENCY, FKLocationId LONG, Notes MEMO)",
    "CREATE TABLE events_event_activities (Id COUNTER PRIMARY KEY, FKEventId LONG, "
    "Name TEXT(255), ListPrice CURRENCY, Sponsorship YESNO)",
    "CREATE TABLE events_event_participants (Id COUNTER PRIMARY KEY, FKEventId LONG, "
    "FKDonorId LONG, Status LONG, Attended YESNO)",
    "CREATE TABLE events_event_participants_groups (FKEventId LONG, FKDonorId LONG, "
    "FKInvitationGroupId LONG, PRIMARY KEY (FKEventId, FKDonorId, FKInvitationGroupId))",
    "CREATE TABLE events_list_eventinvitationgroups (Id COUNTER PRIMARY KEY, Name TEXT(50), "
    "Visible YESNO, [Order] LONG)",
    "CREATE TABLE events_event_reservations (Id COUNTER PRIMARY KEY, FKEventId LONG, "
    "FKDonorId LONG, ReservationDate DATETIME, AmountPaid CURRENCY)",
    "CREATE TABLE events_event_reservations_activities (Id COUNTER PRIMARY KEY, "
    "FKReservationId LONG, FKActivityId LONG, Quantity LONG, Price CURRENCY)",
};

// In both dialects but for the literals, which stand as <date 1>, <date 2>, <yes> and <no>.
constexpr const char* records[] = {
    "INSERT INTO donor_donors (display) VALUES ('Ann Lee')",
    "INSERT INTO donor_donors (display) VALUES ('bob O''Day')",
    "INSERT INTO donor_funds ([value]) VALUES ('General')",
    "INSERT INTO events_event_info (Name, StartDateTime, RevenueGoal, FKLocationId, Notes) "
    "VALUES ('Spring Gala', <date 1>, 1000.5, 0, NULL)",
    "INSERT INTO events_event_info (Name, StartDateTime, RevenueGoal, FKLocationId, Notes) "
    "VALUES ('Auction', NULL, 0, 0, NULL)",
    "INSERT INTO events_event_activities (FKEventId, Name, ListPrice, Sponsorship) "
    "VALUES (1, 'Table', 100, <yes>)",
    "INSERT INTO events_event_activities (FKEventId, Name, ListPrice, Sponsorship) "
    "VALUES (1, 'Seat', 15.75, <no>)",
    "INSERT INTO events_event_participants (FKEventId, FKDonorId, Status, Attended) "
    "VALUES (1, 1, 2, <yes>)",
    "INSERT INTO events_event_participants (FKEventId, FKDonorId, Status, Attended) "
    "VALUES (1, 2, 1, <no>)",
    "INSERT INTO events_list_eventinvitationgroups (Name, Visible, [Order]) "
    "VALUES ('Board', <yes>, 2)",
    "INSERT INTO events_list_eventinvitationgroups (Name, Visible, [Order]) "
    "VALUES ('Press', <no>, 1)",
    "INSERT INTO events_event_participants_groups (FKEventId, FKDonorId, FKInvitationGroupId) "
    "VALUES (1, 1, 1)",
    "INSERT INTO events_event_participants_groups (FKEventId, FKDonorId, FKInvitationGroupId) "
    "VALUES (1, 1, 2)",
    "INSERT INTO events_event_reservations (FKEventId, FKDonorId, ReservationDate, AmountPaid) "
    "VALUES (1, 1, <date 1>, 50)",
    "INSERT INTO events_event_reservations_activities (FKReservationId, FKActivityId, Quantity, "
    "Price) VALUES (1, 1, 2, 99.5)",
    "INSERT INTO events_event_reservations_activities (FKReservationId, FKActivityId, Quantity, "
    "Price) VALUES (1, 2, 3, 15.75)",
    "INSERT INTO donor_gifts (donorId, created, pledge, deleted, FKFund, FKMatch, FKEventId, "
    "FKReservationId) VALUES (1, <date 1>, <yes>, <no>, 1, 0, 1, 1)",
    "INSERT INTO donor_gifts_payments (giftId, expectedDate, expectedAmount, actualDate, "
    "actualAmount, FKFund, FKMatch) VALUES (1, <date 1>, 25, <date 1>, 25.5, 0, 0)",
    "INSERT INTO donor_gifts_payments (giftId, expectedDate, expectedAmount, actualDate, "
    "actualAmount, FKFund, FKMatch) VALUES (1, <date 2>, 30, NULL, NULL, 1, 0)",
};

class AddInStatements : public ::testing::TestWithParam<Dialect> {
protected:
    AddInStatements()
    {
        // The tables are the host's; it makes them in one dialect for both.
        const auto database = Database::inMemory();
        SqlSession host(database, Dialect::jet);
        for (const char* const table : tables) host.execute(table);
        session_.emplace(database, GetParam());
        for (const char* const record : records) EXPECT_EQ(use().execute(written(record)), 1);
    }

    SqlSession& use() { return *session_; }

    /// `text` with the literals of the dialect.
    std::string written(std::string text) const
    {
        const bool sql = GetParam() == Dialect::sqlServer;
        const std::pair<std::string, std::string> literals[] = {
            {"<date 1>", sql ? "'2026-03-01T18:30:00'" : "#2026-03-01 18:30:00#"},
            {"<date 2>", sql ? "'2026-04-01T00:00:00'" : "#2026-04-01 00:00:00#"},
            {"<yes>", sql ? "1" : "True"},
            {"<no>", sql ? "0" : "False"},
        };
        for (const auto& [mark, literal] : literals) {
            for (auto at = text.find(mark); at != std::string::npos; at = text.find(mark)) {
                text.replace(at, mark.size(), literal);
            }
        }
        return text;
    }

    std::string pair(const char* sqlServer, const char* jet) const
    {
        return GetParam() == Dialect::sqlServer ? sqlServer : jet;
    }

private:
    std::optional<SqlSession> session_;
};

TEST_P(AddInStatements, ReadEventsAndTheirChildren)
{
    const struct {
        const char *sql, *rows;
    } cases[] = {
        {"SELECT TOP 5  * FROM events_event_info  WHERE Id = 1 AND FKLocationId = 0 AND "
         "Name LIKE '%spring%GALA%'",
         "1|Spring Gala|2026-03-01 18:30:00|1000.5|0|Null"},
        {"SELECT id FROM events_event_info WHERE id=3", ""},
        {"SELECT * FROM events_event_activities WHERE FKEventId=1 ORDER BY Name ",
         "2|1|Seat|15.75|False; 1|1|Table|100|True"},
        {"SELECT eera.*, eer.FKDonorId, dd.Id As DonorIdCheck, dd.Display As DonorName, eea.Name "
         "As ActivityName FROM (((events_event_reservations_activities eera INNER JOIN "
         "events_event_reservations eer ON eera.FKReservationId = eer.id) INNER JOIN "
         "events_event_activities eea ON eera.FKActivityID = eea.Id) LEFT JOIN donor_donors dd "
         "ON eer.FKDonorId = dd.Id) WHERE eer.FKEventId=1 AND eea.Sponsorship <> 0 "
         "ORDER BY dd.Display, eea.Name",
         "1|1|1|2|99.5|1|1|Ann Lee|Table"},
        {"SELECT events_event_reservations.*, events_event_info.Name As EventName FROM "
         "events_event_reservations LEFT JOIN events_event_info ON "
         "events_event_reservations.FKEventId = events_event_info.Id WHERE FKEventId=1 "
         "ORDER BY ReservationDate DESC",
         "1|1|1|2026-03-01 18:30:00|50|Spring Gala"},
        {"SELECT eep.Id, dd.display, eligg.Name As InvitationGroupName FROM "
         "(((events_event_participants eep INNER JOIN donor_donors dd ON eep.FKDonorId = dd.id) "
         "LEFT JOIN events_event_participants_groups eepg ON (eep.FKDonorId = eepg.FKDonorId) AND "
         "(eep.FKEventId = eepg.FKEventId)) LEFT JOIN events_list_eventinvitationgroups eligg ON "
         "eepg.FKInvitationGroupId = eligg.Id) WHERE eep.FKEventId=1 "
         "ORDER BY eep.Id, eepg.FKInvitationGroupId",
         "1|Ann Lee|Board; 1|Ann Lee|Press; 2|bob O'Day|Null"},
        {"SELECT COUNT(*) As ActivitiesCount FROM (SELECT eera.FKActivityId FROM "
         "events_event_reservations_activities eera INNER JOIN events_event_reservations eer ON "
         "eera.FKReservationId = eer.id WHERE eer.FKEventId=1 GROUP BY eera.FKActivityId) sq ",
         "2"},
        {"SELECT Name FROM events_list_eventinvitationgroups WHERE visible = <yes> "
         "ORDER BY [order] ASC",
         "Board"},
        {"SELECT ei.Name, ei.Id FROM events_event_participants ep INNER JOIN events_event_info ei "
         "ON ep.FKEventId=ei.Id WHERE ep.Attended <> 0 AND ep.FKDonorId = 1",
         "Spring Gala|1"},
    };
    for (const auto& item : cases) {
        SCOPED_TRACE(item.sql);
        EXPECT_EQ(rows(use(), written(item.sql)), item.rows);
    }
}

TEST_P(AddInStatements, CountADonorsInvitationsAndReservations)
{
    EXPECT_EQ(rows(use(), pair("SELECT IsNull(SUM(InvitedFlag),0) As Invited, "
                               "IsNull(SUM(AcceptedFlag),0) As Accepted FROM (SELECT 1 As "
                               "InvitedFlag, CASE WHEN ep.Status=2 THEN 1 ELSE 0 END As "
                               "AcceptedFlag FROM events_event_participants ep WHERE ep.Status "
                               "IN(1,2,3) AND ep.FKDonorId = 1) [mainquery]",
                               "SELECT IIf(SUM(InvitedFlag) IS NULL,0,SUM(InvitedFlag)) As "
                               "Invited, IIf(SUM(AcceptedFlag) IS NULL,0,SUM(AcceptedFlag)) As "
                               "Accepted FROM (SELECT 1 As InvitedFlag, IIf(ep.Status=2,1,0) As "
                               "AcceptedFlag FROM events_event_participants ep WHERE ep.Status "
                               "IN(1,2,3) AND ep.FKDonorId = 1)")),
              "1|1");
    const std::string sponsorship =
        pair("CASE WHEN NOT ea.Sponsorship = 0 THEN 'Yes' ELSE 'No' END",
             "IIf(ea.Sponsorship,'Yes','No')");
    EXPECT_EQ(
        rows(use(), "SELECT ei.Name As EventName, ea.Name As ActivityName, "
                    "eera.Price*eera.Quantity As Amount, " +
                        sponsorship +
                        " As ActivitySponsorship FROM ((events_event_reservations_activities "
                        "eera INNER JOIN events_event_reservations eer ON "
                        "eera.FKReservationId = eer.Id) INNER JOIN events_event_activities ea "
                        "ON eera.FKActivityId = ea.Id) INNER JOIN events_event_info ei ON "
                        "eer.FKEventId = ei.Id WHERE (eer.FKDonorId = 1) "
                        "ORDER BY eer.reservationdate DESC"),
        "Spring Gala|Table|199|Yes; Spring Gala|Seat|47.25|No");
}

TEST_P(AddInStatements, SumPaymentsBesideReservations)
{
    const std::string payments =
        pair("IsNull(SUM(actualAmount),0) As Paid ",
             "IIf(IsNull(SUM(actualAmount)),0,SUM(actualAmount)) As Paid ");
    const std::string column = pair("IsNull(ReservationPayments.Paid,0) As ReservationPayments",
                                    "IIf(IsNull(ReservationPayments.Paid),0,"
                                    "ReservationPayments.Paid) As ReservationPayments");
    const std::string sql =
        "SELECT eer.Id As ReservationId, " + column +
        ", eea.Name As ActivityName FROM (((events_event_reservations eer LEFT JOIN (SELECT "
        "eer.Id, " +
        payments +
        "FROM (events_event_reservations eer LEFT JOIN donor_gifts dg ON eer.Id = "
        "dg.FKReservationId) LEFT JOIN donor_gifts_payments dgp ON dg.Id = dgp.giftId WHERE "
        "eer.FKEventId=1 AND dg.deleted = 0 GROUP BY eer.Id) ReservationPayments ON eer.Id = "
        "ReservationPayments.Id) LEFT JOIN events_event_reservations_activities eera ON eer.id = "
        "eera.FKReservationId) LEFT JOIN events_event_activities eea ON eera.FKActivityId = "
        "eea.Id) "
        "WHERE eer.FKEventId=1 ORDER BY eea.Name";
    EXPECT_EQ(rows(use(), sql), "1|25.5|Seat; 1|25.5|Table");
    EXPECT_EQ(kinds(use(), sql), "Long|Currency|String");
}

TEST_P(AddInStatements, JoinAGiftToAllThatItNames)
{
    const std::string received =
        pair("CASE WHEN NOT IsDate(donor_gifts_payments.actualDate)=0 THEN 1 ELSE 0 END",
             "IIf(IsDate(donor_gifts_payments.actualDate),True,0)");
    const auto cursor = use().query(
        "SELECT donor_gifts.*, donor_gifts_payments.*, dd.Display As DonorName, " + received +
        " As PaymentReceived, donor_gifts.id as Id, donor_gifts_payments.id as paymentId, "
        "dfp.value AS PaymentFund, dfg.value AS GiftFund, MatchingDonor.id AS MatchingDonorId, "
        "MatchedDonor.display AS MatchedDonor, 'gift' As listtype, "
        "donor_gifts_payments.actualAmount As creditamount FROM ((((((((((donor_gifts INNER JOIN "
        "donor_gifts_payments ON donor_gifts.id = donor_gifts_payments.giftId) LEFT JOIN "
        "donor_donors dd ON donor_gifts.donorId = dd.id) LEFT JOIN donor_funds dfp ON "
        "donor_gifts_payments.FKFund = dfp.id) LEFT JOIN donor_funds dfg ON donor_gifts.FKFund = "
        "dfg.id) LEFT JOIN donor_gifts AS MatchingGift ON donor_gifts_payments.FKMatch = "
        "MatchingGift.id) LEFT JOIN donor_donors AS MatchingDonor ON MatchingGift.donorId = "
        "MatchingDonor.id) LEFT JOIN donor_gifts_payments AS MatchedPayment ON "
        "donor_gifts.FKMatch = MatchedPayment.id) LEFT JOIN donor_gifts AS MatchedGift ON "
        "MatchedPayment.giftId = MatchedGift.id) LEFT JOIN donor_donors AS MatchedDonor ON "
        "MatchedGift.DonorId = MatchedDonor.Id) LEFT JOIN events_event_info ei ON "
        "donor_gifts.FKEventId = ei.Id) WHERE (donor_gifts.FKEventId = 1) And "
        "(donor_gifts.Deleted = 0) ORDER BY donor_gifts.created DESC, donor_gifts.id DESC, "
        "donor_gifts_payments.expectedDate DESC");
    const auto cells = [&] {
        std::string text;
        for (const char* const name : {"Id", "paymentId", "giftId", "pledge", "expectedAmount",
                                       "creditamount", "PaymentFund", "GiftFund", "MatchedDonor"}) {
            text += shown(cursor->value(*cursor->columnIndex(name))) + "|";
        }
        return text;
    };
    EXPECT_EQ(cells(), "1|2|1|True|30|Null|General|General|Null|");
    EXPECT_EQ(shown(cursor->value(*cursor->columnIndex("PaymentReceived"))), "0");
    cursor->next();
    EXPECT_EQ(cells(), "1|1|1|True|25|25.5|Null|General|Null|");
    EXPECT_NE(shown(cursor->value(*cursor->columnIndex("PaymentReceived"))), "0");
    EXPECT_EQ(cursor->recordCount(), 2);
}

TEST_P(AddInStatements, TakeAnEventAway)
{
    use().begin();
    EXPECT_EQ(use().execute("UPDATE donor_gifts SET FKEventId = 0 WHERE FKEventId = 1"), 1);
    EXPECT_EQ(use().execute(pair("UPDATE donor_gifts SET FKReservationId = 0 FROM donor_gifts "
                                 "INNER JOIN events_event_reservations ON "
                                 "donor_gifts.FKReservationId = events_event_reservations.Id "
                                 "WHERE events_event_reservations.FKEventId = 1",
                                 "UPDATE donor_gifts INNER JOIN events_event_reservations ON "
                                 "donor_gifts.FKReservationId = events_event_reservations.Id SET "
                                 "FKReservationId = 0 WHERE "
                                 "events_event_reservations.FKEventId = 1")),
              1);
    const std::string groups =
        pair("DELETE events_event_participants_groups FROM ",
             "DELETE DISTINCTROW events_event_participants_groups.* FROM ") +
        "events_event_participants_groups LEFT JOIN events_event_participants ON "
        "events_event_participants_groups.FKDonorId = events_event_participants.FKDonorId AND "
        "events_event_participants_groups.FKEventId = events_event_participants.FKEventId WHERE "
        "events_event_participants.Id = 1";
    EXPECT_EQ(use().execute(groups), 2);
    const std::string lines =
        pair("DELETE events_event_reservations_activities FROM ",
             "DELETE DISTINCTROW events_event_reservations_activities.* FROM ") +
        "events_event_reservations_activities LEFT JOIN events_event_reservations ON "
        "events_event_reservations_activities.FKReservationId = events_event_reservations.Id "
        "WHERE events_event_reservations.FKEventId = 1";
    EXPECT_EQ(use().execute(lines), 2);
    EXPECT_EQ(use().execute("DELETE FROM events_event_info WHERE Id = 1"), 1);
    use().commit();
    EXPECT_EQ(rows(use(), "SELECT FKEventId, FKReservationId FROM donor_gifts"), "0|0");
    EXPECT_EQ(rows(use(), "SELECT Id, Name FROM events_event_info"), "2|Auction");
}

INSTANTIATE_TEST_SUITE_P(EachDialect, AddInStatements,
                         ::testing::Values(Dialect::sqlServer, Dialect::jet),
                         [](const auto& dialect) {
                             return std::string(dialect.param == Dialect::jet ? "Jet"
                                                                              : "SqlServer");
                         });

} // namespace
} // namespace refhost::testing
