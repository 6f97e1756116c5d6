#include <filesystem>
#include <fstream>

#include "core/script_engine.h"
#include "tests/host/addin/whole_host.h"
#include "tests/support/puppet.h"
#include "tests/support/temp_folder.h"

namespace refhost {
namespace {

namespace fs = std::filesystem;

// A folder of the add-in whose schema file a test may change.
class AddInFolder {
public:
    explicit AddInFolder(Dialect dialect)
        : file_(dialect == Dialect::sqlServer ? "data-schema-sql.xml" : "data-schema.xml")
    {
        fs::create_directories(folder_ / "data");
        for (const char* name : {"data-schema-sql.xml", "data-schema.xml", "addin.xml"}) {
            fs::copy_file(fs::path(SOURCE_FOLDER) / "data" / name, folder_ / "data" / name);
        }
    }
    std::string path() const { return folder_.string() + "/"; }
    void write(const std::string& schema) const
    {
        std::ofstream(folder_ / "data" / file_) << schema;
    }
    void require(int version) const
    {
        std::ofstream(folder_ / "data" / "addin.xml")
            << "<addin><configuration><value key=\"schema\">" << version
            << "</value></configuration></addin>";
    }
    void remove() const { fs::remove(folder_ / "data" / file_); }

private:
    std::string file_;
    qmevents::testing::TempFolder folder_;
};

class SchemaInstaller : public InBothDialects {
protected:
    // Signs in with this schema file; what the user saw.
    std::vector<std::string> signIn(const std::string& schema)
    {
        folder_.write(schema);
        WholeHost host(GetParam(), database_, "anna", folder_.path());
        setting_ = host.setting();
        statements_ = host.statements;
        // What each sign-in looks for afterwards is another story.
        std::erase_if(statements_, [](const auto& sql) { return sql.starts_with("SELECT 0 AS"); });
        return host.frontEnd.seen;
    }
    std::shared_ptr<Database> database_ = Database::inMemory();
    AddInFolder folder_{GetParam()};
    std::string setting_;
    std::vector<std::string> statements_;
};
INSTANTIATE_TEST_SUITE_P(Both, SchemaInstaller, ::testing::Values(Dialect::sqlServer, Dialect::jet),
                         testNameOf);

TEST_P(SchemaInstaller, InstallsOnceAndThenLeavesTheDatabaseAlone)
{
    {
        WholeHost first(GetParam(), database_);
        EXPECT_TRUE(first.frontEnd.seen.empty());
        EXPECT_EQ(first.setting(), "2");
        EXPECT_GT(first.statements.size(), 20U);
        EXPECT_NE(first.cell("SELECT COUNT(*) FROM events_list_eventstatuses"), "0");
        EXPECT_EQ(first.cell("SELECT COUNT(*) FROM vw_events_events"), "0");
    }
    const WholeHost second(GetParam(), database_);
    ASSERT_EQ(second.statements.size(), 1U) << "the look for broken references";
    EXPECT_TRUE(second.statements[0].starts_with("SELECT "));
}

TEST_P(SchemaInstaller, UpgradesAnOlderDatabaseWithItsRows)
{
    folder_.require(1);
    {
        WholeHost old(GetParam(), database_, "anna", folder_.path());
        EXPECT_EQ(old.setting(), "1");
        old.execute("INSERT INTO events_event_info (Name) VALUES ('Kept')");
        old.execute("INSERT INTO events_event_activities (FKEventId, Name, ListPrice, "
                    "QuantityAvailable) VALUES (1, 'Seat', 25, 10)");
    }
    folder_.require(2);
    WholeHost now(GetParam(), database_, "anna", folder_.path());
    EXPECT_EQ(now.setting(), "2");
    const auto event = toObject(call(now.store(), "GetEvent", 1));
    EXPECT_EQ(qmevents::toText(get(event, "Name")), "Kept");
    EXPECT_EQ(qmevents::toText(get(event, "PotentialRevenue")), "250");
    EXPECT_EQ(now.cell("SELECT QuantityType FROM events_event_activities"), "0");
    EXPECT_TRUE(now.frontEnd.seen.empty());
}

TEST_P(SchemaInstaller, RefusesADatabaseOfANewerAddIn)
{
    {
        WholeHost host(GetParam(), database_);
        put(host.document(), "Setting", "events-addin-init", "3");
    }
    const WholeHost host(GetParam(), database_);
    EXPECT_EQ(
        host.frontEnd.seen,
        (std::vector<std::string>{
            "user error This Addin cannot work with this database.  Please contact Corvane.|"}));
    EXPECT_EQ(host.setting(), "3");
    EXPECT_TRUE(host.statements.empty());
}

TEST_P(SchemaInstaller, ReportsAFileThatIsMissingOrMalformedAndTriesAgain)
{
    const auto seen = signIn("<schemas><schema version=\"2\"></schemas>");
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_TRUE(
        seen[0].starts_with("user error The template field file was unable to be loaded ("));
    EXPECT_NE(seen[0].find("). The error received was: "), std::string::npos);
    EXPECT_TRUE(seen[0].ends_with("|1717")) << seen[0];
    EXPECT_EQ(setting_, "");
    folder_.remove();
    {
        const WholeHost missing(GetParam(), database_, "anna", folder_.path());
        ASSERT_EQ(missing.frontEnd.seen.size(), 1U);
        EXPECT_TRUE(missing.frontEnd.seen[0].starts_with("user error The template field file"));
    }
    const WholeHost mended(GetParam(), database_);
    EXPECT_EQ(mended.setting(), "2");
}

TEST_P(SchemaInstaller, TellsTheHostWhenTheVersionIsNotInTheFile)
{
    const auto seen = signIn("<schemas><schema version=\"1\"><install/></schema></schemas>");
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_NE(seen[0].find("The schemaFile did not load correctly"), std::string::npos) << seen[0];
    EXPECT_EQ(setting_, "");
}

TEST_P(SchemaInstaller, StopsAtAFailingStatementAndKeepsTheVersion)
{
    const auto seen = signIn("<schemas><schema version=\"2\"><install><tables><table>CREATE "
                             "NONSENSE</table></tables></install></schema></schemas>");
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_EQ(setting_, "");
}

TEST_P(SchemaInstaller, SkipsAFailingScriptletAndRunsTheOthers)
{
    const bool sqlServer = GetParam() == Dialect::sqlServer;
    const std::string type = sqlServer ? "INT" : "LONG";
    const auto seen = signIn(
        "<schemas><schema version=\"2\"><install><tables><!-- first --><t>CREATE TABLE "
        "events_marks "
        "(Id " +
        type +
        ")</t></tables><indexes><i>CREATE INDEX ix_marks ON events_marks (Id)</i>"
        "</indexes><views><view name=\"vw_marks\">SELECT Id FROM events_marks</view></views>"
        "<scripts><script name=\"bad\"/><script name=\"missing\"/><script name=\"good\"/></scripts>"
        "</install><scripts><scriptlet name=\"bad\">x = 1\ny = x / 0\n</scriptlet>"
        "<scriptlet name=\"good\">App.Document.Execute \"INSERT INTO events_marks (Id) VALUES (7)\""
        "</scriptlet></scripts></schema></schemas>");
    ASSERT_EQ(seen.size(), 3U) << "the third: this database has no events to repair";
    EXPECT_NE(seen[0].find("Division by zero"), std::string::npos) << seen[0];
    EXPECT_NE(seen[0].find("Line: 2"), std::string::npos) << seen[0];
    EXPECT_NE(seen[1].find("missing"), std::string::npos) << seen[1];
    EXPECT_EQ(setting_, "2");
    EXPECT_EQ(statements_, (std::vector<std::string>{"CREATE TABLE events_marks (Id " + type + ")",
                                                     "CREATE INDEX ix_marks ON events_marks (Id)",
                                                     std::string("CREATE ") +
                                                         (sqlServer ? "VIEW" : "PROCEDURE") +
                                                         " vw_marks AS SELECT Id FROM events_marks",
                                                     "INSERT INTO events_marks (Id) VALUES (7)"}));
    {
        WholeHost host(GetParam(), database_, "anna", folder_.path());
        EXPECT_EQ(host.cell("SELECT Id FROM vw_marks"), "7");
    }
    folder_.require(3);
    signIn("<schemas><schema version=\"3\"><upgrade><views><view name=\"vw_marks\" "
           "dropfirst=\"true\">SELECT Id FROM "
           "events_marks</view></views></upgrade></schema></schemas>");
    EXPECT_EQ(setting_, "3");
    ASSERT_EQ(statements_.size(), 2U);
    EXPECT_EQ(statements_[0],
              std::string("DROP ") + (sqlServer ? "VIEW" : "PROCEDURE") + " vw_marks");
}

// An engine that is told everything anew for each scriptlet, and that notes failures unraised.
std::vector<std::string> told;
Ref<Object> notingEngine()
{
    using qmevents::testing::puppet;
    const auto failure = puppet("Error");
    failure->holds("Number", 0).holds("Description", "half done").holds("Line", 4);
    const auto engine = puppet("Engine");
    engine->holds("Error", failure).onPut("Language", [](std::span<Value> a) {
        told.push_back(toText(a[0]));
        return Value();
    });
    engine->on("AddObject", [](std::span<Value> a) {
        told.push_back(toText(a[0]));
        return Value();
    });
    engine->on("AddCode", [failure = failure.get()](std::span<Value> a) {
        told.push_back(toText(a[0]));
        put(Ref<Object>(failure), "Number", told.back() == "bad" ? 1004 : 0);
        return Value();
    });
    return engine;
}

TEST_P(SchemaInstaller, TellsFailuresThatAnEngineOnlyNotes)
{
    told.clear();
    qmevents::setScriptEngineFactory(notingEngine);
    const auto seen = signIn(
        "<schemas><schema version=\"2\"><install><scripts><s name=\"a\"/><s name=\"b\"/></scripts>"
        "</install><scripts><scriptlet name=\"a\">bad</scriptlet><scriptlet name=\"b\">good"
        "</scriptlet></scripts></schema></schemas>");
    qmevents::setScriptEngineFactory(nullptr);
    EXPECT_EQ(told,
              (std::vector<std::string>{"vbscript", "App", "bad", "vbscript", "App", "good"}));
    ASSERT_EQ(seen.size(), 2U) << "the second: this database has no events to repair";
    EXPECT_EQ(seen[0], "unexpected error half done Line: 4|");
}

} // namespace
} // namespace refhost
