#include <filesystem>
#include <fstream>

#include "tests/host/reports/report_desk.h"
#include "tests/host/session/fixture.h"
#include "tests/support/temp_folder.h"

namespace refhost {
namespace {

namespace fs = std::filesystem;

const std::string money = R"(
  <column key="Gift" caption="Gift" kind="number" total="count"/>
  <column key="Expected" caption="Expected" kind="money" total="sum" zero="blank"/>
  <column key="Actual" caption="Actual" kind="money" total="sum"/>
  <column key="Rate" caption="%" kind="percent" part="Actual" whole="Expected"/>
  <column key="Units" caption="" kind="number" total="sum" hidden="yes"/>
  <column key="Each" caption="Each" kind="money" part="Actual" whole="Units"/>
  <section>
    <sql>SELECT p.giftId AS Gift, p.FKFund AS Fund, p.expectedAmount AS Expected,
      p.actualAmount AS Actual, p.FKMatch AS Units FROM donor_gifts_payments p
      ORDER BY p.FKFund, p.id</sql>
    <group by="Fund" caption="Fund {Fund}" blank="No fund" subtotal="{head}: {count:gift:gifts}"/>
    <total caption="All: {count:gift:gifts}, {count:fund:funds:Fund}"/>
  </section>
  <chart kind="bar" title="Funds" over="groups" most="2"><series column="Actual"/></chart>)";

/// Layouts of a test's own, over the host's tables.
class Layouts : public ::testing::TestWithParam<Dialect> {
protected:
    Layouts()
    {
        fs::create_directories(folder_ / "cache" / "reports");
        desk_.emplace(GetParam(), Database::inMemory(), std::nullopt, folder_.string(),
                      addIn_.parts());
    }
    ~Layouts() override { desk_.reset(); }

    void write(const std::string& content, const std::string& attributes = "")
    {
        std::ofstream(folder_ / "cache" / "reports" / "test.xml", std::ios::binary)
            << "<report key=\"test\" title=\"Test\"" << attributes << ">" << content << "</report>";
    }
    void payment(const std::string& cells)
    {
        desk_->execute("INSERT INTO donor_gifts_payments (giftId, FKFund, expectedAmount, "
                       "actualAmount, FKMatch) VALUES (" +
                       cells + ")");
    }

