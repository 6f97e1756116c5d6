#include <gtest/gtest.h>

#include "tests/host/session/fixture.h"

namespace refhost {
namespace {

using qmevents::toInt32;

TEST(UserStore, SignsInByPasswordWithoutKeepingIt)
{
    const HostFixture host;
    UserStore users(host.session->sql(), PasswordCost::minimal);
    const User ben = users.create("Ben", "s3cret \xC3\xA9");
    EXPECT_EQ(users.signIn("BEN", "s3cret \xC3\xA9")->id, ben.id);
    struct {
        const char *name, *password;
    } const refused[] = {
        {"Ben", "S3cret \xC3\xA9"},    {"Ben", ""},
        {"Nobody", "s3cret \xC3\xA9"}, {"Ann Admin", ""}, // made without a password
        {"' OR 1=1 --", "x"},
    };
    for (const auto& [name, password] : refused) EXPECT_FALSE(users.signIn(name, password)) << name;
    users.setPassword(ben.id, "new");
    EXPECT_FALSE(users.signIn("Ben", "s3cret \xC3\xA9"));
    EXPECT_TRUE(users.signIn("Ben", "new"));
    EXPECT_EQ(failureOf([&] { users.create("ben"); }).substr(0, 4), "457 ");
    EXPECT_EQ(failureOf([&] { users.create(" "); }).substr(0, 2), "5 ");
    for (const HostRow& row : host.session->sql().hostQuery("SELECT password FROM host_users")) {
        if (const auto* hash = std::get_if<std::string>(&row[0])) {
            EXPECT_EQ(hash->substr(0, 9), "$argon2id");
        }
    }
}

TEST(Security, ChecksRightsWhenItIsAsked)
{
    const HostFixture host;
    const auto security = getObject(host.app, "Security");
    const auto allowed = [&](const char* right) {
        return toBool(call(security, "IsAllowed", right));
    };
    for (const std::string_view right : knownRights()) {
        EXPECT_TRUE(allowed(std::string(right).c_str())) << right;
    }
    EXPECT_TRUE(allowed("Events/Edit"));
    EXPECT_FALSE(allowed("events/unknown"));
    EXPECT_TRUE(allowed("")); // asks for nothing
    UserStore users(host.session->sql());
    const std::int32_t me = toInt32(get(getObject(security, "CurrentUser"), "Id"));
    users.revoke(me, "events/edit");
    EXPECT_FALSE(allowed("events/edit"));
    EXPECT_TRUE(allowed("events/view"));
    users.grant(me, "EVENTS/EDIT");
    EXPECT_TRUE(allowed("events/edit"));
    EXPECT_NE(failureOf([&] { users.grant(me, "events/everything"); }), "");
}

TEST(Security, HoldsASessionToTheRightsItWasGiven)
{
    ScriptedFrontEnd frontEnd;
    RecordingAddIn addIn;
    Session session({.database = Database::inMemory(),
                     .rights = std::vector<std::string>{"events/view"},
                     .frontEnd = &frontEnd,
                     .parts = addIn.parts()});
    const auto security = getObject(session.app(), "Security");
    EXPECT_TRUE(toBool(call(security, "IsAllowed", "events/view")));
    EXPECT_FALSE(toBool(call(security, "IsAllowed", "events/edit")));
    EXPECT_EQ(toText(get(getObject(security, "CurrentUser"), "Name")), "admin");
}

TEST(Security, ListsTheUsersOfTheDatabase)
{
    const HostFixture ann;
    const HostFixture ben(Dialect::jet, ann.database, "Ben");
    const auto users = getObject(getObject(ann.app, "Security"), "Users");
    EXPECT_EQ(toInt32(get(users, "Count")), 2);
    std::string names;
    Value user;
    for (const auto walk = users->enumerate(); walk->next(user);) {
        const auto same = toObject(call(users, "FromId", get(toObject(user), "Id")));
        names += toText(get(same, "Name")) + ";";
    }
    EXPECT_EQ(names, "Ann Admin;Ben;");
    EXPECT_TRUE(call(users, "FromId", 99).isNothing());
    // A user who comes back is the same user.
    const HostFixture again(Dialect::sqlServer, ann.database, "ann admin");
    EXPECT_EQ(toInt32(get(users, "Count")), 2);
}

} // namespace
} // namespace refhost
