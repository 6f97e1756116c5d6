#include "automation/clock.h"
#include "tests/host/lists/list_host.h"

namespace refhost {
namespace {

constexpr Dialect dialects[] = {Dialect::sqlServer, Dialect::jet};

TEST(ListFilters, HoldWhatTheySayInBothDialects)
{
    struct {
        const char *key, *operation;
        std::vector<std::string> values;
        const char* held;
    } const cases[] = {
        {"donorname", "contains", {"o"}, "1 2 "},
        {"donorname", "contains", {"o'h"}, "1 "},
        {"donorcity", "contains", {"0%"}, "1 "},
        {"donorcity", "contains", {"_"}, ""},
        {"donorcity", "contains", {"[west]"}, "1 "},
        {"donorcity", "starts", {"west"}, "2 "},
        {"donorname", "is", {"cy"}, "3 "},
        {"donorname", "is", {"{1}"}, ""},
        {"donorcity", "blank", {}, "3 4 "},
        {"donorcity", "notblank", {}, "1 2 "},
        {"donorcreated", "from", {"2026-02-01"}, "2 4 "},
        {"donorcreated", "until", {"2026-01-31"}, "1 3 "},
        {"donorcreated", "between", {"2026-01-31", "2026-02-01"}, "1 2 4 "},
        {"giftsum", "atleast", {"20.00"}, "1 2 "},
        {"giftsum", "between", {"20", "109.49"}, "2 "},
        {"giftsum", "exactly", {"109.5"}, "1 "},
        {"giftcount", "atmost", {"0"}, "3 4 "},
        {"lastgift", "blank", {}, "3 4 "},
        {"gavefund", "noneof", {"3"}, "1 2 3 4 "},
        {"donortypes", "anyof", {"it's", "Person"}, ""},
        {"largest", "atleast", {"20"}, "1 2 "},
        {"gifts:Gave for event", "anyof", {"8", "9"}, "1 "},
        {"gifts:Gave for event", "noneof", {"8"}, "2 3 4 "},
        {"reached", "anyof", {"50", "100"}, "1 "},
    };
    for (const Dialect dialect : dialects) {
        const ListHost host(dialect);
        for (const auto& [key, operation, values, held] : cases) {
            SCOPED_TRACE(std::string(dialectName(dialect)) + " " + key + " " + operation);
            EXPECT_EQ(host.held(key, operation, values), held);
        }
    }
}

TEST(ListFilters, NameABadValueInsteadOfReading)
{
    struct {
        const char *key, *operation;
        std::vector<std::string> values;
        const char* fault;
    } const cases[] = {
        {"donorname", "contains", {""}, "Enter what to look for.;"},
        {"donorname", "is", {"a\nb"}, "Control characters cannot be looked for.;"},
        {"donorname", "is", {std::string(256, 'x')}, "At most 255 characters can be looked for.;"},
        {"donorcreated", "from", {}, "Enter a date.;"},
        {"donorcreated", "until", {"2026-02-30"}, "“2026-02-30” is not a date.;"},
        {"donorcreated", "until", {"9999-12-31"}, "The year must lie between 1753 and 9998.;"},
        {"giftsum", "between", {"1"}, "Enter an amount.;"},
        {"giftsum", "exactly", {"1 OR 1"}, "“1 OR 1” is not an amount.;"},
        {"giftcount", "atleast", {"99999999999999999999"}, "“99999999999999999999” is too large.;"},
        {"gavefund", "anyof", {}, "Choose at least one.;"},
        {"gavefund", "anyof", {"1) OR (1"}, "“1) OR (1” is not one of the choices.;"},
        {"giftsum", "contains", {"1"}, "This filter cannot compare by “contains”.;"},
    };
    const ListHost host;
    for (const auto& [key, operation, values, fault] : cases) {
        SCOPED_TRACE(fault);
        EXPECT_EQ(host.held(key, operation, values), fault);
    }
}

TEST(SmartLists, JoinFiltersSortByValueAndGiveRowsByRange)
{
    for (const Dialect dialect : dialects) {
        const ListHost host(dialect);
        const auto list = host.newList();
        put(list, "Columns", textsAsArray({"donorname", "giftsum", "donorcreated"}));
        call(list, "AddFilter", "giftsum", "atleast", "10");
        call(list, "AddFilter", "donorname", "is", "Di");
        EXPECT_EQ(keysOf(host.run(list)), "");
        put(list, "MatchAny", true);
        put(list, "Sort", "giftsum");
        put(list, "Descending", true);
        const auto result = host.run(list);
        EXPECT_EQ(toInt32(get(result, "Count")), 3);
        EXPECT_EQ(column(getObject(result, "Columns"), "Kind"), "text;money;date;");
        EXPECT_EQ(keysOf(result), "1 2 4 ");
        EXPECT_EQ(keysOf(result, 4), "109.5 20 0 ");
        const Value range = call(result, "Rows", 1, 1);
        EXPECT_EQ(toText(range.array()->items.at(3)), "Bo");
        EXPECT_TRUE(range.array()->items.at(4).is(qmevents::ValueKind::currency));
        EXPECT_EQ(range.array()->items.size(), 6U);
        EXPECT_EQ(call(result, "Rows", 3, 10).array()->items.size(), 0U);
        // Ties are broken by the record's key, upwards.
        call(list, "ClearFilters");
        put(list, "Sort", "donorcity");
        put(list, "Descending", false);
        EXPECT_EQ(keysOf(host.run(list)).substr(0, 4), "4 3 ");
    }
}

TEST(SmartLists, ListGiftsAndPledgesWithTheirDonors)
{
    for (const Dialect dialect : dialects) {
        const ListHost host(dialect);
        const auto gifts = host.run(host.newList("donations"));
        EXPECT_EQ(keysOf(gifts), "1 2 3 ");
        EXPECT_EQ(keysOf(gifts, 1), "1 1 2 ");
        EXPECT_EQ(keysOf(gifts, 2), "7 8 7 ");
        const auto pledges = host.newList("pledges");
        put(pledges, "Columns", textsAsArray({"giftdonor", "giftpledge", "giftamount"}));
        EXPECT_EQ(keysOf(host.run(pledges), 4), "Yes ");
        EXPECT_EQ(keysOf(host.run(pledges), 5), "20 ");
    }
}

TEST(SmartLists, CountByThePeriodsAndFiscalYearsThatUsersSet)
{
    const qmevents::PinnedClock clock(qmevents::Date::of(2026, 3, 15));
    for (const Dialect dialect : dialects) {
        const ListHost host(dialect);
        const auto ofFirst = [&] { return host.held("gifts", "atleast", {"1"}); };
        EXPECT_EQ(ofFirst(), ""); // nothing falls into a period that is not set
        const auto lists = host.lists();
        EXPECT_TRUE(toBool(call(lists, "SetPeriod", 1, "2026-01-01", "2026-01-15")));
        EXPECT_EQ(ofFirst(), "1 2 ");
        EXPECT_FALSE(toBool(call(lists, "SetPeriod", 1, "2026-02-01", "2026-01-15")));
        EXPECT_FALSE(toBool(call(lists, "SetPeriod", 1, "2026-02-01", "")));
        EXPECT_EQ(host.frontEnd.seen,
                  (std::vector<std::string>{"user error Period 1 ends before it begins.|",
                                            "user error Period 1 needs a first and a last day.|"}));
        EXPECT_NE(failureOf([&] { call(lists, "SetPeriod", 5, "", ""); }), "");

        std::string edited(R"(<listbuilder type="donors">
            <field name="gifts" caption="Gifts" kind="number"><value>(SELECT COUNT(*)
            FROM donor_gifts g WHERE g.donorId = {id} AND g.created BETWEEN
            {PREVIOUSFISCALYEARSTART} AND {PREVIOUSFISCALYEAREND})</value></field></listbuilder>)");
        host.writeFile(edited);
        call(lists, "GetSchema", "donors");
        EXPECT_EQ(ofFirst(), "");
        const auto quillmere = getObject(getObject(host.session->app(), "Modules"), "Quillmere");
        call(getObject(quillmere, "Settings"), "SetFiscalYearStart", 2, 1);
        EXPECT_EQ(ofFirst(), "1 2 "); // 2025-02-01 to 2026-01-31
    }
}

} // namespace
} // namespace refhost
