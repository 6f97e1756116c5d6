#include <gtest/gtest.h>

#include "tests/host/session/fixture.h"

namespace refhost {
namespace {

using qmevents::toBool;
using qmevents::toInt32;

/// A session with an add-in that offers three widgets, one of them for a right, one that fails.
struct StartPage : HostFixture {
    StartPage()
    {
        addIn.onEvent = [this](const Ref<Object>& event) { answer(toText(get(event, "Key"))); };
    }
    ~StartPage() { addIn.onEvent = nullptr; }

    Ref<Object> widgets() const { return getObject(module("Quillmere"), "Widgets"); }
    std::string shown() const
    {
        std::string keys;
        Value item;
        const auto all = toObject(call(widgets(), "Load"));
        for (const auto walk = all->enumerate(); walk->next(item);) {
            keys += (toBool(get(toObject(item), "IsShown")) ? "+" : "-") +
                    toText(get(toObject(item), "Key")) + " ";
        }
        return keys;
    }

    /// As a module answers: by what the loader shows of the event.
    void answer(const std::string& key)
    {
        const auto data = getObject(getObject(module("Loader"), "CurrentEvent"), "Data");
        if (key == "widgets-load") {
            const struct {
                const char *key, *right;
            } offers[] = {{"tasks", ""}, {"money", "donations/view"}, {"broken", ""}};
            for (const auto& [name, right] : offers) {
                const auto widget = toObject(call(data, "GetNewWidget"));
                put(widget, "Key", name);
                put(widget, "Operation", right);
                call(getObject(data, "Widgets"), "Add", widget, name);
            }
            return;
        }
        const auto widget = getObject(data, "widget");
        if (toText(get(widget, "Key")) == "broken") throw qmevents::Error(51, "Module", "no data");
        if (key == "widgets-content") put(widget, "Content", "<b>" + kept + "</b>");
        if (key == "widgets-options") {
            call(widget, "AddOption", "count", "How many", "number", 5);
            call(getObject(widget, "Options"), "AddOption", "order", "Order", "choice", "name",
                 "name=By name|date=By date");
        }
        if (key == "widgets-options-action") {
            const std::string count = toText(get(widget, "OptionValue", "count"));
            if (count == "0") return put(widget, "Problem", "At least one is shown.");
            kept = count + toText(get(widget, "OptionValue", "order"));
        }
    }
    std::string kept = "5name";
};

TEST(Widgets, StandInTheUsersOwnOrderAndOnlyWhereTheUserMaySeeThem)
{
    StartPage host;
    EXPECT_EQ(host.shown(), "+tasks +money +broken ");
    const struct {
        const char *arranged, *shown;
    } cases[] = {
        {"broken,tasks", "+broken +tasks -money "},
        {" MONEY , gone,, tasks", "+money +tasks -broken "},
        {"", "-tasks -money -broken "},
    };
    for (const auto& [arranged, shown] : cases) {
        SCOPED_TRACE(arranged);
        call(host.widgets(), "Arrange", arranged);
        EXPECT_EQ(host.shown(), shown);
    }
    UserStore(host.session->sql()).revoke(1, "donations/view");
    EXPECT_EQ(host.shown(), "-tasks -broken ");
    for (const char* member : {"Content", "Options"}) {
        EXPECT_EQ(failureOf([&] { call(host.widgets(), member, "money"); }).substr(0, 3), "70 ");
        EXPECT_EQ(failureOf([&] { call(host.widgets(), member, "gone"); }).substr(0, 2), "5 ");
        EXPECT_EQ(failureOf([&] { call(host.widgets(), member, "broken"); }), "51 no data");
    }
    EXPECT_EQ(toText(call(host.widgets(), "Content", "tasks")), "<b>5name</b>");
}

TEST(Widgets, HandTheirOptionsToTheModuleWhichMayRefuseThem)
{
    StartPage host;
    const auto widget = toObject(call(host.widgets(), "Options", "tasks"));
    EXPECT_EQ(toInt32(get(getObject(widget, "Options"), "Count")), 2);
    put(widget, "OptionValue", "count", "0");
    EXPECT_EQ(toText(call(host.widgets(), "SaveOptions", widget)), "At least one is shown.");
    put(widget, "OptionValue", "count", "7");
    put(widget, "OptionValue", "order", "date");
    EXPECT_EQ(toText(call(host.widgets(), "SaveOptions", widget)), "");
    EXPECT_EQ(toText(call(host.widgets(), "Content", "tasks")), "<b>7date</b>");
    EXPECT_NE(failureOf([&] { put(widget, "OptionValue", "colour", "red"); }), "");
    EXPECT_NE(failureOf([&] { call(widget, "AddOption", "size", "Size", "slider"); }), "");
}

/// The users of the database and what they may do, as the page of rights handles them.
TEST(Rights, AreGivenByThoseWhoMayAndNeverTakenFromTheLastOfThem)
{
    HostFixture host;
    host.addIn.onEvent = [](const Ref<Object>& event) {
        const auto data = getObject(event, "Data");
        if (toText(get(event, "Key")) != "security-zones-load") return;
        const auto zone = toObject(call(data, "GetNewZone"));
        const auto right = toObject(call(data, "GetNewRight"));
        put(right, "Key", "garden/dig");
        call(getObject(zone, "Rights"), "Add", right, "garden/dig");
        call(getObject(data, "Zones"), "Add", zone, "garden");
    };
    const auto security = getObject(host.app, "Security");
    const HostFixture ben(Dialect::jet, host.database, "Ben");
    UserStore(ben.session->sql()).revoke(2, "security/edit");
    const auto bens = getObject(ben.app, "Security");
    const auto set = [](const Ref<Object>& who, int user, const char* right, bool isHeld) {
        return toText(call(who, "SetRight", user, right, isHeld));
    };
    std::string keys;
    Value zone;
    const auto zones = toObject(call(security, "LoadZones"));
    for (const auto walk = zones->enumerate(); walk->next(zone);) {
        const auto first = toObject(call(getObject(toObject(zone), "Rights"), "Item", 1));
        keys += toText(get(first, "Key")) + " ";
    }
    EXPECT_EQ(keys, "garden/dig donations/view mailings/send settings/edit security/edit ");

    // Whoever lacks the right is refused all of it.
    const std::function<void()> refused[] = {
        [&] { call(bens, "LoadZones"); },
        [&] { set(bens, 2, "security/edit", true); },
        [&] { call(bens, "AddUser", "Cy", "long enough"); },
        [&] { call(bens, "SetPassword", 1, "long enough"); },
        [&] { get(toObject(call(getObject(bens, "Users"), "FromId", 1)), "Rights"); },
    };
    for (const auto& act : refused) EXPECT_EQ(failureOf(act).substr(0, 3), "70 ");

    // A change acts at once, also on a right that only a module knows.
    EXPECT_EQ(set(security, 2, "GARDEN/dig", true), "");
    EXPECT_TRUE(toBool(call(bens, "IsAllowed", "garden/dig")));
    EXPECT_NE(failureOf([&] { set(security, 2, "garden/burn", true); }), "");
    EXPECT_NE(failureOf([&] { set(security, 9, "garden/dig", true); }), "");

    const std::string kept = "Somebody must be able to give rights, and nobody else can.";
    EXPECT_EQ(set(security, 1, "security/edit", false), kept);
    EXPECT_EQ(set(security, 2, "security/edit", true), "");
    EXPECT_EQ(set(bens, 1, "Security/Edit", false), "");
    EXPECT_EQ(set(bens, 2, "security/edit", false), kept);
    EXPECT_NE(failureOf([&] { set(security, 1, "security/edit", true); }), "");
    host.addIn.onEvent = nullptr;
}

TEST(Rights, UsersAreAddedWithAPasswordOfTheirOwn)
{
    const HostFixture host;
    const auto security = getObject(host.app, "Security");
    const auto add = [&](const std::string& name, const std::string& password) {
        return toText(call(security, "AddUser", name, password));
    };
    const std::string length = "A password has between 8 and 200 characters.";
    EXPECT_EQ(add(" ", "long enough"), "A user needs a name.");
    EXPECT_EQ(add(std::string(101, 'x'), "long enough"), "A name has at most 100 characters.");
    EXPECT_EQ(add("Cy", "short"), length);
    EXPECT_EQ(add(" Cy ", "long enough"), "");
    EXPECT_EQ(add("cy", "long enough"), "There is a user called cy already.");
    UserStore users(host.session->sql());
    const auto cy = users.signIn("Cy", "long enough");
    ASSERT_TRUE(cy);
    EXPECT_TRUE(users.rightsOf(cy->id).empty());
    EXPECT_EQ(toText(call(security, "SetPassword", cy->id, "short")), length);
    EXPECT_EQ(toText(call(security, "SetPassword", cy->id, "other words")), "");
    EXPECT_TRUE(users.signIn("Cy", "other words"));
}

TEST(Rights, OfADatabaseFromBeforeGoToThoseWhoCouldDoAll)
{
    HostFixture host;
    UserStore users(host.session->sql());
    const User ben = users.create("Ben");
    users.grant(ben.id, "events/view");
    host.session->sql().hostExecute(
        "DELETE FROM host_user_rights WHERE name IN ('security/edit', 'settings/edit')");
    const HostFixture again(Dialect::jet, host.database);
    EXPECT_TRUE(users.hasRight(1, "security/edit"));
    EXPECT_TRUE(users.hasRight(1, "settings/edit"));
    EXPECT_EQ(users.rightsOf(ben.id).size(), 1U);
}

} // namespace
} // namespace refhost
