#include "tests/host/lists/list_host.h"

namespace refhost {
namespace {

Ref<Object> listOf(const ListHost& host, const char* operation, const char* name)
{
    const auto list = host.newList();
    call(list, "AddFilter", "donorname", operation, name);
    return host.run(list);
}

TEST(DonorLists, AreDeletedWithAllThatModulesKeepOrNotAtAll)
{
    for (const Dialect dialect : {Dialect::sqlServer, Dialect::jet}) {
        ListHost host(dialect);
        const auto original = host.addIn.onEvent;
        enum class Module { throws, tells, works } module = Module::throws;
        host.addIn.onEvent = [&](const Ref<Object>& event) {
            const std::string key = toText(get(event, "Key"));
            if (!key.starts_with("donor-delete")) return original(event);
            const auto data = getObject(event, "Data");
            EXPECT_EQ(toText(get(data, "EntityType")), "donors");
            if (key == "donor-delete-smartlist-confirm") {
                call(data, "AddConfirmationMessage", "Their gifts go.");
                return;
            }
            EXPECT_EQ(key, "donor-delete-smartlist");
            // The list stays what it was while its donors' records go.
            const std::string ids = "SELECT Id FROM " + toText(get(data, "Userdata"));
            host.execute("DELETE FROM donor_gifts WHERE donorId IN (" + ids + ")");
            EXPECT_EQ(toInt32(host.cell("SELECT COUNT(*) FROM (" + ids + ") q")), 2);
            if (module == Module::throws) throw qmevents::Error(51, "Handler", "broken");
            if (module == Module::tells) {
                call(getObject(host.session->app(), "Shell"), "ErrorUnexpected", "Not all went.");
            }
        };
        const auto result = listOf(host, "contains", "o");
        EXPECT_FALSE(toBool(call(result, "DeleteDonors"))); // the question was declined
        EXPECT_EQ(host.frontEnd.seen.back(),
                  "ask Are you sure you want to delete these 2 donors?\r\nTheir gifts go.");
        host.frontEnd.answers = {Button::yes, Button::yes, Button::yes};
        EXPECT_EQ(failureOf([&] { call(result, "DeleteDonors"); }), "51 broken");
        module = Module::tells;
        EXPECT_FALSE(toBool(call(result, "DeleteDonors")));
        EXPECT_EQ(toInt32(host.cell("SELECT COUNT(*) FROM donor_gifts")), 3);
        EXPECT_EQ(toInt32(host.cell("SELECT COUNT(*) FROM donor_donors WHERE deleted = 0")), 4);
        module = Module::works;
        EXPECT_TRUE(toBool(call(result, "DeleteDonors")));
        EXPECT_EQ(toInt32(host.cell("SELECT COUNT(*) FROM donor_gifts")), 0);
        EXPECT_EQ(host.held("donorname", "notblank", {}), "3 4 ");
        EXPECT_EQ(toInt32(host.cell("SELECT COUNT(*) FROM smartlist_records")), 0);
    }
}

TEST(DonorLists, AreDeletedOnlyByWhoMayAndOnlyAsShown)
{
    ListHost host;
    const auto refusalOf = [](const ListHost& of, const Ref<Object>& result) {
        (void)of;
        return failureOf([&] { call(result, "DeleteDonors"); });
    };
    EXPECT_EQ(refusalOf(host, host.run(host.newList("donations"))),
              "5 Invalid procedure call or argument (the list is not one of donors)");
    const auto widened = host.newList();
    call(widened, "AddFilter", "gone", "is", "1");
    EXPECT_EQ(refusalOf(host, host.run(widened)),
              "5 Invalid procedure call or argument (a filter was left out, so that the list may "
              "hold others than meant)");
    EXPECT_FALSE(toBool(call(listOf(host, "is", "nobody"), "DeleteDonors")));
    const ListHost editor(Dialect::sqlServer, host.database, {{"events/edit"}}, "Ed");
    EXPECT_EQ(refusalOf(editor, listOf(editor, "is", "Bo")),
              "70 Permission denied (you may not delete donors)");
    const auto manage =
        getObject(getObject(getObject(editor.session->app(), "Modules"), "donor"), "DonorManage");
    EXPECT_EQ(failureOf([&] { call(manage, "DeleteDonor", 1); }),
              "70 Permission denied (you may not delete donors)");
}

} // namespace
} // namespace refhost
