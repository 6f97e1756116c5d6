#include <filesystem>

#include "host/demo/demo.h"
#include "tests/host/reports/report_desk.h"
#include "tests/support/temp_folder.h"

namespace refhost {
namespace {

using Settings = std::vector<std::pair<std::string, std::string>>;

const Settings allDays = {{"from", ""}, {"to", ""}};

/// A report, how it is asked, and what the store says of its totals: a column and a statement, in
/// which {event} and {activity} stand for those that the report is asked about.
struct Audited {
    std::string key;
    Settings settings;
    std::vector<std::pair<std::string, std::string>> totals;
    std::vector<std::string> ofGifts; ///< The columns that need the right to view donations.
    bool ofOneEvent = false;
};

std::string ofEvents(const std::string& figure)
{
    return "SELECT SUM(" + figure + ") FROM vw_events_events";
}
std::string ofEvent(const std::string& figure)
{
    return "SELECT " + figure + " FROM vw_events_events WHERE Id = {event}";
}
std::string ofDonors(const std::string& figure)
{
    return "SELECT SUM(" + figure + ") FROM vw_events_donor_summary";
}

const std::vector<Audited>& audited()
{
    static const std::vector<Audited> table = {
        {"events-list",
         allDays,
         {{"Reserved", ofEvents("ExpectedRevenue")},
          {"Invited", ofEvents("NumberInvited")},
          {"Accepted", ofEvents("NumberAccepted")},
          {"Attended", ofEvents("NumberAttended")},
          {"Reservations", ofEvents("NumberReservations")}},
         {}},
        {"events-by-eventstatus",
         allDays,
         {{"Reserved", ofEvents("ExpectedRevenue")},
          {"Expenses", ofEvents("ExpenseTotal")},
          {"Income", ofEvents("ActualRevenue + DonationsTotal")},
          {"NetIncome", ofEvents("NetAmount")},
          {"RevenueGoal", "SELECT SUM(RevenueGoal) FROM events_event_info"}},
         {"Income", "NetIncome"}},
        {"events-expected-vs-actual",
         allDays,
         {{"Potential", ofEvents("PotentialRevenue")},
          {"Expected", ofEvents("ExpectedRevenue")},
          {"Actual", ofEvents("ActualRevenue")},
          {"Outstanding", ofEvents("OutstandingRevenue")},
          {"Pledged", ofEvents("PledgesExpectedTotal")},
          {"PledgesReceived", ofEvents("PledgesReceivedTotal")}},
         {"Actual", "Outstanding", "ActualPercent", "Pledged", "PledgesReceived",
          "PledgesPercent"}},
        {"events-revenue-vs-expenses",
         allDays,
         {{"ReservationIncome", ofEvents("ActualRevenue")},
          {"Donations", ofEvents("DonationsTotal")},
          {"Income", ofEvents("ActualRevenue + DonationsTotal")},
          {"Expenses", ofEvents("ExpenseTotal")},
          {"NetIncome", ofEvents("NetAmount")}},
         {"ReservationIncome", "Donations", "Income", "NetIncome", "CostPercent"}},
        {"events-top-events",
         {{"many", "100"}},
         {{"Income", ofEvents("ActualRevenue + DonationsTotal")},
          {"Expenses", ofEvents("ExpenseTotal")},
          {"NetIncome", ofEvents("NetAmount")}},
         {"Income", "NetIncome"}},
        {"events-eventreservations-donation-history-by-campaign",
         allDays,
         {{"Reserved", ofEvents("ExpectedRevenue")},
          {"Paid", ofEvents("ActualRevenue")},
          {"Donated", ofEvents("DonationsTotal")}},
         {}},
        {"events-sponsorships-by-donor",
         allDays,
         {{"Quantity", ofEvents("SponsorshipsOrdered")},
          {"Amount", ofEvents("SponsorshipsRevenue")},
          {"Amount", ofDonors("totalsponsorshipamount")}},
         {}},
        {"events-donor-summary",
         {},
         {{"Reserved", ofDonors("totalreservationexpected")},
          {"Paid", ofDonors("totalreservationpaid")},
          {"Donated", ofDonors("totaldonationamount")},
          {"AmountTotal", ofDonors("totalamount")},
          {"LastYear", ofDonors("totalamountlastyear")},
          {"ThisYear", ofDonors("totalamountcurryear")},
          {"Pledged", ofDonors("totalpledgedamount")},
          {"PledgesReceived", ofDonors("totalpledgereceived")},
          {"Sponsorships", ofDonors("totalsponsorshipamount")}},
         {}},
        {"events-event-participant-list", {}, {{"Attended", ofEvent("NumberAttended")}}, {}, true},
        {"events-event-reservation-list-by-activity",
         {},
         {{"Amount", ofEvent("ExpectedRevenue")}},
         {},
         true},
        {"events-event-reservation-list",
         {},
         {{"Expected", ofEvent("ExpectedRevenue")},
          {"Paid", ofEvent("ActualRevenue")},
          {"Due", ofEvent("OutstandingRevenue")}},
         {"Paid", "Due"},
         true},
        {"events-event-activity-reservation-list",
         {{"activity", "{activity}"}},
         {{"Quantity", "SELECT SUM(Quantity) FROM vw_events_reservation_lines WHERE FKActivityId = "
                       "{activity}"},
          {"Amount", "SELECT SUM(Amount) FROM vw_events_reservation_lines WHERE FKActivityId = "
                     "{activity}"}},
         {},
         true},
        {"events-event-activity-summary",
         {},
         {{"Potential", ofEvent("PotentialRevenue")}, {"Income", ofEvent("ExpectedRevenue")}},
         {},
         true},
        {"events-event-summary", {}, {}, {}, true},
    };
    return table;
}

/// The demonstration's data, small, which every test reads in both dialects.
class ReportFigures : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        folder_.emplace();
        file_ = *folder_ / "reports.db";
        DemoOptions options;
        options.database = file_;
        options.addInPath = SOURCE_FOLDER;
        options.replaces = true;
        options.donors = 150;
        options.gifts = 150;
        options.crowd = 0;
        makeDemo(options);
        ReportDesk desk(Dialect::jet, Database::open(file_));
        // An event with guests and with reservations, paid and unpaid.
        event_ = toText(
            desk.cell("SELECT MAX(Id) FROM vw_events_events WHERE OutstandingRevenue > 0 AND "
                      "SponsorshipsOrdered > 0 AND ExpenseTotal > 0 AND NumberAttended > 0"));
        activity_ = toText(desk.cell("SELECT MAX(FKActivityId) FROM vw_events_reservation_lines "
                                     "WHERE FKEventId = " +
                                     event_));
    }
    static void TearDownTestSuite() { folder_.reset(); }

