#include <gtest/gtest.h>

#include "tests/host/session/fixture.h"

namespace refhost {
namespace {

using qmevents::toInt32;

std::string namesOf(const Ref<Object>& items, const char* member = "Name")
{
    std::string names;
    Value item;
    for (const auto walk = items->enumerate(); walk->next(item);) {
        names += toText(get(toObject(item), member)) + ";";
    }
    return names;
}

TEST(Settings, ListWhatTheUserMayOpenAndOpenIt)
{
    HostFixture host;
    host.addIn.onEvent = [&](const Ref<Object>& event) {
        if (toText(get(event, "Key")) != "settings-categories") return;
        const auto settings = getObject(host.module("Quillmere"), "Settings");
        for (const char* right : {"events/settings", "nobody/has"}) {
            const auto entry = toObject(call(settings, "GetNewCategory"));
            put(entry, "Name", right);
            put(entry, "Script", "App.Shell.Navigate \"obsidian://events/events-settings\"");
            put(entry, "Operation", right);
            call(getObject(event, "Data"), "Add", entry, right);
        }
    };
    const auto settings = getObject(host.module("Quillmere"), "Settings");
    EXPECT_EQ(namesOf(toObject(call(settings, "Load")), "Key"), "host-rights;host-codes;;");
    host.frontEnd.seen.clear();
    call(settings, "Open", "events/settings");
    call(settings, "Open", "host-codes");
    EXPECT_EQ(host.frontEnd.seen, (std::vector<std::string>{"go obsidian://events/events-settings",
                                                            "go obsidian://host/codes"}));
    UserStore(host.session->sql()).revoke(1, "settings/edit");
    for (const char* key : {"nobody/has", "host-codes", "nothing"}) {
        EXPECT_EQ(failureOf([&] { call(settings, "Open", key); }).substr(0, 2), "5 ") << key;
    }
    host.addIn.onEvent = nullptr;
}

TEST(Settings, BeginAFiscalYearOnADayThatEveryYearHas)
{
    const HostFixture host;
    const auto settings = getObject(host.module("Quillmere"), "Settings");
    const auto start = [&] {
        return toText(get(settings, "FiscalYearMonth")) + "/" +
               toText(get(settings, "FiscalYearDay"));
    };
    EXPECT_EQ(start(), "1/1");
    call(settings, "SetFiscalYearStart", 7, 1);
    for (const auto& [month, day] : {std::pair{2, 29}, {4, 31}, {0, 1}, {13, 1}, {1, 0}}) {
        EXPECT_NE(
            failureOf([&, m = month, d = day] { call(settings, "SetFiscalYearStart", m, d); }), "");
    }
    EXPECT_EQ(start(), "7/1");
    EXPECT_EQ(toText(get(host.document(), "Setting", "fiscal-year-month")), "7");
    UserStore(host.session->sql()).revoke(1, "settings/edit");
    EXPECT_NE(failureOf([&] { call(settings, "SetFiscalYearStart", 1, 1); }), "");
}

TEST(Codes, AreKeptInOrderUnderNamesOfTheirOwn)
{
    for (const Dialect dialect : {Dialect::sqlServer, Dialect::jet}) {
        const HostFixture host(dialect);
        const auto codes = getObject(host.module("Quillmere"), "Codes");
        const auto names = [&](const char* list) {
            return namesOf(toObject(call(codes, "Items", list)));
        };
        for (const char* list : {"fund", "campaign", "appeal", "assignee"}) {
            EXPECT_EQ(toText(call(codes, "Add", list, " One's ", "first")), "");
            EXPECT_EQ(toText(call(codes, "Add", list, "ONE'S")),
                      "There is another one called One's.");
            EXPECT_EQ(toText(call(codes, "Add", list, " ")), "A name is required.");
            EXPECT_EQ(toText(call(codes, "Add", list, "Two")), "");
            EXPECT_EQ(toText(call(codes, "Add", list, "Three")), "");
            call(codes, "Move", list, 3, -1);
            call(codes, "Move", list, 1, -1); // is the first already
            EXPECT_EQ(names(list), "One's;Three;Two;");
            EXPECT_EQ(toText(call(codes, "Rename", list, 3, "two")),
                      "There is another one called Two.");
            EXPECT_EQ(toText(call(codes, "Rename", list, 3, "THREE", "x")), "");
            call(codes, "SetVisible", list, 3, false);
            EXPECT_EQ(namesOf(toObject(call(codes, "Items", list)), "Visible"), "True;False;True;");
            EXPECT_NE(failureOf([&] { call(codes, "Rename", list, 99, "x"); }), "");
        }
        EXPECT_NE(failureOf([&] { call(codes, "Items", "donor_donors"); }), "");
        UserStore(host.session->sql()).revoke(1, "settings/edit");
        EXPECT_EQ(failureOf([&] { call(codes, "Delete", "fund", 1); }).substr(0, 3), "70 ");
        EXPECT_EQ(names("fund"), "One's;THREE;Two;"); // may still be read
    }
}

TEST(Codes, GoWithWhatRefersToThemOrNotAtAll)
{
    const struct {
        const char *list, *table, *column, *reference, *uses;
    } cases[] = {
        {"fund", "donor_funds", "FKFundId", "FKFund",
         "donor_gifts 1;donor_gifts_payments 1;garden_beds 2;"},
        {"campaign", "donor_campaigns", "FKCampaignId", "FKCampaign",
         "donor_gifts 1;garden_beds 2;"},
        {"appeal", "donor_list_gifts_sources", "FKAppealId", "FKSource",
         "donor_gifts 1;garden_beds 2;"},
        {"assignee", "donor_list_assignedto", "FKAssignedToId", "",
         "actions_assignments 1;garden_beds 2;"},
    };
    for (const Dialect dialect : {Dialect::sqlServer, Dialect::jet}) {
        for (const auto& one : cases) {
            SCOPED_TRACE(one.list);
            HostFixture host(dialect);
            const auto codes = getObject(host.module("Quillmere"), "Codes");
            call(codes, "Add", one.list, "Spring");
            call(codes, "Add", one.list, "Autumn");
            const std::string column = one.column;
            host.execute("CREATE TABLE garden_beds (" + column +
                         (dialect == Dialect::jet ? " LONG)" : " INT)"));
            for (const char* id : {"1", "1", "2"}) {
                host.execute("INSERT INTO garden_beds (" + column + ") VALUES (" + id + ")");
            }
            if (one.reference[0] != 0) {
                const std::string gift =
                    std::string("INSERT INTO donor_gifts (donorId, deleted, ") + one.reference;
                host.execute(gift + ") VALUES (1, 0, 1)");
                host.execute(gift + ") VALUES (1, 1, 1)");
            }
            host.execute("INSERT INTO donor_gifts_payments (giftId, FKFund) VALUES (1, 1)");
            host.execute("INSERT INTO actions_assignments (entitytype, entityid, FKAssignedToId) "
                         "VALUES ('x', 1, 1)");
            std::string uses;
            Value use;
            const auto found = toObject(call(codes, "Uses", one.list, 1));
            for (const auto walk = found->enumerate(); walk->next(use);) {
                uses += toText(get(toObject(use), "Table")) + " " +
                        toText(get(toObject(use), "Count")) + ";";
            }
            EXPECT_EQ(uses, one.uses);

            bool fails = true;
            host.addIn.onEvent = [&](const Ref<Object>& event) {
                EXPECT_EQ(toText(get(event, "Key")), "attribute-delete");
                const auto data = getObject(event, "Data");
                EXPECT_EQ(toText(get(data, "EntityType")), one.table);
                EXPECT_EQ(toInt32(get(data, "EntityId")), 1);
                EXPECT_FALSE(qmevents::toBool(call(host.document(), "BeginTrans")));
                host.execute("UPDATE garden_beds SET " + column + " = 0 WHERE " + column + " = 1");
                if (fails) throw qmevents::Error(51, "Garden", "frost");
            };
            const auto left = [&] {
                return toText(
                    host.cell("SELECT COUNT(*) FROM garden_beds WHERE " + column + " = 1"));
            };
            EXPECT_EQ(failureOf([&] { call(codes, "Delete", one.list, 1); }), "51 frost");
            EXPECT_EQ(namesOf(toObject(call(codes, "Items", one.list))), "Spring;Autumn;");
            EXPECT_EQ(left(), "2");
            fails = false;
            call(codes, "Delete", one.list, 1);
            EXPECT_EQ(namesOf(toObject(call(codes, "Items", one.list))), "Autumn;");
            EXPECT_EQ(left(), "0");
            if (one.reference[0] != 0) {
                EXPECT_EQ(toText(host.cell(std::string("SELECT COUNT(*) FROM donor_gifts WHERE ") +
                                           one.reference + " <> 0")),
                          "0");
            }
            host.addIn.onEvent = nullptr;
        }
    }
}

} // namespace
} // namespace refhost
