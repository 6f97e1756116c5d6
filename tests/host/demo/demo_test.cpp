#include "host/demo/demo.h"

#include <fstream>
#include <sstream>

#include <gtest/gtest.h>

#include "automation/conversions.h"
#include "automation/error.h"
#include "host/demo/codes.h"
#include "host/document/sql_session.h"
#include "host/security/user_store.h"
#include "tests/support/temp_folder.h"

namespace refhost {
namespace {

namespace fs = std::filesystem;

class Demo : public ::testing::Test {
protected:
    DemoOptions options(const std::string& name, Dialect dialect = Dialect::sqlServer) const
    {
        DemoOptions result;
        result.database = folder_ / name;
        result.dialect = dialect;
        result.addInPath = SOURCE_FOLDER;
        result.donors = 150;
        result.gifts = 300;
        result.crowd = 0;
        return result;
    }

    std::string bytes(const std::string& name) const
    {
        std::ifstream file(folder_ / name, std::ios::binary);
        std::ostringstream content;
        content << file.rdbuf();
        return content.str();
    }

    std::vector<std::string> files() const
    {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder_.path())) {
            names.push_back(entry.path().filename().string());
        }
        return names;
    }

    const qmevents::testing::TempFolder folder_;
};

std::int64_t number(SqlSession& sql, const std::string& query)
{
    return static_cast<std::int64_t>(qmevents::toDouble(sql.query(query)->value(0)));
}

TEST_F(Demo, MakesTheSameBytesFromTheSameSeedAndOthersFromAnother)
{
    makeDemo(options("a"));
    makeDemo(options("b"));
    DemoOptions other = options("c");
    other.seed = 2;
    makeDemo(other);
    EXPECT_TRUE(bytes("a") == bytes("b"));
    EXPECT_FALSE(bytes("a") == bytes("c"));
}

TEST_F(Demo, LooksLikeAnOrganisationsLifeInBothDialects)
{
    for (const Dialect dialect : {Dialect::sqlServer, Dialect::jet}) {
        SCOPED_TRACE(dialectName(dialect));
        const DemoOptions made = options(std::string(dialectName(dialect)), dialect);
        const DemoCounts counts = makeDemo(made);
        EXPECT_EQ(counts.donors, 150);
        EXPECT_EQ(counts.events, 40);
        SqlSession sql(Database::open(made.database), dialect);
        const auto none = [&](const std::string& what) {
            EXPECT_EQ(number(sql, "SELECT COUNT(*) FROM " + what), 0) << what;
        };
        const auto some = [&](const std::string& what) {
            EXPECT_GT(number(sql, "SELECT COUNT(*) FROM " + what), 0) << what;
        };
        EXPECT_EQ(number(sql, "SELECT COUNT(*) FROM events_event_info"), 40);
        none("events_event_info WHERE StartDateTime > EndDateTime");
        none("events_event_info WHERE CreateDate > StartDateTime");
        none("events_event_info e LEFT JOIN events_list_eventlocations l ON e.FKLocationId = l.Id "
             "WHERE l.Id IS NULL");
        none("events_event_info e LEFT JOIN events_list_eventstatuses s ON e.FKStatusId = s.Id "
             "WHERE s.Id IS NULL");
        none("events_event_activities a WHERE a.QuantityType = 0 AND a.QuantityAvailable < "
             "(SELECT SUM(l.Quantity) FROM events_event_reservations_activities l "
             "WHERE l.FKActivityId = a.Id)");
        none("(donor_gifts g INNER JOIN donor_donors d ON g.donorId = d.id) "
             "WHERE g.created < d.created");
        none("donor_gifts g LEFT JOIN donor_gifts_payments p ON g.id = p.giftId "
             "WHERE p.id IS NULL AND g.deleted = 0");
        some("donor_gifts g INNER JOIN donor_gifts_payments p ON g.FKMatch = p.id "
             "WHERE p.FKMatch = g.id");
        some("vw_events_events WHERE PledgesExpectedTotal > PledgesReceivedTotal");
        some("vw_events_events WHERE DonationsTotal > 0 AND OutstandingRevenue > 0 "
             "AND SponsorshipsRevenue > 0 AND NumberAttended > 10");
        some("vw_events_donor_summary WHERE totalamountlastyear > 0 AND totalamountcurryear > 0");
    }
}

