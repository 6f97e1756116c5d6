// What the server refuses to a user who lacks a right, whatever the pages show.
#include "host/security/user_store.h"
#include "tests/host/addin/full_event.h"

#include <map>

namespace refhost {
namespace {

using qmevents::toBool;

class Rights : public InBothDialects {
protected:
    Rights() { EventFiller(host).prepare(); }
    Ref<Object> quillmere(const char* part) const
    {
        return getObject(getObject(getObject(host.session->app(), "Modules"), "Quillmere"), part);
    }
    Ref<Object> security() const { return getObject(host.session->app(), "Security"); }
    bool savesEvent()
    {
        const auto event = toObject(call(host.store(), "GetNewEvent"));
        put(event, "Name", "Gala");
        put(event, "StartDateTime", qmevents::Date::of(2026, 12, 1));
        return toBool(call(host.store(), "UpdateEvent", event, true, false));
    }
    bool deletesEvent()
    {
        // Somebody else has entered it: without the right to change events it could not be made.
        host.execute("INSERT INTO events_event_info (Name, StartDateTime) VALUES ('Old', " +
                     toText(call(getObject(host.session->app(), "Provider"), "VToSQL",
                                 qmevents::Date::of(2020, 1, 1), 1)) +
                     ")");
        const Value id(host.cell("SELECT MAX(Id) FROM events_event_info"));
        return toBool(call(host.store(), "DeleteEvent", id, true));
    }
    bool opens(const char* page) const
    {
        return toBool(call(host.root("Security"), "IsPageItemAllowed", page));
    }
    bool writesLetter() const
    {
        const auto donor = getObject(getObject(host.session->app(), "Modules"), "donor");
        const auto manage = getObject(donor, "MailingManage");
        call(manage, "AddToMailingList", "key", 1);
        call(toObject(call(manage, "GetList", "key")), "SaveLetter", "Dear all");
        return true;
    }

    WholeHost host{GetParam()};
};
INSTANTIATE_TEST_SUITE_P(Both, Rights, ::testing::Values(Dialect::sqlServer, Dialect::jet),
                         testNameOf);

TEST_P(Rights, EachMatterOnTheServer)
{
    const std::map<std::string, std::function<bool()>> deeds{
        {"events/view", [&] { return opens("events-view"); }},
        {"events/edit", [&] { return savesEvent(); }},
        {"events/delete", [&] { return deletesEvent(); }},
        {"events/settings", [&] { return opens("dialogs/editeventcategory"); }},
        {"donations/view",
         [&] {
             return !toText(call(quillmere("Widgets"), "Content", "events-season-income")).empty();
         }},
        {"mailings/send", [&] { return writesLetter(); }},
        {"settings/edit",
         [&] { return toText(call(quillmere("Codes"), "Add", "fund", "X")).empty(); }},
        {"security/edit", [&] { return call(security(), "LoadZones").isObject(); }},
    };
    UserStore users(host.session->sql());
    const User other = users.create("other");
    users.grant(other.id, rightToGiveRights); // so that it can be taken from the first
    for (const std::string_view known : knownRights()) {
        SCOPED_TRACE(known);
        const std::string right(known);
        ASSERT_TRUE(deeds.contains(right));
        const auto succeeds = [&] {
            try {
                return deeds.at(right)();
            } catch (const qmevents::Error& error) {
                EXPECT_EQ(error.number(), 70) << error.description();
                return false;
            }
        };
        users.revoke(1, right);
        EXPECT_FALSE(succeeds());
        users.grant(1, right);
        EXPECT_TRUE(succeeds());
    }
}

} // namespace
} // namespace refhost