    RecordingAddIn addIn_;
    const qmevents::testing::TempFolder folder_;
    std::optional<ReportDesk> desk_;
};
INSTANTIATE_TEST_SUITE_P(, Layouts, ::testing::Values(Dialect::sqlServer, Dialect::jet),
                         nameOfDialect);

TEST_P(Layouts, AddUpExactlyAndTakeRatiosOfTheTotals)
{
    for (const char* cells : {"1, 7, 0.10, 0.20, 1", "2, 7, 0.20, 0.10, 2", "3, 8, 3, 1, 3",
                              "4, 8, 6, NULL, 0", "5, 0, 0, -5, 2"})
        payment(cells);
    write(money);
    const OpenReport report = desk_->open("test");
    EXPECT_EQ(
        report.print().texts(),
        (std::vector<std::string>{
            "head 0 No fund|||||", "row 1|5||-5||-2.5", "subtotal 0 No fund: 1 gift|1||-5||-2.5",
            "head 0 Fund 7|||||", "row 1|1|0.1|0.2|200|0.2", "row 1|2|0.2|0.1|50|0.05",
            "subtotal 0 Fund 7: 2 gifts|2|0.3|0.3|100|0.1", "head 0 Fund 8|||||",
            "row 1|3|3|1|33.3|0.33", "row 1|4|6|||", "subtotal 0 Fund 8: 2 gifts|2|9|1|11.1|0.33",
            "total 0 All: 5 gifts, 3 funds|5|9.3|-3.7|-39.8|-0.46"}));
    const auto chart = getObject(report.run, "Chart");
    EXPECT_EQ(toText(get(chart, "Title")), "Funds (the 2 highest)");
    const Value categories = get(chart, "Categories");
    ASSERT_EQ(categories.array()->items.size(), 2U);
    EXPECT_EQ(toText(categories.array()->items[1]), "Fund 8");
    // Without rows there is a total, and nothing to draw.
    desk_->execute("DELETE FROM donor_gifts_payments");
    EXPECT_EQ(report.print().texts(),
              std::vector<std::string>{"total 0 All: 0 gifts, 0 funds|0|0|0||"});
    EXPECT_TRUE(get(report.run, "Chart").isNothing());
    // One group alone has the figures of the total.
    payment("1, 7, 1, 1, 1");
    EXPECT_EQ(report.print().texts().size(), 3U);
}

TEST_P(Layouts, TakeWhatIsEnteredAndWhatIsStoredForNothingButText)
{
    desk_->execute(
        "INSERT INTO donor_donors (display) VALUES ('<b>O''Hara</b> & {words} {count:a:b}')");
    write(R"(<filter key="words" kind="text" caption="Name"/>
  <column key="Donor" caption="Donor"/>
  <section>
    <sql>SELECT d.display AS Donor FROM donor_donors d
      <when filter="words">WHERE d.display = {words}</when></sql>
    <group by="Donor" caption="{Donor}"/>
  </section>)");
    const OpenReport report = desk_->open("test");
    const std::string name = "<b>O'Hara</b> & {words} {count:a:b}";
    EXPECT_EQ(report.print().texts(),
              (std::vector<std::string>{"head 0 " + name + "|", "row 1|" + name}));
    report.set("words", name);
    EXPECT_EQ(report.print().lines.size(), 2U);
    report.set("words", "' OR 1 = 1 --");
    EXPECT_EQ(report.print().lines.size(), 0U);
    EXPECT_EQ(report.print().notes.at(0), "Name: ' OR 1 = 1 --");
}

TEST_P(Layouts, SayWhereTheyAreWrong)
{
    const std::string column = "<column key=\"A\" caption=\"A\"/>\n";
    const std::string section =
        "<section><sql>SELECT d.id AS A FROM donor_donors d</sql></section>\n";
    struct Fault {
        std::string content, message;
    };
    const Fault faults[] = {
        {"\n<column", "line 2: "},
        {column, "line 1: a report has a section"},
        {column + section + "<chart/>", "line 3: <chart> needs the attribute kind"},
        {column + "<section>\n<sqls/></section>", "line 3: <sqls> cannot stand in <section>"},
        {"\n<column key=\"A\" captoin=\"A\" caption=\"\"/>" + section,
         "line 2: <column> has no attribute captoin"},
        {"<column key=\"A\" caption=\"A\" kind=\"euros\"/>" + section,
         "line 1: \"euros\" is no value of kind"},
        {column + column + section, "line 2: there is a column A already"},
        {column + "<column key=\"B\" caption=\"B\" kind=\"percent\" part=\"A\" whole=\"C\"/>" +
             section,
         "line 2: a ratio is of columns with sums, unlike A"},
        {column + "<section><sql>SELECT\n{day} FROM x</sql></section>",
         "line 2: there is no filter day"},
        {column + "<filter key=\"f\" kind=\"choice\" caption=\"F\"/>" + section,
         "line 2: a choice has options or choices"},
        {column + "<section><sql>SELECT d.id AS B FROM donor_donors d</sql></section>",
         "line 1: the statement gives no field A"},
        {column + "\n<section><sql>SELECT d.id A donor_donors</sql></section>",
         "line 3: the statement that begins here was refused: "},
    };
    for (const auto& [content, message] : faults) {
        SCOPED_TRACE(content);
        write(content);
        const std::string failure = desk_->failure([&] { desk_->open("test").print(); });
        EXPECT_EQ(failure.find("5 The report layout Cache/Reports/test.xml, " + message) == 0 ||
                      failure.find("The report layout Cache/Reports/test.xml, " + message) !=
                          std::string::npos,
                  true)
            << failure;
    }
    EXPECT_EQ(desk_->failure([&] { desk_->open("other"); }),
              "53 The report layout Cache/Reports/other.xml cannot be found.");
    for (const char* folder : {"/etc", "C:\\Reports", "cache/../.."}) {
        const std::string failure =
            desk_->failure([&] { call(desk_->reports(), "Open", folder, "test"); });
        EXPECT_EQ(failure.substr(0, 2), "5 ") << folder;
    }
    EXPECT_EQ(desk_->failure([&] { desk_->open("../test"); }).substr(0, 2), "5 ");
    write(column + section, " operation=\"mailings/send\"");
    ReportDesk few(GetParam(), Database::inMemory(), {{"events/view"}}, folder_.string(),
                   addIn_.parts());
    EXPECT_EQ(few.failure([&] { few.open("test"); }).substr(0, 3), "70 ");
}

TEST_P(Layouts, AreAsTheGuideForAuthorsShowsThem)
{
    std::ifstream guide(SOURCE_FOLDER "docs/report-layouts.md");
    const std::string text{std::istreambuf_iterator<char>(guide), {}};
    const std::string fence = "```xml\n";
    const auto begin = text.find(fence) + fence.size();
    std::ofstream(folder_ / "cache" / "reports" / "events-costs.xml")
        << text.substr(begin, text.find("```", begin) - begin);
    fs::create_directory_symlink(SOURCE_FOLDER "data", folder_ / "data");
    desk_.reset();
    desk_.emplace(GetParam(), Database::inMemory(), std::nullopt, folder_.string());
    EXPECT_EQ(desk_->open("events-costs").print().texts(),
              std::vector<std::string>{"total 0 0 events||0|0|"});
}

} // namespace
} // namespace refhost
