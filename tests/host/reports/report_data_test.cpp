#include "tests/host/reports/report_desk.h"

namespace refhost {
namespace {

/// A gala with a few reservations, made by hand.
class ReportData : public ::testing::TestWithParam<Dialect> {
protected:
    ReportData()
    {
        const std::string day =
            GetParam() == Dialect::jet ? "#2026-02-14 18:30:00#" : "'2026-02-14T18:30:00'";
        for (const char* name : {"Ida", "Otto", "<i>Uma</i>"})
            execute("INSERT INTO donor_donors (display) VALUES ('" + std::string(name) + "')");
        execute("INSERT INTO events_event_info (Name, StartDateTime) VALUES "
                "('<b>Gala</b> & {EventId}', " +
                day + ")");
        const std::string asks =
            R"(<fields><field name="Meal" type="2"/><field name="Vegan" type="6"/></fields>)";
        execute(
            "INSERT INTO events_event_activities (FKEventId, Name, ListPrice, QuantityAvailable, "
            "ReservationInfo) VALUES (1, 'Seat', 20, 4, '" +
            asks + "')");
        for (const char* donor : {"1", "2", "3"})
            execute("INSERT INTO events_event_reservations (FKEventId, FKDonorId, AmountPaid, "
                    "ReservationDate) VALUES (1, " +
                    std::string(donor) + ", 30, " + day + ")");
        line(1, 2,
             "<fields><field type=\"2\" name=\"Meal\"><value><![CDATA[Fish & ]]><![CDATA[chips]]>"
             "</value></field><field><name>vegan</name><type>6</type><value>0</value></field></"
             "fields>");
        line(2, 1,
             "<fields><field name=\"Vegan\" type=\"6\"><value>1</value></field>"
             "<field name=\"Coat\" type=\"1\"><value>red</value></field></fields>");
        line(3, 1, "<fields><broken");
    }
    void execute(const std::string& sql) { desk_.execute(sql); }
    void line(int reservation, int quantity, const std::string& info)
    {
        execute("INSERT INTO events_event_reservations_activities (FKReservationId, FKActivityId, "
                "Quantity, Price, ReservationInfo) VALUES (" +
                std::to_string(reservation) + ", 1, " + std::to_string(quantity) + ", 20, '" +
                info + "')");
    }

