#include <gtest/gtest.h>

#include <thread>

#include "host/app/host_event.h"
#include "tests/host/session/fixture.h"

namespace refhost {
namespace {

using Texts = std::vector<std::string>;

TEST(Session, InitialisesTheAddInAndSignsInAndOut)
{
    HostFixture host;
    EXPECT_EQ(host.addIn.calls,
              (Texts{"Events App", "Workflow App", "Handler App", "Security App",
                     "Handler application-modules-initialized", "Handler application-signin"}));
    host.addIn.calls.clear();
    host.session.reset();
    EXPECT_EQ(host.addIn.calls, (Texts{"Handler application-signout", "released"}));
    EXPECT_TRUE(host.frontEnd.seen.empty());
}

TEST(Session, SendsEventsWithTheirPayloadAndGivesErrorsBack)
{
    HostFixture host;
    const auto loader = host.module("Loader");
    std::string seen;
    host.addIn.onEvent = [&](const Ref<Object>& event) {
        const std::string key = toText(get(event, "Key"));
        EXPECT_EQ(getObject(loader, "CurrentEvent"), event);
        if (key == "outer") host.session->raise("inner", Value("detail"));
        EXPECT_EQ(getObject(loader, "CurrentEvent"), event);
        seen += key + "=" + (get(event, "Data").isText() ? toText(get(event, "Data")) : "") + ";";
    };
    host.session->raise("outer");
    EXPECT_EQ(seen, "inner=detail;outer=;");
    EXPECT_TRUE(get(loader, "CurrentEvent").isNothing());

    host.addIn.onEvent = [](const Ref<Object>& event) {
        call(getObject(event, "Data"), "AddConfirmationMessage", "Gone for ever.");
        throw qmevents::Error(7, "Handler", "no more");
    };
    const auto payload = qmevents::makeRef<DeletionPayload>();
    EXPECT_EQ(failureOf([&] { host.session->raise("donor-delete", Value(payload)); }), "7 no more");
    EXPECT_EQ(payload->ConfirmationMessages->Count(), 1);
    EXPECT_TRUE(get(loader, "CurrentEvent").isNothing());
    host.addIn.onEvent = nullptr;
}

TEST(Session, ShowsWhatFailsWhileTheUserSignsInOrOut)
{
    ScriptedFrontEnd frontEnd;
    RecordingAddIn addIn;
    addIn.onEvent = [](const Ref<Object>& event) {
        throw qmevents::Error(51, "Handler", "broken at " + toText(get(event, "Key")));
    };
    {
        Session session(
            {.database = Database::inMemory(), .frontEnd = &frontEnd, .parts = addIn.parts()});
        EXPECT_TRUE(toBool(call(session.app(), "IsModuleLoaded", "EVENTS")));
    }
    ASSERT_EQ(frontEnd.seen.size(), 3u);
    for (const auto& [position, key] : {std::pair{0, "application-modules-initialized"},
                                        {1, "application-signin"},
                                        {2, "application-signout"}}) {
        const auto& text = frontEnd.seen[static_cast<std::size_t>(position)];
        EXPECT_EQ(text.find(std::string("unexpected error broken at ") + key), 0u) << text;
    }
}

TEST(Session, RefusesToBeginWithoutWhatItNeeds)
{
    ScriptedFrontEnd frontEnd;
    RecordingAddIn addIn;
    EXPECT_NE(failureOf([&] { Session({.frontEnd = &frontEnd, .parts = addIn.parts()}); }), "");
    EXPECT_NE(failureOf([&] { Session({.database = Database::inMemory()}); }), "");
    SessionParts none{.makeRootObject = [](std::string_view) { return Ref<Object>(); },
                      .releaseAddIn = [] {}};
    EXPECT_NE(failureOf([&] {
                  Session({.database = Database::inMemory(), .frontEnd = &frontEnd, .parts = none});
              }),
              "");
}

TEST(Session, ServesOneUserAtATimeOnAThreadWithTheLinkedAddIn)
{
    ScriptedFrontEnd frontEnd;
    const auto database = Database::inMemory();
    const auto begin = [&] { Session({.database = database, .frontEnd = &frontEnd}); };
    {
        const Session first({.database = database, .frontEnd = &frontEnd});
        EXPECT_EQ(failureOf(begin), "5 Invalid procedure call or argument (this thread serves "
                                    "another session)");
        std::thread(begin).join();
    }
    begin();
}

TEST(Session, EndsTheObjectsThatItGaveOut)
{
    HostFixture host;
    const auto document = host.document();
    const auto set = toObject(call(document, "GetDataSet", "SELECT COUNT(*) FROM donor_donors"));
    const auto lock = toObject(call(document, "GetLock", "event", 1));
    const auto donors = getObject(host.module("donor"), "DonorManage");
    host.session.reset();
    EXPECT_EQ(
        failureOf([&] { call(document, "Execute", "DELETE FROM donor_donors"); }).substr(0, 3),
        "91 ");
    EXPECT_EQ(failureOf([&] { call(donors, "GetDonor", 1); }).substr(0, 3), "91 ");
    EXPECT_EQ(failureOf([&] { get(host.app, "Shell"); }).substr(0, 3), "91 ");
    failureOf([&] { get(set, "EOF"); }); // at its end or refused, but no crash
    call(lock, "Release");
}

TEST(Session, KeepsValuesAndObjectsUnderKeysInAnyCase)
{
    const HostFixture host;
    EXPECT_TRUE(get(host.app, "Session", "event").isEmpty());
    put(host.app, "Session", "Event", host.document());
    put(host.app, "Session", "tabname", "events_reservations");
    EXPECT_EQ(toObject(get(host.app, "Session", "event")), host.document());
    EXPECT_EQ(toText(get(host.app, "Session", "tabname")), "events_reservations");
    put(host.app, "Session", "tabname", "");
    EXPECT_EQ(toText(get(host.app, "Session", "tabname")), "");
}

TEST(Session, TracesTheStatementsOfTheDocumentAlone)
{
    const HostFixture host;
    host.execute("INSERT INTO donor_donors (display) VALUES (N'Ann')");
    call(getObject(host.module("donor"), "DonorManage"), "GetDonor", 1);
    call(getObject(host.app, "Provider"), "Codes", "fund", true);
    put(host.document(), "Setting", "x", "y");
    EXPECT_EQ(host.statements, (Texts{"INSERT INTO donor_donors (display) VALUES (N'Ann')"}));
}

TEST(App, MakesItsHelpers)
{
    HostFixture host;
    const auto utils = getObject(host.app, "Utils");
    EXPECT_TRUE(toBool(call(toObject(call(utils, "NewXmlDocument")), "loadXML", "<a/>")));
    const std::string guid = toText(call(utils, "GetGuid"));
    EXPECT_EQ(guid.size(), 38u);
    EXPECT_NE(guid, toText(call(utils, "GetGuid")));
    call(utils, "DoEvents");
    const auto files = toObject(call(host.app, "CreateObject", "OBFSL.FileSystemLib"));
    EXPECT_FALSE(toBool(call(files, "FileExists", "no\\such\\file")));
    const auto script = toObject(call(host.app, "CreateObject", "ScriptControl"));
    call(script, "AddObject", "App", host.app);
    call(script, "AddCode", "App.Session(\"guid\") = Len(App.Utils.GetGuid)");
    EXPECT_EQ(qmevents::toInt32(get(host.app, "Session", "guid")), 38);
    EXPECT_EQ(failureOf([&] { call(host.app, "CreateObject", "Shell.Application"); }).substr(0, 4),
              "429 ");
    EXPECT_FALSE(toBool(call(host.app, "IsModuleLoaded", "mail")));
}

} // namespace
} // namespace refhost