TEST_F(Demo, FillsOneEventWithACrowdThroughTheAddIn)
{
    DemoOptions crowded = options("a", Dialect::jet);
    crowded.donors = 300;
    crowded.crowd = 125;
    makeDemo(crowded);
    SqlSession sql(Database::open(crowded.database), crowded.dialect);
    const auto largest =
        number(sql, "SELECT Id FROM events_event_info WHERE Name = 'Riverside Run 2026'");
    const auto count = [&](const std::string& from, const std::string& condition) {
        return number(sql, "SELECT COUNT(*) FROM " + from + " WHERE " + condition);
    };
    const std::string ofIt = "FKEventId = " + std::to_string(largest);
    EXPECT_EQ(count("events_event_participants", ofIt), 125);
    EXPECT_EQ(count("events_event_reservations", ofIt), 30);
    const std::string lines = "events_event_reservations_activities l INNER JOIN "
                              "events_event_reservations r ON l.FKReservationId = r.Id";
    EXPECT_EQ(count(lines, ofIt), 75);
    for (const char* type : {"1", "2", "3", "4", "6"}) {
        const std::string held = "ReservationInfo LIKE '%type=\"" + std::string(type) + "\"%'";
        EXPECT_GT(count(lines, ofIt + " AND " + held), 0) << type;
        EXPECT_GT(count("events_event_activities", ofIt + " AND " + held), 0) << type;
    }
    // Whoever was entered through the add-in finds that in their history.
    EXPECT_EQ(count("actions_interactions", "reference = '" + std::to_string(largest) + "'"),
              125 + 30);
}

TEST_F(Demo, LetsItsUsersSignInWithTheirRights)
{
    makeDemo(options("a"));
    SqlSession sql(Database::open(folder_ / "a"), Dialect::sqlServer);
    UserStore users(sql);
    const struct {
        const char *name, *password;
        std::size_t rights;
    } cases[] = {{"anna", "harbour lights", knownRights().size()},
                 {"ben", "paper boats", 4},
                 {"viewer", "just looking", 1}};
    for (const auto& [name, password, rights] : cases) {
        SCOPED_TRACE(name);
        const auto user = users.signIn(name, password);
        ASSERT_TRUE(user);
        EXPECT_EQ(users.rightsOf(user->id).size(), rights);
        EXPECT_FALSE(users.signIn(name, "something else"));
    }
    EXPECT_EQ(users.all().size(), std::size(cases));
}

TEST_F(Demo, LeavesOtherFilesAloneWhenItFails)
{
    std::ofstream(folder_ / "a") << "precious";
    EXPECT_THROW(makeDemo(options("a")), qmevents::Error);
    EXPECT_EQ(bytes("a"), "precious");

    DemoOptions noAddIn = options("b");
    noAddIn.addInPath = (folder_ / "nowhere").string();
    EXPECT_THROW(makeDemo(noAddIn), qmevents::Error);
    DemoOptions noFolder = options("c");
    noFolder.database = folder_ / "missing" / "c";
    EXPECT_ANY_THROW(makeDemo(noFolder));
    EXPECT_EQ(files(), std::vector<std::string>{"a"});

    DemoOptions forced = options("a");
    forced.replaces = true;
    makeDemo(forced);
    EXPECT_TRUE(bytes("a").starts_with("SQLite format 3"));
    EXPECT_EQ(files(), std::vector<std::string>{"a"});
}

TEST_F(Demo, RefusesArgumentsThatMakeNoSense)
{
    const std::string file = (folder_ / "a").string();
    const struct {
        std::vector<std::string> args;
        const char* reason;
    } cases[] = {{{}, "--db is missing"},
                 {{"--db"}, "--db needs a value"},
                 {{"--db", file, "--dialect", "other"}, "other"},
                 {{"--db", file, "--seed", "-1"}, "--seed takes a whole number, not -1"},
                 {{"--db", file, "--seed", "99999999999999999999"}, "--seed takes"},
                 {{"--db", file, "--small=1"}, "--small"},
                 {{"--db", file, "--donors", "5"}, "there is no option --donors"},
                 {{"--db", file, "extra"}, "what is extra?"}};
    for (const auto& [args, reason] : cases) {
        ::testing::internal::CaptureStderr();
        EXPECT_EQ(demoCommand(args), 2) << reason;
        const std::string said = ::testing::internal::GetCapturedStderr();
        EXPECT_NE(said.find(reason), std::string::npos) << said;
    }
    EXPECT_TRUE(files().empty());
}

} // namespace
} // namespace refhost