    qmevents::PinnedClock clock_{qmevents::Date::of(2026, 11, 21, 12)};
    ReportDesk desk_{GetParam(), Database::inMemory()};
};
INSTANTIATE_TEST_SUITE_P(, ReportData, ::testing::Values(Dialect::sqlServer, Dialect::jet),
                         nameOfDialect);

TEST_P(ReportData, ShowAnswersInAColumnForEachQuestionOrInOneText)
{
    const OpenReport report = desk_.open("events-event-activity-reservation-list", 1);
    EXPECT_EQ(report.problem(), "\"Activity\": a value is needed.");
    report.set("activity", 1);
    const Printed printed = report.print();
    EXPECT_EQ(
        printed.texts(),
        (std::vector<std::string>{
            "head 0 <b>Gala</b> & {EventId}, 2/14/2026 6:30 PM||||||||", "head 1 Seat||||||||",
            "row 2|<i>Uma</i>|2/14/2026|1|20||||", "row 2|Ida|2/14/2026|2|40|Fish & chips|No||",
            "row 2|Otto|2/14/2026|1|20||Yes|red|", "total 0 3 reservations|||4|80||||"}));
    EXPECT_EQ(printed.notes, (std::vector<std::string>{
                                 "Event: <b>Gala</b> & {EventId} (2/14/2026)", "Activity: Seat",
                                 "Some reservation fields cannot be read and are left out."}));
    const Printed inOne = desk_.open("events-event-reservation-list-by-activity", 1).print();
    EXPECT_EQ(toText(inOne.cell(inOne.lines[3], "Details")), "Meal: Fish & chips; vegan: No");
}

TEST_P(ReportData, ShowWhatIsDueOfEachReservationAndNeverLessThanNothing)
{
    const OpenReport report = desk_.open("events-event-reservation-list", 1);
    const auto due = [&](const Printed& printed) {
        std::vector<std::string> texts;
        for (const PrintedLine& line : printed.lines) {
            if (line.kind != "head") texts.push_back(toText(printed.cell(line, "Due")));
        }
        return texts;
    };
    EXPECT_EQ(due(report.print()), (std::vector<std::string>{"0", "10", "0", "10"}));
    EXPECT_EQ(report.print().lines[1].link, 0);
    EXPECT_EQ(report.print().lines[0].link, 1);
    report.set("due", true);
    EXPECT_EQ(due(report.print()), (std::vector<std::string>{"10", "10"}));
}

TEST_P(ReportData, TellOfWhatIsNotThereOnceAndWithoutItsComma)
{
    // Without a campaign: the event's reservations, and gifts that name none or one that is gone.
    for (const char* campaign : {"NULL", "0", "9"}) {
        execute("INSERT INTO donor_gifts (donorId, FKCampaign, FKEventId, FKReservationId, "
                "deleted) VALUES (3, " +
                std::string(campaign) + ", 0, 0, 0)");
        const std::string day = GetParam() == Dialect::jet ? "#2026-05-01#" : "'20260501'";
        execute("INSERT INTO donor_gifts_payments (giftId, actualAmount, actualDate) "
                "SELECT MAX(g.id), 5, " +
                day + " FROM donor_gifts g");
    }
    execute("INSERT INTO donor_campaigns ([value]) VALUES ('Spring')");
    execute("INSERT INTO events_event_info (Name, FKCampaignId) VALUES ('Walk', 1)");
    execute("INSERT INTO events_event_reservations (FKEventId, FKDonorId, AmountPaid) "
            "VALUES (2, 1, 7)");
    const OpenReport report = desk_.open("events-eventreservations-donation-history-by-campaign");
    for (const char* filter : {"from", "to"}) report.set(filter, "");
    report.set("gifts", "all");
    std::vector<std::string> captions;
    for (const PrintedLine& line : report.print().lines) {
        if (!line.caption.empty()) captions.push_back(line.kind + " " + line.caption);
    }
    EXPECT_EQ(captions,
              (std::vector<std::string>{"head Without a campaign",
                                        "subtotal Without a campaign: 9 entries, 3 donors",
                                        "head Spring", "subtotal Spring: 1 entry, 1 donor",
                                        "total All campaigns: 10 entries, 3 donors"}));

    execute("INSERT INTO donor_list_assignedto ([value]) VALUES ('Boss')");
    execute("INSERT INTO events_event_tasks (FKEventId, Name, FKAssignedToId, Completed) "
            "VALUES (1, 'Call', 1, 0)");
    const Printed summary = desk_.open("events-event-summary", 1).print();
    EXPECT_EQ(toText(summary.cell(summary.lines.back(), "Details")), "Boss");
}

TEST_P(ReportData, TellWhichFilterHasNoProperValue)
{
    struct Case {
        const char *report, *filter;
        Value value;
        const char* problem;
    };
    const Case cases[] = {
        {"events-list", "from", "soon",
         "\"Events from\": \"soon\" is no day that can be searched for."},
        {"events-list", "from", qmevents::Date::of(150, 1, 1),
         "\"Events from\": \"\" is no day that can be searched for."},
        {"events-list", "to", "2025-12-31", "\"Events to\": 12/31/2025 is before 1/1/2026."},
        {"events-list", "category", 99, "\"Category\": \"99\" is none of the choices."},
        {"events-list", "category", "1 OR 1 = 1",
         "\"Category\": \"1 OR 1 = 1\" is none of the choices."},
        {"events-top-events", "many", "", "\"How many events\": a value is needed."},
        {"events-top-events", "many", 2.5,
         "\"How many events\": \"2.5\" is no whole number from 1 to 100."},
        {"events-top-events", "rank", "luck", "\"Top by\": \"luck\" is none of the choices."},
        {"events-event-participant-list", "status", 7, "\"Status\": \"7\" is none of the choices."},
        {"events-event-participant-list", "attended", "perhaps",
         "\"Only those who attended\": the value cannot be read."},
        {"events-event-participant-list", "event", qmevents::Null{},
         "\"Event\": a value is needed."},
        {"events-event-participant-list", "event", "1e99", "\"Event\": \"1e99\" is no event."},
    };
    for (const auto& [key, filter, value, problem] : cases) {
        SCOPED_TRACE(problem);
        const OpenReport report = desk_.open(key, 1);
        report.set(filter, value);
        EXPECT_EQ(report.problem(), problem);
        EXPECT_EQ(toText(get(toObject(call(getObject(report.run, "Filters"), "Item", filter)),
                             "Problem")),
                  problem);
        EXPECT_EQ(qmevents::toInt32(get(getObject(report.run, "Lines"), "Count")), 0);
    }
    const OpenReport guests = desk_.open("events-event-participant-list", 1);
    for (const char* answer : {"no", " Yes "}) {
        guests.set("attended", answer);
        EXPECT_EQ(guests.problem(), "") << answer;
    }
    EXPECT_EQ(guests.print().notes.at(1), "Only those who attended: Yes");
    const OpenReport list = desk_.open("events-list");
    EXPECT_EQ(list.print().notes.at(0), "Event date: 1/1/2026 to 12/31/2026");
    list.set("to", "2026-02-14"); // the whole day counts
    EXPECT_EQ(list.print().lines.size(), 3U);
    list.set("from", "2026-02-15");
    list.set("to", qmevents::Null{});
    EXPECT_EQ(list.print().lines.size(), 1U);
    EXPECT_EQ(list.print().notes.at(0), "Event date: from 2/15/2026");
}

TEST_P(ReportData, SayThatTheEventIsGone)
{
    const std::string gone =
        "The event no longer exists. It may have been deleted by another user.";
    const OpenReport open = desk_.open("events-event-summary", 1);
    EXPECT_FALSE(open.print().lines.empty());
    execute("DELETE FROM events_event_info WHERE Id = 1");
    EXPECT_EQ(open.problem(), gone);
    EXPECT_EQ(qmevents::toInt32(get(getObject(open.run, "Lines"), "Count")), 0);
    const auto later = toObject(
        call(desk_.reports(), "Open", "Cache/Reports", "events-event-participant-list", 1));
    EXPECT_EQ(toText(get(later, "Problem")), gone);
}

TEST_P(ReportData, WorkOnTheDonorsOfASavedList)
{
    const auto lists = getObject(desk_.module("Quillmere"), "Smartlists");
    for (const char* name : {"Friends", "Others"}) {
        const auto list = toObject(call(lists, "GetNewList", "donors"));
        qmevents::put(list, "Name", name);
        ASSERT_TRUE(qmevents::toBool(call(lists, "Save", list)));
    }
    for (const Value& listed : {Value(2), Value()}) {
        const OpenReport report = desk_.open("events-donor-summary", 0, listed);
        report.set("list", 1);
        const Printed printed = report.print();
        EXPECT_EQ(printed.lines.size(), 4U); // the donors and their total
        EXPECT_EQ(printed.notes.at(0), "Donors: Friends");
        report.set("list", 3);
        EXPECT_EQ(report.problem(), "\"Donors\": \"3\" is none of the lists.");
    }
    EXPECT_EQ(desk_.open("events-donor-summary", 0, 2).print().notes.at(0), "Donors: Others");
    const auto broken = toObject(call(lists, "GetList", 2));
    call(broken, "AddFilter", "gone", "is", "x");
    ASSERT_TRUE(qmevents::toBool(call(lists, "Save", broken, true)));
    const std::string problem = desk_.open("events-donor-summary", 0, 2).problem();
    EXPECT_EQ(problem.find("\"Donors\": the list \"Others\" cannot be used: "), 0U) << problem;
}

TEST_P(ReportData, OfferWhatCanBeChosenForTheEvent)
{
    execute("INSERT INTO events_event_info (Name) VALUES ('Other')");
    const OpenReport report = desk_.open("events-event-activity-reservation-list");
    const auto choices = [&](const char* filter) {
        std::string names;
        const auto all =
            getObject(toObject(call(getObject(report.run, "Filters"), "Item", filter)), "Choices");
        const auto walk = all->enumerate();
        for (Value choice; walk->next(choice);)
            names += toText(get(toObject(choice), "Name")) + ";";
        return names;
    };
    EXPECT_EQ(choices("event"), "<b>Gala</b> & {EventId} (2/14/2026);Other;");
    EXPECT_EQ(choices("activity"), "");
    report.set("event", 1);
    EXPECT_EQ(choices("activity"), "Seat;");
    report.set("event", 2);
    report.set("activity", 1);
    EXPECT_EQ(report.problem(), "\"Activity\": \"1\" is none of the choices.");
}

} // namespace
} // namespace refhost
