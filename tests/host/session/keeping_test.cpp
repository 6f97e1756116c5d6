// What the host's own pages do with donors and gifts: find, take down, choose, record.
#include <gtest/gtest.h>

#include "host/shell/dialog_engine.h"
#include "tests/host/session/fixture.h"

namespace refhost {
namespace {

using qmevents::toInt32;

std::string names(const Ref<Object>& donors)
{
    std::string result;
    Value donor;
    for (const auto walk = donors->enumerate(); walk->next(donor);) {
        result += toText(get(toObject(donor), "Display")) + ";";
    }
    return result;
}

struct Donors : HostFixture {
    explicit Donors(Dialect dialect) : HostFixture(dialect)
    {
        for (const char* donor :
             {"'Bea 100% Abbot', 'Bea', 'Abbot', 'bea_a@example.org', 0",
              "'Al Abbot', 'Al', 'Abbot', 'al@example.org', 0",
              "'Cy O''Hara', 'Cy', 'O''Hara', NULL, 0", "'Gone Abbot', 'Gone', 'Abbot', '', 1"}) {
            execute("INSERT INTO donor_donors (display, firstname, lastname, email, deleted) "
                    "VALUES (" +
                    std::string(donor) + ")");
        }
        manage = getObject(module("donor"), "DonorManage");
    }
    std::string found(const char* text, const char* where = "", int rows = 0) const
    {
        const auto criteria = toObject(call(manage, "GetNewDonorCriteria"));
        put(criteria, "SearchString", text);
        put(criteria, "CustomWhere", where);
        put(criteria, "MaxRows", rows);
        return names(toObject(call(manage, "GetDonorsBySearch", criteria)));
    }
    DialogEngine& engine() const
    {
        return *dynamic_cast<DialogEngine*>(getObject(getObject(app, "Shell"), "Dialog").get());
    }

