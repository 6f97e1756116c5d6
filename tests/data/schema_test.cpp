#include <algorithm>
#include <sstream>

#include "automation/text.h"
#include "host/document/sql_error.h"
#include "tests/data/events_database.h"
#include "tests/data/schema_file.h"

namespace refhost::test {
namespace {

constexpr auto integrity = static_cast<int>(SqlErrorNumber::integrity);
constexpr auto tooLong = static_cast<int>(SqlErrorNumber::overflow);

// Columns in the order in which they are written.
const std::map<std::string, std::string> columnsOf = {
    {"events_event_info",
     "Id Name Description FKLocationId StartDateTime EndDateTime RSVPDateTime MaxCapacity "
     "MinCapacity FKCategoryId FKStatusId FKCoordinatorId RevenueGoal AttendanceGoal FKFundId "
     "FKCampaignId FKAppealId Notes CreateUser CreateDate LastUpdateUser LastUpdateDate"},
    {"events_event_activities",
     "Id FKEventId Name Description ListPrice Cost QuantityAvailable Sponsorship ReservationInfo "
     "QuantityType FKFundId FKCampaignId FKAppealId CreateUser CreateDate LastUpdateUser "
     "LastUpdateDate"},
    {"events_event_participants", "Id FKEventId FKDonorId Status Notes Attended CreateUser "
                                  "CreateDate LastUpdateUser LastUpdateDate"},
    {"events_event_participants_groups", "FKEventId FKDonorId FKInvitationGroupId"},
    {"events_event_reservations", "Id FKEventId FKDonorId ReservationDate Description AmountPaid "
                                  "CreateUser CreateDate LastUpdateUser LastUpdateDate"},
    {"events_event_reservations_activities",
     "Id FKReservationId FKActivityId Quantity Price Notes ReservationInfo CreateUser CreateDate "
     "LastUpdateUser LastUpdateDate"},
    {"events_event_expenses", "Id FKEventId ExpenseDate Description Amount CreateUser CreateDate "
                              "LastUpdateUser LastUpdateDate"},
    {"events_event_tasks", "Id FKEventId Name Notes DueDateTime Completed FKAssignedToId "
                           "CreateUser CreateDate LastUpdateUser LastUpdateDate"},
    {"events_list_eventcategories", "Id Name Description Visible [Order]"},
    {"events_list_eventstatuses", "Id Name Description Visible [Order]"},
    {"events_list_eventlocations",
     "Id Name Description ContactName Address Phone Fax Email Notes Visible [Order]"},
    {"events_list_eventcoordinators", "FKDonorId Description Visible [Order]"},
    {"events_list_eventinvitationgroups", "Id Name Description Visible [Order]"},
};

// A statement of the SQL Server file in the words of Jet, where only the types differ.
std::string asJet(std::string statement)
{
    static constexpr std::pair<const char*, const char*> words[] = {
        {") NULL", ")"},
        {"DATETIME NULL", "DATETIME"},
        {" INT NULL", " LONG"},
        {"INT IDENTITY(1,1)", "COUNTER"},
        {"NVARCHAR(MAX)", "MEMO"},
        {"NVARCHAR(", "TEXT("},
        {"SMALLINT", "SHORT"},
        {" INT ", " LONG "},
        {"MONEY", "CURRENCY"},
        {"BIT NOT NULL DEFAULT 0", "YESNO NOT NULL DEFAULT False"},
        {"BIT NOT NULL DEFAULT 1", "YESNO NOT NULL DEFAULT True"},
        {"GETDATE()", "Now()"},
        {"CREATE VIEW", "CREATE PROCEDURE"},
        {"DROP VIEW", "DROP PROCEDURE"}};
    for (const auto& [from, to] : words) {
        statement = qmevents::text::replaceAll(statement, from, to);
    }
    return statement;
}

// Names, tables and indexes must agree to the letter; of a query only its name can.
std::vector<std::string> comparable(Dialect dialect, int version, const std::string& section)
{
    std::vector<std::string> result;
    for (std::string statement : schemaStatements(dialect, version, section)) {
        if (dialect == Dialect::sqlServer) statement = asJet(statement);
        result.push_back(statement.substr(0, statement.find(" AS ")));
    }
    return result;
}

TEST(SchemaFiles, DescribeTheSameTablesIndexesAndQueries)
{
    for (const int version : {1, 2}) {
        SCOPED_TRACE(version);
        EXPECT_EQ(comparable(Dialect::sqlServer, version, "install"),
                  comparable(Dialect::jet, version, "install"));
    }
    for (const Dialect dialect : {Dialect::sqlServer, Dialect::jet}) {
        for (const std::string& name : sectionScripts(dialect, 2, "install")) {
            EXPECT_FALSE(scriptlet(dialect, 2, name).empty()) << name;
        }
    }
    EXPECT_EQ(sectionScripts(Dialect::sqlServer, 2, "install"),
              sectionScripts(Dialect::jet, 2, "install"));
    EXPECT_EQ(scriptlet(Dialect::sqlServer, 2, "first-list-items"),
              scriptlet(Dialect::jet, 2, "first-list-items"));
}

class Schema : public InBothDialects {
protected:
    Schema() { db_.install(); }
};
QM_IN_BOTH_DIALECTS(Schema);

TEST_P(Schema, HasEveryColumnThatIsReadAndWritten)
{
    for (const auto& [table, columns] : columnsOf) {
        const auto cursor = db_.sql().query("SELECT * FROM " + table);
        std::istringstream names(columns);
        std::size_t index = 0;
        for (std::string name; names >> name; ++index) {
            if (name.front() == '[') name = name.substr(1, name.size() - 2);
            ASSERT_LT(index, cursor->columnCount()) << table;
            EXPECT_EQ(cursor->columnName(index), name) << table;
        }
        EXPECT_EQ(cursor->columnCount(), index) << table;
    }
}

TEST_P(Schema, KeepsTextsAsLongAsPeopleTypeThem)
{
    const std::string longest(255, 'x');
    // Jet takes no statement of 64,000 characters, whatever its columns hold.
    std::string longText(GetParam() == Dialect::jet ? 63'000 : 64 * 1024, 'n');
    for (std::size_t at = 0; at + 2 < longText.size(); at += 1000) longText.replace(at, 2, "é");
    const struct {
        const char *table, *column, *others, *values;
        bool unlimited;
    } cases[] = {
        {"events_event_info", "Name", "", "", false},
        {"events_event_info", "Description", "Name, ", "'x', ", true},
        {"events_event_info", "Notes", "Name, ", "'x', ", true},
        {"events_event_activities", "Name", "", "", false},
        {"events_event_activities", "ReservationInfo", "Name, ", "'x', ", true},
        {"events_event_participants", "Notes", "", "", true},
        {"events_event_reservations", "Description", "", "", true},
        {"events_event_reservations_activities", "ReservationInfo", "", "", true},
        {"events_event_expenses", "Description", "", "", true},
        {"events_event_tasks", "Name", "", "", false},
        {"events_list_eventlocations", "Name", "", "", false},
        {"events_list_eventlocations", "Address", "Name, ", "'x', ", true},
        {"events_list_eventlocations", "Email", "Name, ", "'x', ", false},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(std::string(row.table) + "." + row.column);
        const auto insert = [&](const std::string& value) {
            return std::string("INSERT INTO ") + row.table + " (" + row.others + row.column +
                   ") VALUES (" + row.values + db_.text(value) + ")";
        };
        const std::string& fits = row.unlimited ? longText : longest;
        ASSERT_EQ(failureOf(db_.sql(), insert(fits)), 0);
        const Row stored = db_.row(std::string("SELECT ") + row.column + " AS t FROM " + row.table);
        EXPECT_EQ(stored.at("t"), fits);
        EXPECT_EQ(failureOf(db_.sql(), insert(fits + "x")), row.unlimited ? 0 : tooLong);
        db_.sql().execute(std::string("DELETE FROM ") + row.table);
    }
}

TEST_P(Schema, FillsWhatIsLeftOutAndRefusesWhatCannotBe)
{
    db_.event("Gala");
    expectColumns(db_.row("SELECT * FROM events_event_info"),
                  {{"FKLocationId", "0"},
                   {"FKAppealId", "0"},
                   {"RevenueGoal", "0"},
                   {"EndDateTime", "Null"},
                   {"CreateUser", "0"},
                   {"CreateDate", "2026-11-21 12:00:00"},
                   {"LastUpdateDate", "Null"}});
    db_.activity(1, 5, 5);
    expectColumns(db_.row("SELECT * FROM events_event_activities"),
                  {{"Sponsorship", "False"}, {"QuantityType", "0"}, {"FKFundId", "0"}});
    db_.insert("events_list_eventcategories", {{"Name", "'Gala'"}});
    expectColumns(db_.row("SELECT * FROM events_list_eventcategories"),
                  {{"Visible", "True"}, {"Order", "0"}, {"Description", "Null"}});

    const std::string group = "INSERT INTO events_event_participants_groups VALUES (1, 2, 3)";
    const std::string coordinator =
        "INSERT INTO events_list_eventcoordinators (FKDonorId) VALUES (7)";
    for (const std::string& once : {group, coordinator}) {
        EXPECT_EQ(failureOf(db_.sql(), once), 0) << once;
        EXPECT_EQ(failureOf(db_.sql(), once), integrity) << once;
    }
    EXPECT_EQ(failureOf(db_.sql(), "INSERT INTO events_event_info (Name) VALUES (NULL)"),
              integrity);
    EXPECT_EQ(failureOf(db_.sql(), "UPDATE events_event_info SET FKStatusId = NULL"), integrity);
}

TEST_P(Schema, ReadsOneEventOrDonorByIndexesAlone)
{
    for (const char* query : {"SELECT * FROM vw_events_events WHERE Id = 5",
                              "SELECT * FROM vw_events_donor_summary WHERE DonorId = 5"}) {
        for (const HostRow& step :
             db_.sql().hostQuery(std::string("EXPLAIN QUERY PLAN ") + query)) {
            const auto& what = std::get<std::string>(step[3]);
            EXPECT_EQ(what.find("SCAN"), std::string::npos) << query << ": " << what;
            EXPECT_EQ(what.find("MATERIALIZE"), std::string::npos) << query << ": " << what;
        }
    }
}

} // namespace
} // namespace refhost::test