    /// Runs `test` in either dialect, for a user with these rights or with all.
    static void inBothDialects(const std::optional<std::vector<std::string>>& rights,
                               const std::function<void(ReportDesk&)>& test)
    {
        const qmevents::PinnedClock clock(demoDay());
        for (const Dialect dialect : {Dialect::sqlServer, Dialect::jet}) {
            SCOPED_TRACE(std::string(dialectName(dialect)));
            ReportDesk desk(dialect, Database::open(file_), rights);
            test(desk);
        }
    }
    static std::string named(std::string text)
    {
        text = qmevents::text::replaceAll(text, "{event}", event_);
        return qmevents::text::replaceAll(text, "{activity}", activity_);
    }
    static OpenReport openAsked(ReportDesk& desk, const Audited& report)
    {
        const OpenReport opened = desk.open(report.key, report.ofOneEvent ? event_ : "0");
        for (const auto& [filter, value] : report.settings) opened.set(filter, named(value));
        return opened;
    }

    static inline std::optional<qmevents::testing::TempFolder> folder_;
    static inline std::filesystem::path file_;
    static inline std::string event_, activity_;
};

// Adds up the rows of each group anew and compares: of figures, which alone are added up.
void expectSubtotalsToAddUp(const Printed& printed, const std::string& column)
{
    for (std::size_t i = 0; i < printed.lines.size(); ++i) {
        const PrintedLine& sum = printed.lines[i];
        if (sum.kind != "subtotal" && sum.kind != "total") continue;
        qmevents::Currency added;
        for (std::size_t j = i; j-- > 0;) {
            const PrintedLine& line = printed.lines[j];
            const bool begins = line.kind == "head" && line.level == sum.level;
            if (sum.kind == "subtotal" && begins) break;
            const Value cell = printed.cell(line, column);
            if (line.kind == "row" && !cell.isNull()) added += qmevents::toCurrency(cell);
        }
        const Value shown = printed.cell(sum, column);
        EXPECT_EQ(shown.isNull() ? qmevents::Currency() : qmevents::toCurrency(shown), added)
            << sum.caption;
    }
}

