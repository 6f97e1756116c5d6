#include <gtest/gtest.h>

#include "tests/host/session/fixture.h"

namespace refhost {
namespace {

using qmevents::CallKind;
using qmevents::Currency;
using qmevents::Date;
using qmevents::toInt32;

struct DocumentTest : HostFixture, testing::Test {
    void fill()
    {
        execute("INSERT INTO donor_donors (display, entitytype) VALUES (N'Ann', N'Person')");
        execute("INSERT INTO donor_donors (display) VALUES (N'Bob')");
    }
    Ref<Object> rows(const std::string& sql)
    {
        return toObject(call(document(), "GetDataSet", sql));
    }
};

TEST_F(DocumentTest, ReadsARecordSetInEveryWayThatScriptsWriteIt)
{
    fill();
    const auto set = rows("SELECT id, display, entitytype FROM donor_donors ORDER BY id");
    EXPECT_FALSE(toBool(get(set, "EOF")));
    const auto fields = getObject(set, "Fields");
    EXPECT_EQ(toInt32(get(fields, "Count")), 3);
    const auto display = toObject(call(fields, "Item", "DISPLAY"));
    EXPECT_EQ(toText(get(display, "Value")), "Ann");
    EXPECT_EQ(toText(get(toObject(get(set, "Fields", "display")), "Value")), "Ann");
    EXPECT_EQ(toText(get(toObject(get(fields, "Item", 1)), "Name")), "display");
    Value index[] = {Value("entitytype")};
    const Value shortest = set->invoke(qmevents::defaultMember, CallKind::get, index);
    EXPECT_EQ(toText(shortest), "Person"); // rs("entitytype"), a field standing for its value
    EXPECT_EQ(toInt32(get(set, "RecordCount")), 2);

    call(set, "MoveNext");
    EXPECT_EQ(toText(get(display, "Value")), "Bob"); // bound once, read row by row
    EXPECT_TRUE(get(toObject(call(fields, "Item", 2)), "Value").isNull());
    call(set, "MoveNext");
    EXPECT_TRUE(toBool(get(set, "EOF")));
    EXPECT_FALSE(toBool(get(set, "BOF")));
    call(set, "MoveFirst");
    EXPECT_EQ(toText(get(display, "Value")), "Ann");
    std::string names;
    Value field;
    for (const auto walk = fields->enumerate(); walk->next(field);) {
        names += toText(get(toObject(field), "Name")) + " ";
    }
    EXPECT_EQ(names, "id display entitytype ");
}

TEST_F(DocumentTest, NamesTheMisuseOfARecordSet)
{
    fill();
    const auto set = rows("SELECT id, display FROM donor_donors");
    const auto field = toObject(get(set, "Fields", "display"));
    EXPECT_EQ(failureOf([&] { get(set, "Fields", "name"); }),
              "3265 The record set has no column \"name\", but: id, display.");
    EXPECT_EQ(failureOf([&] { get(set, "Fields", 2); }),
              "3265 The record set has 2 columns, none at position 2.");
    call(set, "MoveNext");
    call(set, "MoveNext");
    EXPECT_EQ(failureOf([&] { get(field, "Value"); }).substr(0, 5), "3021 ");
    EXPECT_EQ(failureOf([&] { call(set, "MoveNext"); }).substr(0, 5), "3021 ");
    call(set, "Close");
    const std::function<void()> acts[] = {
        [&] { get(set, "EOF"); },          [&] { get(field, "Value"); },
        [&] { get(set, "Fields", "id"); }, [&] { call(set, "MoveFirst"); },
        [&] { get(set, "RecordCount"); },  [&] { call(set, "Close"); },
    };
    for (const auto& act : acts) EXPECT_EQ(failureOf(act), "3704 The record set is closed.");

    const auto empty = rows("SELECT id FROM donor_donors WHERE id = 0");
    EXPECT_TRUE(toBool(get(empty, "EOF")) && toBool(get(empty, "BOF")));
    EXPECT_EQ(toInt32(get(empty, "RecordCount")), 0);
    EXPECT_EQ(failureOf([&] { call(empty, "MoveFirst"); }).substr(0, 5), "3021 ");
}

TEST_F(DocumentTest, KeepsAFieldReadableWhenOnlyTheFieldIsHeld)
{
    fill();
    const auto field = toObject(get(rows("SELECT display FROM donor_donors"), "Fields", 0));
    EXPECT_EQ(toText(get(field, "Value")), "Ann");
}

TEST_F(DocumentTest, GivesTheEnginesErrorForAFailedStatementAndGoesOn)
{
    const auto failure = failureOf([&] { rows("SELECT id\nFROM no_such_table"); });
    EXPECT_NE(failure.find("no_such_table"), std::string::npos) << failure;
    EXPECT_NE(failure.find("Line 2, column 6"), std::string::npos) << failure;
    EXPECT_NE(failureOf([&] { execute("DELETE FROM host_users"); }), "");

    const auto provider = getObject(app, "Provider");
    execute("CREATE TABLE pairs (a INT NOT NULL PRIMARY KEY)");
    execute("INSERT INTO pairs (a) VALUES (1)");
    EXPECT_FALSE(toBool(call(provider, "DuplicateErrorOnInsert")));
    EXPECT_NE(failureOf([&] { execute("INSERT INTO pairs (a) VALUES (1)"); }), "");
    Value details[] = {Value(), Value()};
    EXPECT_TRUE(toBool(invokeNamed(provider, "DuplicateErrorOnInsert", CallKind::method, details)));
    EXPECT_NE(toInt32(details[0]), 0);
    EXPECT_NE(toText(details[1]), "");
    EXPECT_NE(failureOf([&] { execute("INSERT INTO pairs (a) VALUES (NULL)"); }), "");
    EXPECT_FALSE(toBool(call(provider, "DuplicateErrorOnInsert")));
}

TEST_F(DocumentTest, BeginsOneTransactionAndUndoesWithItWhatWasStored)
{
    EXPECT_TRUE(toBool(call(document(), "BeginTrans")));
    EXPECT_FALSE(toBool(call(document(), "BeginTrans")));
    fill();
    put(document(), "Setting", "version", 3);
    call(document(), "RollbackTrans");
    EXPECT_EQ(toInt32(cell("SELECT COUNT(*) FROM donor_donors")), 0);
    EXPECT_EQ(toText(get(document(), "Setting", "version")), "");
    EXPECT_TRUE(toBool(call(document(), "BeginTrans")));
    fill();
    call(document(), "CommitTrans");
    EXPECT_EQ(toInt32(cell("SELECT COUNT(*) FROM donor_donors")), 2);
    EXPECT_NE(failureOf([&] { call(document(), "CommitTrans"); }), "");
}

TEST_F(DocumentTest, KeepsPreferencesForTheUserAndSettingsForTheDatabase)
{
    const auto preference = [](const HostFixture& host, const char* name) {
        return get(host.document(), "Preferences", "events", name);
    };
    EXPECT_FALSE(toBool(preference(*this, "skip")));
    EXPECT_TRUE(preference(*this, "skip").is(qmevents::ValueKind::boolean));
    EXPECT_EQ(toText(get(document(), "Setting", "events-addin-init")), "");
    const Value kept[] = {
        Value(true), Value("name~O'Neil \xC3\xA9"),       Value(-7),
        Value(0.1),  Value(Currency::fromScaled(125001)), Value(Date::of(2026, 3, 7, 15, 4, 5))};
    for (const Value& value : kept) {
        put(document(), "Preferences", "EVENTS", "Skip", value);
        const Value back = preference(*this, "skip");
        EXPECT_EQ(back.kind(), value.kind());
        EXPECT_EQ(toText(back), toText(value));
    }
    put(document(), "Setting", "Events-AddIn-Init", 2);

    const HostFixture other(Dialect::jet, database, "Ben");
    EXPECT_FALSE(toBool(preference(other, "skip")));
    EXPECT_EQ(toText(get(other.document(), "Setting", "events-addin-init")), "2");
    put(document(), "Preferences", "events", "skip", Value());
    EXPECT_TRUE(preference(*this, "skip").is(qmevents::ValueKind::boolean));
    EXPECT_EQ(failureOf([&] { put(document(), "Preferences", "events", "x", app); }).substr(0, 3),
              "13 ");
}

TEST_F(DocumentTest, RefreshesWhatIsShown)
{
    call(document(), "ForceUpdate");
    EXPECT_EQ(frontEnd.seen, std::vector<std::string>{"refresh"});
}

} // namespace
} // namespace refhost
