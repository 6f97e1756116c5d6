#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "automation/clock.h"
#include "tests/host/session/fixture.h"
#include "tests/support/temp_folder.h"

namespace refhost {
namespace {

using qmevents::toInt32;

std::string column(const Ref<Object>& items, const char* member)
{
    std::string result;
    Value item;
    for (const auto walk = items->enumerate(); walk->next(item);) {
        const Value value = get(toObject(item), member);
        result += (value.isNull() ? "null" : toText(value)) + ";";
    }
    return result;
}

/// Donors, gifts and codes in either dialect.
struct HostData : HostFixture {
    explicit HostData(Dialect dialect) : HostFixture(dialect)
    {
        execute("INSERT INTO donor_donors (display, firstname, entitytype) "
                "VALUES ('Ann Abbot', 'Ann', 'Person')");
        execute("INSERT INTO donor_donors (display, deleted) VALUES ('Gone', 1)");
        for (const char* gift : {"1, 3, 5, 0", "1, 0, 5, 0", "1, 3, 0, 0", "1, 0, 5, 1"}) {
            execute("INSERT INTO donor_gifts (donorId, FKEventId, FKReservationId, deleted) "
                    "VALUES (" +
                    std::string(gift) + ")");
        }
        const std::string march = dialect == Dialect::jet ? "#2026-03-07#" : "'20260307'";
        const std::string may = dialect == Dialect::jet ? "#2026-05-01#" : "'20260501'";
        for (const std::string& payment : {"1, 40, " + march, "1, 12.3456, " + may,
                                           std::string("2, NULL, NULL"), "4, 100, " + may}) {
            execute("INSERT INTO donor_gifts_payments (giftId, actualAmount, actualDate) VALUES (" +
                    payment + ")");
        }
    }
};

TEST(DonorModule, GivesADonorOrNothing)
{
    for (const Dialect dialect : {Dialect::sqlServer, Dialect::jet}) {
        const HostData host(dialect);
        const auto manage = getObject(host.module("DONOR"), "DonorManage");
        const auto donor = toObject(call(manage, "GetDonor", 1));
        EXPECT_EQ(toText(get(donor, "Display")), "Ann Abbot");
        EXPECT_EQ(toText(get(donor, "FirstName")), "Ann");
        EXPECT_EQ(toText(get(donor, "City")), "");
        EXPECT_TRUE(get(donor, "Created").isNull());
        const auto small = toObject(call(manage, "GetSmallDonor", 1));
        EXPECT_EQ(toText(get(small, "EntityType")), "Person");
        for (const int id : {0, -1, 2, 99}) {
            EXPECT_TRUE(call(manage, "GetDonor", id).isNothing()) << id;
            EXPECT_TRUE(call(manage, "GetSmallDonor", id).isNothing()) << id;
        }
    }
}

TEST(DonorModule, DeletesADonorWithAllThatModulesKeepOrNothing)
{
    for (const Dialect dialect : {Dialect::sqlServer, Dialect::jet}) {
        HostData host(dialect);
        const auto manage = getObject(host.module("donor"), "DonorManage");
        bool fails = true;
        host.addIn.onEvent = [&](const Ref<Object>& event) {
            const auto data = getObject(event, "Data");
            EXPECT_EQ(toInt32(get(data, "EntityId")), 1);
            if (toText(get(event, "Key")) == "donor-delete-validate-and-confirm") {
                call(data, "AddConfirmationMessage", "Gone for ever.");
                return;
            }
            host.execute("DELETE FROM donor_gifts WHERE donorId = 1");
            if (fails) throw qmevents::Error(51, "Handler", "broken");
        };
        EXPECT_FALSE(toBool(call(manage, "DeleteDonor", 1)));
        EXPECT_EQ(host.frontEnd.seen.back(),
                  "ask Are you sure you want to delete Ann Abbot?\r\nGone for ever.");
        host.frontEnd.answers = {Button::yes, Button::yes};
        EXPECT_EQ(failureOf([&] { call(manage, "DeleteDonor", 1); }), "51 broken");
        EXPECT_EQ(toInt32(host.cell("SELECT COUNT(*) FROM donor_gifts")), 4);
        fails = false;
        EXPECT_TRUE(toBool(call(manage, "DeleteDonor", 1)));
        EXPECT_EQ(toInt32(host.cell("SELECT COUNT(*) FROM donor_gifts")), 0);
        EXPECT_TRUE(call(manage, "GetDonor", 1).isNothing());
        EXPECT_NE(failureOf([&] { call(manage, "DeleteDonor", 1); }), "");
        host.addIn.onEvent = nullptr;
    }
}

TEST(DonationModule, FindsPaymentsByConditionAndDeletesGifts)
{
    for (const Dialect dialect : {Dialect::sqlServer, Dialect::jet}) {
        const HostData host(dialect);
        const auto donations = getObject(getObject(host.app, "Modules", "Donation"), "Donations");
        const auto search = [&](const char* where, const char* order) {
            const auto criteria = toObject(call(donations, "GetNewDonationCriteria"));
            put(criteria, "CustomWhere", where);
            put(criteria, "CustomOrderBy", order);
            return toObject(call(donations, "GetDonationsBySearch", criteria));
        };
        const auto found = search("FKReservationId = 5", "ActualDate DESC");
        EXPECT_EQ(toInt32(get(found, "Count")), 3);
        EXPECT_EQ(column(found, "DonationAmount"), "12.3456;40;0;");
        EXPECT_EQ(column(found, "Id"), "1;1;2;");
        EXPECT_EQ(column(found, "ActualDate"), "5/1/2026;3/7/2026;null;");
        EXPECT_EQ(toInt32(get(search("FKReservationId = 5 OR 1 = 1", ""), "Count")), 3);
        EXPECT_NE(failureOf([&] { search("Nonsense = 5", ""); }), "");

        call(donations, "Delete", 1);
        call(donations, "Delete", 1); // a gift may be reached twice
        EXPECT_EQ(column(search("FKReservationId = 5", ""), "Id"), "2;");
        EXPECT_EQ(toText(host.cell("SELECT COUNT(*) FROM donor_gifts_payments")), "2");
        EXPECT_EQ(toText(host.cell("SELECT COUNT(*) FROM donor_gifts")), "4");
        EXPECT_EQ(failureOf([&] { call(donations, "Delete", 77); }),
                  "5 Invalid procedure call or argument (there is no gift with the id 77)");
    }
}

TEST(DonationModule, UnlinksWhatMatchedADeletedGift)
{
    for (const Dialect dialect : {Dialect::sqlServer, Dialect::jet}) {
        const HostData host(dialect);
        // Gift 2 matches the payment 1 of gift 1.
        host.execute("UPDATE donor_gifts SET FKMatch = 1 WHERE id = 2");
        host.execute("UPDATE donor_gifts_payments SET FKMatch = 2 WHERE id = 1");
        const auto donations = getObject(getObject(host.app, "Modules", "Donation"), "Donations");
        call(donations, "Delete", 2);
        EXPECT_EQ(toInt32(host.cell("SELECT FKMatch FROM donor_gifts_payments WHERE id = 1")), 0);
        call(donations, "Delete", 1);
        EXPECT_EQ(toInt32(host.cell("SELECT FKMatch FROM donor_gifts WHERE id = 2")), 0);
    }
}

TEST(MailingManage, CollectsADonorOnceAndShowsTheList)
{
    for (const Dialect dialect : {Dialect::sqlServer, Dialect::jet}) {
        HostData host(dialect);
        const qmevents::PinnedClock clock(qmevents::Date::of(2026, 3, 7, 15));
        host.execute("INSERT INTO donor_donors (display) VALUES ('Bo Brook')");
        const auto mailings = getObject(host.module("donor"), "MailingManage");
        call(mailings, "OpenMailingDialog");
        EXPECT_EQ(failureOf([&] { call(mailings, "OpenMailingDialog"); }),
                  "5 Invalid procedure call or argument (another mailing is still being "
                  "collected)");
        EXPECT_NE(failureOf([&] { call(mailings, "StartMailingProcess", "Event", "{K}"); }), "");
        std::string added;
        for (const int donor : {3, 1, 3, 2, 99, 0}) { // the second is deleted
            added += toText(call(mailings, "AddToMailingList", "{K}", donor)) + ";";
        }
        EXPECT_EQ(added, "True;True;True;False;False;False;");
        EXPECT_NE(failureOf([&] { call(mailings, "AddToMailingList", " ", 1); }), "");
        call(mailings, "CloseMailingDialog");
        EXPECT_NE(failureOf([&] { call(mailings, "CloseMailingDialog"); }), "");
        call(mailings, "StartMailingProcess", "Event", "{K}");
        EXPECT_EQ(host.frontEnd.seen,
                  std::vector<std::string>{"go obsidian://host/mailings?list={K}"});
        call(mailings, "StartMailingProcess", "Other", "it's none");

        EXPECT_EQ(column(getObject(mailings, "Lists"), "Key"), "it's none;{K};");
        const auto list = toObject(call(mailings, "GetList", "{k}"));
        EXPECT_EQ(toText(get(list, "Source")), "Event");
        EXPECT_EQ(toText(get(list, "CreatedBy")), "Ann Admin");
        EXPECT_EQ(toText(get(list, "CreateDate")), "3/7/2026 3:00:00 PM");
        EXPECT_EQ(toText(get(list, "DonorCount")), "2");
        EXPECT_EQ(column(getObject(list, "Donors"), "Display"), "Ann Abbot;Bo Brook;");
        const auto empty = toObject(call(mailings, "GetList", "it's none"));
        EXPECT_EQ(column(getObject(empty, "Donors"), "Display"), "");

        call(list, "Delete");
        EXPECT_TRUE(call(mailings, "GetList", "{K}").isNothing());
        EXPECT_EQ(toInt32(host.cell("SELECT COUNT(*) FROM mailing_list_donors")), 0);
        EXPECT_EQ(toInt32(host.cell("SELECT COUNT(*) FROM donor_donors")), 3);
    }
}

TEST(Provider, ListsCodesInTheirOrderAndHiddenOnesOnRequest)
{
    for (const Dialect dialect : {Dialect::sqlServer, Dialect::jet}) {
        const HostFixture host(dialect);
        const auto provider = getObject(host.app, "Provider");
        EXPECT_EQ(toInt32(call(provider, "GetDocumentType")), dialect == Dialect::jet ? 2 : 1);
        host.execute("INSERT INTO donor_funds ([value], visible, [order]) VALUES ('Later', 1, 2)");
        host.execute("INSERT INTO donor_funds ([value], visible, [order]) VALUES ('Old', 0, 1)");
        EXPECT_EQ(column(toObject(call(provider, "Codes", "Fund", true)), "Name"), "Old;Later;");
        EXPECT_EQ(column(toObject(call(provider, "Codes", "fund", false)), "Id"), "1;");
        EXPECT_EQ(toInt32(get(toObject(call(provider, "Codes", "giftsource", true)), "Count")), 0);
        EXPECT_EQ(failureOf([&] { call(provider, "Codes", "donor_donors", true); }).substr(0, 2),
                  "5 ");
    }
}

TEST(ActionsModule, RemovesTheAssignmentsOfARecordAlone)
{
    for (const Dialect dialect : {Dialect::sqlServer, Dialect::jet}) {
        const HostFixture host(dialect);
        for (const char* row : {"'Event', 12, 'call'", "'event', 12, 'write'", "'Event', 13, 'x'",
                                "'Donor', 12, 'y'"}) {
            host.execute("INSERT INTO actions_assignments (entitytype, entityid, subject) "
                         "VALUES (" +
                         std::string(row) + ")");
        }
        const auto actions = host.module("Actions");
        const auto criteria = toObject(call(actions, "NewActionCriteria"));
        put(criteria, "EntityType", "Event");
        put(criteria, "EntityId", 12);
        const auto found = toObject(call(actions, "GetAssignments", criteria));
        EXPECT_EQ(column(found, "Subject"), "call;write;");
        Value item;
        for (const auto walk = found->enumerate(); walk->next(item);) {
            call(actions, "DeleteAssignment", get(toObject(item), "Id"));
        }
        EXPECT_EQ(toInt32(get(toObject(call(actions, "GetAssignments", criteria)), "Count")), 0);
        EXPECT_EQ(toInt32(host.cell("SELECT COUNT(*) FROM actions_assignments")), 2);
        EXPECT_NE(failureOf([&] { call(actions, "DeleteAssignment", 1); }), "");
    }
}

TEST(ActionsModule, KeepsNotesAndTheUsersOwnReminders)
{
    HostFixture ann;
    const HostFixture ben(Dialect::jet, ann.database, "Ben");
    const auto note = toObject(call(ann.module("Actions"), "NewNote"));
    EXPECT_NE(failureOf([&] { call(note, "Save"); }), ""); // no donor yet
    put(note, "DonorId", 4);
    put(note, "Group", "Event");
    put(note, "Reference", 12);
    put(note, "Text", "Added <b>O'Neil</b>");
    call(note, "Save");
    EXPECT_EQ(toText(ben.cell("SELECT [note] FROM actions_interactions WHERE FKDonorId = 4 AND "
                              "reference = '12'")),
              "Added <b>O'Neil</b>");
    EXPECT_NE(failureOf([&] { call(note, "Save"); }), ""); // never twice

    const auto notes = toObject(call(ann.module("Actions"), "GetNotes", 4));
    EXPECT_EQ(column(notes, "Reference"), "12;");
    std::string commands;
    ann.addIn.onEvent = [&](const Ref<Object>& event) {
        const auto data = getObject(event, "Data");
        const std::string group = toText(get(getObject(data, "Interaction"), "group"));
        if (toText(get(event, "Key")) == "interaction-menu") {
            call(getObject(data, "ContextMenu"), "AppendItem", 8192, "View " + group, 10001);
        } else {
            commands += toText(get(data, "Command"));
        }
    };
    const auto entry = getObject(notes, "Item", 1);
    const auto menu = toObject(call(ann.module("Actions"), "GetNoteMenu", entry));
    EXPECT_EQ(column(getObject(menu, "Items"), "Text"), "View Event;");
    call(ann.module("Actions"), "RunNoteCommand", entry, 10001);
    EXPECT_EQ(commands, "10001");
    ann.addIn.onEvent = nullptr;

    const auto reminder = toObject(call(ann.module("Actions"), "GetNewReminder"));
    put(reminder, "Subject", "Book the hall");
    put(reminder, "DueDate", "2026-03-07");
    call(reminder, "Save");
    put(reminder, "Subject", "Book the big hall");
    call(reminder, "Save");
    EXPECT_EQ(column(getObject(ann.module("Actions"), "Reminders"), "Subject"),
              "Book the big hall;");
    EXPECT_EQ(column(getObject(ben.module("Actions"), "Reminders"), "Subject"), "");
}

TEST(DonorPage, IsFilledByTheModulesForEachDonor)
{
    HostData host(Dialect::jet);
    const auto donors = getObject(host.module("Quillmere"), "Donors");
    EXPECT_EQ(donors, getObject(host.module("donor"), "Donors"));
    const auto page = getObject(donors, "DetailsPage");
    host.addIn.onEvent = [&](const Ref<Object>& event) {
        if (toText(get(event, "Key")) != "donor-detailspage-tabinit") return;
        if (toText(get(event, "Data")) != "detail") return;
        const auto section = toObject(call(page, "GetNewSection"));
        put(section, "Title", "Events Info");
        const auto row = toObject(call(page, "GetNewSectionRow"));
        put(row, "Name", "Donor");
        put(row, "Value", get(getObject(page, "donor"), "Display"));
        call(getObject(section, "Rows"), "Add", row);
        call(getObject(getObject(page, "Tabs", "detail"), "Sections"), "Add", section,
             "EventsInfo");
    };
    for (int times = 0; times < 2; ++times) { // the second page begins empty
        EXPECT_EQ(toObject(call(donors, "OpenDetailsPage", 1)), page);
        const auto sections = getObject(getObject(page, "Tabs", "detail"), "Sections");
        EXPECT_EQ(toInt32(get(sections, "Count")), 1);
        const auto section = getObject(sections, "Item", "eventsinfo");
        EXPECT_EQ(column(getObject(section, "Rows"), "Value"), "Ann Abbot;");
    }
    EXPECT_TRUE(call(donors, "OpenDetailsPage", 99).isNothing());
    host.addIn.onEvent = nullptr;
}

/// A session whose add-in has a folder on disk.
struct FolderFixture : testing::Test {
    FolderFixture()
    {
        std::filesystem::create_directories(folder / "data");
        write("data/addin.xml",
              "<addin><configuration><value key=\"schema\"> 2 </value></configuration></addin>");
        session = std::make_unique<Session>(SessionOptions{.database = Database::inMemory(),
                                                           .frontEnd = &frontEnd,
                                                           .addInPath = folder.string(),
                                                           .parts = addIn.parts()});
        modules = getObject(session->app(), "Modules");
    }
    ~FolderFixture() override { session.reset(); }
    void write(const std::string& name, const std::string& text) const
    {
        std::ofstream(folder / name) << text;
    }
    const qmevents::testing::TempFolder folder;
    RecordingAddIn addIn;
    ScriptedFrontEnd frontEnd;
    std::unique_ptr<Session> session;
    Ref<Object> modules;
};

TEST_F(FolderFixture, EventsModuleTellsItsFolderVersionObjectsAndShowsDialogs)
{
    const auto events = getObject(modules, "Events");
    EXPECT_EQ(events, getObject(modules, "item", "events"));
    EXPECT_EQ(toText(get(events, "Path")), folder.string() + "/");
    const auto configuration = getObject(events, "Configuration");
    EXPECT_EQ(toText(call(configuration, "getValue", "schema")), "2");
    EXPECT_NE(failureOf([&] { call(configuration, "getValue", "none"); }).find("addin.xml"),
              std::string::npos);
    write("data/addin.xml", "<addin>");
    EXPECT_NE(failureOf([&] { call(configuration, "getValue", "schema"); }).find("addin.xml"),
              std::string::npos);
    EXPECT_EQ(getObject(events, "Objects", "workflow")->className(), "RecordingRoot");
    EXPECT_NE(failureOf([&] { get(events, "Objects", "Other"); }), "");

    call(events, "ShowDialog", "addevent", qmevents::Missing{}, qmevents::Missing{}, 300, 400);
    EXPECT_EQ(frontEnd.seen.front(), "open addevent");
    EXPECT_NE(failureOf([&] { getObject(modules, "Item", "mail"); }), "");
}

TEST_F(FolderFixture, MailingsAppendTheFilesOfModules)
{
    write("data/fields.xml", "<fields><field/></fields>");
    const auto mailings = getObject(getObject(modules, "Quillmere"), "Mailings");
    const auto fields = getObject(mailings, "FieldSchema");
    const std::string path = folder.string() + "\\data\\Fields.xml";
    call(fields, "AppendSchema", "Events", "events", path);
    call(fields, "AppendSchema", "Events", "events", path); // the second replaces the first
    EXPECT_EQ(column(getObject(fields, "Schemas"), "ModuleName"), "Events;");
    const auto schema = getObject(getObject(fields, "Schemas"), "Item", 1);
    EXPECT_EQ(toText(get(getObject(schema, "Document"), "xml")), "<fields><field/></fields>");
    EXPECT_NE(
        failureOf([&] { call(fields, "AppendSchema", "E", "e", path + "x"); }).find("Fields.xmlx"),
        std::string::npos);
}

TEST_F(FolderFixture, ReportsComeFromTheModulesAndTheirAddressesStayInTheFolder)
{
    const auto reports = getObject(getObject(modules, "Quillmere"), "Reports");
    addIn.onEvent = [&](const Ref<Object>& event) {
        const auto categories = getObject(reports, "Categories");
        if (toText(get(event, "Key")) == "reports-categories") {
            const auto category = toObject(call(reports, "GetNewCategory"));
            put(category, "Name", "Events Reports");
            call(categories, "Add", category, "events-reports");
        } else {
            const auto report = toObject(call(reports, "GetNewReport"));
            put(report, "Key", "events-list");
            const auto category = getObject(categories, "Item", "events-reports");
            call(getObject(category, "Reports"), "Add", report, "events-list");
        }
    };
    for (int times = 0; times < 2; ++times) {
        const auto categories = toObject(call(reports, "Load"));
        EXPECT_EQ(column(categories, "Name"), "Events Reports;");
    }
    addIn.onEvent = nullptr;
    const auto address = [&](const std::string& path) {
        return toText(call(reports, "GetReportTaskString", path, "events-event-summary", 12));
    };
    EXPECT_EQ(address(folder.string() + "/Cache\\Reports"),
              "obsidian://host/report?folder=Cache/Reports&key=events-event-summary&id=12");
    for (const char* outside : {"/etc", "/../other", "/Cache\\..\\..\\other"}) {
        const std::string path = outside[1] == 'e' ? outside : folder.string() + outside;
        EXPECT_NE(failureOf([&] { address(path); }), "") << path;
    }
}

} // namespace
} // namespace refhost