TEST_F(ReportFigures, AreThoseOfTheStore)
{
    inBothDialects({}, [](ReportDesk& desk) {
        const auto categories = toObject(call(desk.reports(), "Load"));
        const auto entries =
            getObject(toObject(call(categories, "Item", "events-reports")), "Reports");
        EXPECT_EQ(qmevents::toInt32(get(entries, "Count")), static_cast<int>(audited().size()));
        for (const Audited& report : audited()) {
            SCOPED_TRACE(report.key);
            const auto entry = toObject(call(entries, "Item", report.key));
            const OpenReport opened = openAsked(desk, report);
            EXPECT_EQ(toText(get(opened.run, "Title")), toText(get(entry, "Name")));
            EXPECT_EQ(toText(get(opened.run, "Description")), toText(get(entry, "Description")));
            const Printed printed = opened.print();
            ASSERT_GE(printed.lines.size(), 3U);
            for (const auto& [column, statement] : report.totals) {
                SCOPED_TRACE(column);
                EXPECT_EQ(printed.lines.back().kind, "total");
                const Value expected = desk.cell(named(statement));
                EXPECT_EQ(toText(printed.cell(printed.lines.back(), column)), toText(expected));
                EXPECT_NE(toText(expected), "0") << "the data proves nothing";
                if (column != "Attended") expectSubtotalsToAddUp(printed, column);
            }
        }
    });
}

TEST_F(ReportFigures, OfAnEventAreThoseThatTheEventItselfTells)
{
    inBothDialects({}, [](ReportDesk& desk) {
        const auto store =
            getObject(toObject(call(desk.module("Events"), "Objects", "Events")), "EventsManage");
        const auto event = toObject(call(store, "GetEvent", qmevents::toInt32(Value(event_))));
        struct Row {
            const char *what, *column, *figure;
        };
        constexpr Row rows[] = {
            {"Participants", "Number", "NumberParticipants"},
            {"Invited", "Number", "NumberInvited"},
            {"Accepted", "Number", "NumberAccepted"},
            {"Declined", "Number", "NumberDeclined"},
            {"Attended", "Number", "NumberAttended"},
            {"Reservations", "Number", "NumberReservations"},
            {"Reservations", "Expected", "ExpectedRevenue"},
            {"Reservations", "Actual", "ReservationsRevenue"},
            {"of these, sponsorships", "Number", "NumberSponsorshipsReserved"},
            {"of these, sponsorships", "Expected", "SponsorshipsRevenue"},
            {"Outstanding", "Expected", "OutstandingRevenue"},
            {"Donations", "Actual", "DonationsRevenue"},
            {"Expenses", "Actual", "TotalExpenses"},
            {"Net income", "Actual", "NetRevenue"},
            {"Income", "Expected", "RevenueGoal"},
            {"Income", "Actual", "CurrentRevenue"},
        };
        const Printed printed = desk.open("events-event-summary", event_).print();
        for (const auto& [name, column, figure] : rows) {
            const std::string what = name;
            SCOPED_TRACE(what + " " + column);
            const auto line =
                std::find_if(printed.lines.begin(), printed.lines.end(), [&](const auto& l) {
                    return l.kind == "row" && toText(printed.cell(l, "What")) == what;
                });
            ASSERT_NE(line, printed.lines.end());
            EXPECT_EQ(qmevents::toCurrency(printed.cell(*line, column)),
                      qmevents::toCurrency(get(event, figure)));
        }
    });
}

