#include <gtest/gtest.h>

#include "core/host_event.h"
#include "core/root_objects.h"
#include "tests/support/scripted_host.h"

namespace qmevents {
namespace {

using testing::Log;
using testing::puppet;
using testing::ScriptedHost;

Ref<Object> hostEvent(const std::string& key, Value data = {})
{
    auto event = puppet("Event");
    event->holds("Key", key).holds("Data", std::move(data));
    return event;
}

TEST(RootObjects, KeepTheFirstApplicationAndFindTheRootOnce)
{
    ScriptedHost host;
    auto other = puppet("OtherApp");
    for (const char* name : {"Events", "Workflow", "Handler", "Security"}) {
        call(host.root(name), "OnInitialize", other); // knows no member at all
        call(host.root(name), "OnInitialize", Value::nothing());
    }
    call(host.commands(), "ManageEvents");
    EXPECT_EQ(host.log, (Log{"Navigate: obsidian://events/events-view | True"}));
}

TEST(RootObjects, AreMadeByNameWithoutRegardToCase)
{
    for (const char* name : {"QMEvents.Workflow", "qmevents.EVENTS", "QMEvents.Handler",
                             "QMEvents.Security", "QMEvents.Utils", "QMEvents.DateTimeUtil",
                             "QMEvents.ApplicationLink", "QMEvents.EntityKeyLock"}) {
        EXPECT_TRUE(createRootObject(name)) << name;
    }
    EXPECT_FALSE(createRootObject("QMEvents.cEvent"));
    EXPECT_THROW(call(createRootObject("QMEvents.Workflow"), "OnInitialize", Value::nothing()),
                 Error);
}

TEST(RootObjects, GiveLinksOfTheirOwnAndOneCollectionForEver)
{
    const ScriptedHost host;
    const auto root = host.root("Events");
    const auto link = toObject(call(root, "GetNewLink"));
    EXPECT_EQ(toText(get(link, "Language")), "vbscript");
    EXPECT_NE(link, toObject(call(root, "GetNewLink")));
    call(toObject(call(root, "Links")), "Add", link, "home");
    EXPECT_EQ(toInt32(get(toObject(call(root, "Links")), "Count")), 1);
}

TEST(RootObjects, GiveTheCauseWhereTheHostCannotEvenShowIt)
{
    releaseAddIn();
    const auto events = createRootObject("QMEvents.Events");
    call(events, "OnInitialize", puppet("BareApp"));
    try {
        call(getObject(events, "EventsManage"), "GetEvents");
        FAIL() << "there is no document";
    } catch (const Error& error) {
        EXPECT_EQ(error.description(),
                  "Object doesn't support this property or method (BareApp.Document)");
    }
    releaseAddIn();
}

TEST(HostEvents, AreMatchedExactlyAndUnknownOnesIgnored)
{
    ScriptedHost host;
    EXPECT_EQ(eventGroupOf("donor-delete-smartlist-confirm"), EventGroup::donor);
    EXPECT_EQ(eventGroupOf("reports-chooser-dialog"), EventGroup::report);
    EXPECT_EQ(eventGroupOf("smartlist-modifytypes"), EventGroup::smartList);
    EXPECT_EQ(eventGroupOf("mailing-data"), EventGroup::mailing);
    EXPECT_EQ(eventGroupOf("attribute-delete"), EventGroup::setting);
    EXPECT_EQ(eventGroupOf("widgets-options-action"), EventGroup::general);
    EXPECT_EQ(eventGroupOf("security-zones-load"), EventGroup::security);
    EXPECT_FALSE(eventGroupOf("Application-Signin"));
    EXPECT_FALSE(eventGroupOf("application-signin "));
    for (const char* key :
         {"APPLICATION-SIGNIN", "nothing-known", "", "application-modules-initialized",
          "homepage-init", "smartlist-schema"}) {
        call(host.root("Handler"), "EventHandler", hostEvent(key));
    }
    EXPECT_TRUE(host.log.empty());
}

TEST(HostEvents, FailuresGoBackToTheHost)
{
    const ScriptedHost host;
    EXPECT_THROW(call(host.root("Handler"), "EventHandler", hostEvent("interaction-menu")), Error);
    EXPECT_THROW(call(host.root("Handler"), "EventHandler", Value::nothing()), Error);
}

TEST(InteractionMenu, OffersAndRunsViewEventForEventsOnly)
{
    ScriptedHost host;
    host.answer("WHERE Id = <2:12>", testing::eventRow(12));
    const auto send = [&](const char* key, const Value& group, Value command) {
        auto menu = puppet("ContextMenu");
        menu->on("AppendItem", [&](std::span<Value> a) {
            host.log.push_back("AppendItem " + toText(a[0]) + " " + toText(a[1]) + " " +
                               toText(a[2]));
            return Value();
        });
        auto interaction = puppet("Interaction");
        interaction->holds("group", group).holds("Reference", "12");
        auto data = puppet("Data");
        data->holds("Interaction", interaction)
            .holds("ContextMenu", menu)
            .holds("Command", std::move(command));
        call(host.root("Handler"), "EventHandler", hostEvent(key, data));
        return host.takeLog();
    };
    EXPECT_EQ(send("interaction-menu", "event", {}), (Log{"AppendItem 8192 View Event 10001"}));
    EXPECT_TRUE(send("interaction-menu", "events", {}).empty());
    EXPECT_TRUE(send("interaction-menu", Null{}, {}).empty());
    EXPECT_TRUE(send("interaction-command", "donor", 10001).empty());
    EXPECT_TRUE(send("interaction-command", "Event", Null{}).empty());
    EXPECT_TRUE(send("interaction-command", "Event", 10002).empty());
    EXPECT_TRUE(send("interaction-command", "Event", "Something").empty());
    for (const Value& command : {Value(10001), Value("10001"), Value("View Event")}) {
        const Log log = send("interaction-command", "EVENT", command);
        ASSERT_FALSE(log.empty());
        EXPECT_EQ(log.front(), "SELECT * FROM events_event_info WHERE Id = <2:12>");
    }
}

} // namespace
} // namespace qmevents
