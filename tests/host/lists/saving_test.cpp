#include "automation/clock.h"
#include "tests/host/lists/list_host.h"

namespace refhost {
namespace {

TEST(SavedLists, ComeBackAsTheyWereSaved)
{
    const ListHost host;
    const auto list = host.newList();
    put(list, "Name", "  <Friends> & \"co\" ");
    put(list, "MatchAny", true);
    put(list, "Columns", textsAsArray({"donorname", "gifts"}));
    put(list, "Sort", "gifts");
    put(list, "Descending", true);
    call(list, "AddFilter", "donorname", "contains", "<b> ä ");
    call(list, "AddFilter", "gifts:Gave for event", "anyof", textsAsArray({"7", "8"}));
    EXPECT_TRUE(toBool(call(host.lists(), "Save", list)));
    const auto again = toObject(call(host.lists(), "GetList", toInt32(get(list, "Id"))));
    EXPECT_EQ(toText(get(again, "Name")), "<Friends> & \"co\"");
    EXPECT_EQ(toText(get(again, "Owner")), "Ann Admin");
    EXPECT_TRUE(toBool(get(again, "MatchAny")) && toBool(get(again, "Descending")));
    EXPECT_EQ(toText(get(again, "Sort")), "gifts");
    EXPECT_EQ(get(again, "Columns").array()->items.size(), 2U);
    const auto filters = getObject(again, "Filters");
    EXPECT_EQ(column(filters, "Caption"), "Name;Gave for event;");
    EXPECT_EQ(toText(get(toObject(get(filters, "Item", 1)), "Values").array()->items.at(0)),
              "<b> ä ");
    call(host.lists(), "Delete", toInt32(get(list, "Id")));
    EXPECT_TRUE(call(host.lists(), "GetList", toInt32(get(list, "Id"))).isNothing());
}

TEST(SavedLists, AreCalledDifferentlyWithinAType)
{
    const ListHost host;
    const auto saved = [&](const char* type, const std::string& name) {
        const auto list = host.newList(type);
        put(list, "Name", name);
        const bool done = toBool(call(host.lists(), "Save", list));
        return done ? "saved" : host.frontEnd.seen.back();
    };
    struct {
        const char* type;
        std::string name, outcome;
    } const cases[] = {
        {"donors", "Friends", "saved"},
        {"donations", "Friends", "saved"},
        {"donors", " friends ", "user error There is a list called \"friends\" already.|"},
        {"donors", " ", "user error The list's name is required.|"},
        {"donors", std::string(101, 'x'),
         "user error The list's name is longer than 100 characters.|"},
        {"donors", "a\tb", "user error The list's name cannot hold control characters.|"},
    };
    for (const auto& [type, name, outcome] : cases) EXPECT_EQ(saved(type, name), outcome) << name;
    const std::string names = column(getObject(host.lists(), "Lists"), "Name");
    EXPECT_EQ(names, "Friends;Friends;");
}

TEST(SavedLists, TellWhoChangedThemMeanwhile)
{
    const qmevents::PinnedClock clock(qmevents::Date::of(2026, 3, 7, 15));
    const ListHost ann;
    const auto list = ann.newList();
    put(list, "Name", "Friends");
    call(ann.lists(), "Save", list);
    const std::int32_t id = toInt32(get(list, "Id"));
    const auto change = [&](const std::string& sql) {
        SqlSession(ann.database, Dialect::sqlServer).hostExecute(sql);
    };
    UserStore(ann.session->sql()).create("Ben");
    change("UPDATE host_lists SET revision = revision + 1, changed_by = "
           "(SELECT id FROM host_users WHERE name = 'Ben')");

    const std::string told = "This list was changed by Ben on 3/7/2026 3:00:00 PM.";
    EXPECT_EQ(toText(call(ann.lists(), "ChangedMeanwhile", list)), told);
    EXPECT_FALSE(toBool(call(ann.lists(), "Save", list)));
    EXPECT_EQ(ann.frontEnd.seen.back(), "user error " + told + "|");
    EXPECT_TRUE(toBool(call(ann.lists(), "Save", list, true)));
    EXPECT_EQ(toText(call(ann.lists(), "ChangedMeanwhile", list)), "");

    change("DELETE FROM host_lists");
    EXPECT_EQ(toText(call(ann.lists(), "ChangedMeanwhile", list)),
              "This list was deleted by another user.");
    EXPECT_TRUE(toBool(call(ann.lists(), "Save", list, true)));
    EXPECT_NE(toInt32(get(list, "Id")), id);
}

TEST(SavedLists, GiveTheirRecordsToStatementsUnlessAFilterIsMissing)
{
    for (const Dialect dialect : {Dialect::sqlServer, Dialect::jet}) {
        const ListHost host(dialect);
        const auto list = host.newList();
        put(list, "Name", "Givers");
        call(list, "AddFilter", "giftsum", "atleast", "10");
        call(host.lists(), "Save", list);
        const std::int32_t id = toInt32(get(list, "Id"));
        const std::string source = toText(call(host.lists(), "Source", id));
        const std::string counted = "SELECT COUNT(*) FROM donor_donors d WHERE d.id IN (SELECT Id "
                                    "FROM " +
                                    source + ")";
        EXPECT_EQ(toInt32(host.cell(counted)), 2);
        host.execute("DELETE FROM donor_gifts");
        EXPECT_EQ(toInt32(host.cell(counted)), 2); // as the list was

        const ListHost viewer(dialect, host.database, {{"events/view", "events/edit"}}, "Vic");
        EXPECT_EQ(failureOf([&] { call(viewer.lists(), "Source", id); }),
                  "5 Invalid procedure call or argument (the list \"Givers\" cannot be used: You "
                  "may not see “Given in all”; the filter is left out.)");
        const ListHost looker(dialect, host.database, {{"events/view"}}, "Vic");
        EXPECT_EQ(failureOf([&] { call(looker.lists(), "Save", looker.newList()); }),
                  "70 Permission denied (you may not save lists)");
        EXPECT_EQ(failureOf([&] { call(looker.lists(), "Delete", id); }),
                  "70 Permission denied (you may not delete lists)");
    }
}

} // namespace
} // namespace refhost