TEST_F(ReportFigures, OfGiftsAreForThoseWhoMayViewDonations)
{
    const std::string refused = "70 You do not have the right to view this report.";
    const auto isOfDonations = [](const std::string& key) {
        return key == "events-donor-summary" || key.find("donation") != std::string::npos;
    };
    std::map<std::string, std::vector<std::string>> columns;
    inBothDialects({}, [&](ReportDesk& desk) {
        for (const Audited& report : audited())
            columns[report.key] = openAsked(desk, report).print().keys;
    });
    inBothDialects({{"donations/view"}}, [&](ReportDesk& desk) {
        for (const Audited& report : audited())
            EXPECT_EQ(desk.failure([&] { desk.open(report.key, event_); }), refused) << report.key;
    });
    inBothDialects({{"events/view"}}, [&](ReportDesk& desk) {
        for (const Audited& report : audited()) {
            SCOPED_TRACE(report.key);
            if (isOfDonations(report.key)) {
                EXPECT_EQ(desk.failure([&] { desk.open(report.key); }), refused);
                continue;
            }
            const OpenReport opened = openAsked(desk, report);
            if (report.key == "events-top-events") {
                opened.set("rank", "net");
                EXPECT_EQ(opened.problem(),
                          "\"Top by\": \"Net income\" needs a right that you do not have.");
                opened.set("rank", "expenses");
            }
            const Printed printed = opened.print();
            std::vector<std::string> left = columns[report.key];
            std::erase_if(left, [&](const std::string& key) {
                return std::count(report.ofGifts.begin(), report.ofGifts.end(), key) > 0;
            });
            EXPECT_EQ(printed.keys, left);
            const bool says = std::count(printed.notes.begin(), printed.notes.end(),
                                         "Figures that you do not have the right to view are left "
                                         "out.") == 1;
            EXPECT_EQ(says, !report.ofGifts.empty() || report.key == "events-event-summary");
        }
        // A filter would tell what the columns do not.
        EXPECT_NE(desk.failure(
                      [&] { desk.open("events-event-reservation-list", event_).set("due", true); }),
                  "");
        const Printed summary = desk.open("events-event-summary", event_).print();
        for (const PrintedLine& line : summary.lines) {
            if (line.kind != "row") continue;
            const std::string what = toText(summary.cell(line, "What"));
            EXPECT_TRUE(what != "Donations" && what != "Income" && what != "Net income") << what;
            EXPECT_TRUE(what != "Reservations" || summary.cell(line, "Actual").isNull());
        }
    });
}

TEST_F(ReportFigures, OfSeveralEventsAreAddedUpFromTheirOwn)
{
    inBothDialects({}, [](ReportDesk& desk) {
        const std::string list =
            "(SELECT e.Id AS Id FROM events_event_info e WHERE e.Id < 12) AS chosen";
        const Printed printed = desk.open("events-event-reservation-list", 0, list).print();
        EXPECT_EQ(toText(printed.cell(printed.lines.back(), "Due")),
                  toText(desk.cell(
                      "SELECT SUM(OutstandingRevenue) FROM vw_events_events WHERE Id < 12")));
        expectSubtotalsToAddUp(printed, "Due");
        EXPECT_GT(std::count_if(printed.lines.begin(), printed.lines.end(),
                                [](const auto& line) { return line.kind == "subtotal"; }),
                  5);
        const Printed donors = desk.open("events-donor-summary", 0,
                                         "(SELECT n.id AS Id FROM donor_donors n WHERE n.id IN "
                                         "(3, 4)) AS chosen")
                                   .print();
        EXPECT_EQ(donors.lines.size(), 3U)
            << "donors of a list show even without a part in an event";
        EXPECT_EQ(desk.failure([&] { desk.open("events-list", 0, list); }).substr(0, 2), "5 ");
    });
}

} // namespace
} // namespace refhost