    Ref<Object> manage;
};

TEST(DonorSearch, FindsAllWordsLiterallyInTheOrderOfLastNames)
{
    for (const Dialect dialect : {Dialect::sqlServer, Dialect::jet}) {
        const Donors host(dialect);
        struct {
            const char *text, *where, *expected;
        } const cases[] = {
            {"", "", "Al Abbot;Bea 100% Abbot;Cy O'Hara;"},
            {"  abbot   BEA ", "", "Bea 100% Abbot;"},
            {"0%", "", "Bea 100% Abbot;"},
            {"%", "", "Bea 100% Abbot;"},
            {"a_a", "", "Bea 100% Abbot;"},
            {"o'h", "", "Cy O'Hara;"},
            {"[", "", ""},
            {"abbot", "id > 1", "Al Abbot;"},
        };
        for (const auto& [text, where, expected] : cases) {
            SCOPED_TRACE(text);
            EXPECT_EQ(host.found(text, where), expected);
        }
        EXPECT_EQ(host.found("", "", 1), "Al Abbot;");
        EXPECT_NE(failureOf([&] { host.found("", "nonsense = 1"); }), "");
    }
}

TEST(DonorManage, TakesDownADonorAndRefusesOneWithoutAName)
{
    for (const Dialect dialect : {Dialect::sqlServer, Dialect::jet}) {
        Donors host(dialect);
        const auto donor = toObject(call(host.manage, "GetNewDonor"));
        put(donor, "FirstName", "Di");
        EXPECT_FALSE(toBool(call(host.manage, "UpdateDonor", donor)));
        EXPECT_EQ(host.frontEnd.seen.back(), "user error The donor's name is required.|");
        put(donor, "LastName", std::string(101, 'x'));
        EXPECT_FALSE(toBool(call(host.manage, "UpdateDonor", donor)));
        put(donor, "LastName", "Day's <b>");
        EXPECT_TRUE(toBool(call(host.manage, "UpdateDonor", donor)));
        EXPECT_EQ(toInt32(get(donor, "Id")), 5);
        EXPECT_EQ(host.found("di"), "Di Day's <b>;");
        put(donor, "City", "Fernside");
        EXPECT_TRUE(toBool(call(host.manage, "UpdateDonor", donor)));
        EXPECT_EQ(host.found("fernside"), "Di Day's <b>;");
    }
}

TEST(GetDonorDialog, GivesWhoWasChosenAndLeavesNoValuesBehind)
{
    Donors host(Dialect::sqlServer);
    const auto dialogs = getObject(host.module("donor"), "Dialogs");
    const auto dialog = toObject(call(dialogs, "NewDialog", " GetDonor "));
    put(dialog, "Title", "Choose a Donor");
    put(dialog, "AllowNew", true);
    host.frontEnd.windows.emplace_back([&](int window) { host.engine().closePage(window, false); });
    host.frontEnd.windows.emplace_back([&](int window) {
        host.engine().runPageCall(window, [&] {
            EXPECT_EQ(toText(host.engine().value("title")), "Choose a Donor");
            EXPECT_TRUE(toBool(host.engine().value("allownew")));
            host.engine().setValue("donorid", Value(3));
        });
        host.engine().closePage(window, true);
    });
    EXPECT_FALSE(toBool(call(dialog, "Create")));
    EXPECT_EQ(toInt32(get(dialog, "DonorId")), 0);
    EXPECT_TRUE(toBool(call(dialog, "Create")));
    EXPECT_EQ(toInt32(get(dialog, "DonorId")), 3);
    EXPECT_TRUE(host.engine().value("donorid").isEmpty());
    EXPECT_NE(failureOf([&] { call(dialogs, "NewDialog", "getdonors"); }), "");
}

TEST(DonationWizard, RecordsAGiftAndReturnsToItsCaller)
{
    for (const Dialect dialect : {Dialect::sqlServer, Dialect::jet}) {
        Donors host(dialect);
        const auto donations = getObject(host.module("Donation"), "Donations");
        const auto gift = toObject(call(donations, "GetNewGift"));
        const auto refused = [&](const char* name, const Value& value) {
            put(gift, name, value);
            EXPECT_FALSE(toBool(call(donations, "SaveGift", gift)));
            return host.frontEnd.seen.back();
        };
        EXPECT_EQ(refused("DonorId", Value(4)), "user error The donor no longer exists.|");
        EXPECT_EQ(refused("DonorId", Value(1)), "user error The amount must be more than 0.|");
        EXPECT_EQ(refused("Amount", Value(40.5)), "user error The date of the gift is required.|");
        put(gift, "GiftDate", qmevents::Date::of(2026, 3, 7));
        put(gift, "ReservationId", 9);
        EXPECT_TRUE(toBool(call(donations, "SaveGift", gift)));
        EXPECT_NE(failureOf([&] { call(donations, "SaveGift", gift); }), "");
        EXPECT_EQ(toText(host.cell("SELECT actualAmount FROM donor_gifts_payments")), "40.5");
        EXPECT_EQ(toInt32(host.cell("SELECT FKReservationId FROM donor_gifts")), 9);

        const auto shell = getObject(host.app, "Shell");
        const auto wizards = getObject(donations, "Wizards");
        host.frontEnd.windows.emplace_back(
            [&](int window) { host.engine().closePage(window, true); });
        put(shell, "Dialog", "donorid", 1);
        put(shell, "Dialog", "donation-return-to-caller", "true");
        EXPECT_TRUE(toBool(call(wizards, "StartDonationWizard")));
        EXPECT_EQ(host.frontEnd.seen.back(), "refresh");
        EXPECT_TRUE(host.engine().value("donorid").isEmpty());
        host.frontEnd.windows.emplace_back(
            [&](int window) { host.engine().closePage(window, true); });
        put(shell, "Dialog", "donorid", 1);
        EXPECT_TRUE(toBool(call(wizards, "StartDonationWizard")));
        EXPECT_EQ(host.frontEnd.seen.back(), "go obsidian://donor/details-donor?id=1");
    }
}

} // namespace
} // namespace refhost
