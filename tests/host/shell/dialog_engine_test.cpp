#include <gtest/gtest.h>

#include "automation/error.h"
#include "tests/host/shell/fakes.h"

namespace refhost {
namespace {

using qmevents::Error;
using qmevents::makeRef;
using qmevents::Ref;
using Seen = std::vector<std::string>;

class Dialogs : public testing::Test {
protected:
    Ref<FakeDialog> dialog(const std::string& page) { return makeRef<FakeDialog>(*shell, page); }
    void set(const char* name, const char* value) { put(late, "Dialog", name, value); }
    std::string value(const char* name) { return toText(get(late, "Dialog", name)); }
    std::string refusal(const std::function<void()>& act)
    {
        try {
            act();
        } catch (const Error& error) {
            EXPECT_EQ(error.number(), 5);
            return error.description();
        }
        return "accepted";
    }
    void expectRefusal(const std::function<void()>& act, const std::string& part)
    {
        const std::string text = refusal(act);
        EXPECT_NE(text.find(part), std::string::npos) << text;
    }

    ScriptedFrontEnd frontEnd;
    Ref<Shell> shell = makeShell(frontEnd);
    Ref<qmevents::Object> late = shell;
    DialogEngine& engine = shell->dialogEngine();
};

TEST_F(Dialogs, GiveTheirOutputWhenConfirmedAndNoneWhenCancelled)
{
    for (const bool confirms : {true, false}) {
        SCOPED_TRACE(confirms);
        frontEnd.seen.clear();
        frontEnd.windows = {[&](int window) {
            EXPECT_EQ(value("IN"), "question");
            EXPECT_EQ(value("never set"), "");
            set("out", "answer");
            EXPECT_TRUE(engine.closePage(window, confirms));
            EXPECT_FALSE(engine.isOpen(window));
        }};
        const auto ask = dialog("addevent");
        ask->input = qmevents::Value("question");
        EXPECT_EQ(ask->create(), confirms);
        EXPECT_EQ(toText(ask->output), confirms ? "answer" : "");
        EXPECT_EQ(value("in"), "") << "values must not leak into the next dialog";
        EXPECT_EQ(frontEnd.seen, (Seen{"open addevent", "close addevent"}));
    }
}

TEST_F(Dialogs, AreCancelledWhenTheFrontEndReturnsWithoutClosingThem)
{
    EXPECT_FALSE(dialog("addevent")->create());
    EXPECT_EQ(frontEnd.seen, (Seen{"open addevent", "close addevent"}));
}

TEST_F(Dialogs, HoldObjectsByReference)
{
    const auto held = makeRef<qmevents::Collection>();
    put(late, "Dialog", "EventInfo", held);
    EXPECT_EQ(getObject(late, "Dialog", "eventinfo"), Ref<qmevents::Object>(held));
    call(getObject(late, "Dialog"), "ClearClipboard");
    EXPECT_TRUE(get(late, "Dialog", "EventInfo").isEmpty());
}

TEST_F(Dialogs, CloseTheWindowWithAnInnerPageUnlessTheOuterDialogKeepsIt)
{
    struct {
        bool keepsOpen;
        const char* nextPage;
        Seen seen;
    } const cases[] = {
        {false, "", {"open findevent", "load results", "close results"}},
        {true, "", {"open findevent", "load results", "load findevent", "close findevent"}},
        {true, "summary", {"open findevent", "load results", "load summary", "close summary"}}};
    for (const auto& [keepsOpen, nextPage, seen] : cases) {
        SCOPED_TRACE(nextPage);
        frontEnd.seen.clear();
        const auto outer = dialog("findevent");
        const auto inner = dialog("results");
        outer->input = qmevents::Value("outer");
        outer->keepsOpen = keepsOpen;
        outer->nextPage = nextPage;
        inner->input = qmevents::Value("inner");
        frontEnd.windows = {[&, stays = keepsOpen](int window) {
            engine.runPageCall(window, [&] { inner->load("subdialog"); });
            EXPECT_EQ(value("in"), "inner");
            set("out", "17");
            EXPECT_EQ(engine.closePage(window, true), !stays);
            if (!stays) return;
            EXPECT_EQ(value("in"), "outer") << "the outer page's values are back";
            EXPECT_TRUE(engine.closePage(window, true));
        }};
        EXPECT_TRUE(outer->create());
        EXPECT_EQ(toText(inner->output), "17");
        EXPECT_EQ(toText(outer->childOutput), "17") << "what the inner page found out stays";
        EXPECT_EQ(frontEnd.seen, seen);
    }
}

TEST_F(Dialogs, GoBackFromAnInnerPageToTheOneBefore)
{
    for (const char* const url : {"obsidian://events/dialogs/findevent", "findevent",
                                  R"(obsidian:\\events\dialogs\FindEvent)", ""}) {
        SCOPED_TRACE(url);
        frontEnd.seen.clear();
        const auto outer = dialog("findevent");
        const auto inner = dialog("results");
        frontEnd.windows = {[&](int window) {
            expectRefusal([&] { engine.goBack(window); }, "shows its first page");
            outer->keepsOpen = true;
            inner->load("subdialog");
            EXPECT_FALSE(engine.closePage(window, true));
            EXPECT_TRUE(engine.ReturnValue().isEmpty()) << "refused, it is no result";
            outer->keepsOpen = false;
            inner->load("subdialog");
            set("out", "17");
            expectRefusal([&] { engine.goBack(window, "addevent"); }, "cannot go back to");
            engine.goBack(window, url);
            EXPECT_TRUE(engine.isOpen(window));
            EXPECT_EQ(toText(inner->output), "") << "a step back confirms nothing";
            EXPECT_EQ(get(shell->dialog({}).object(), "Handler").object(),
                      Ref<qmevents::Object>(outer));
            expectRefusal([&] { engine.Restore("subdialog"); }, "no restore point");
            engine.closePage(window, false);
        }};
        EXPECT_FALSE(outer->create());
        EXPECT_EQ(frontEnd.seen, (Seen{"open findevent", "load results", "load findevent",
                                       "load results", "load findevent", "close findevent"}));
    }
}

TEST_F(Dialogs, KeepTheValuesOfTheWindowBelow)
{
    frontEnd.windows = {[&](int outerWindow) {
                            set("out", "kept");
                            engine.runPageCall(outerWindow, [&] {
                                const auto over = dialog("editeventexpense");
                                EXPECT_TRUE(over->create());
                                EXPECT_EQ(toText(over->output), "of the inner one");
                            });
                            EXPECT_EQ(value("out"), "kept");
                            engine.closePage(outerWindow, true);
                        },
                        [&](int innerWindow) {
                            EXPECT_EQ(value("out"), "");
                            expectRefusal([&] { engine.closePage(innerWindow - 1, true); },
                                          "another dialog is open over dialog window");
                            // A late call of the page below still means its own dialog.
                            engine.runPageCall(innerWindow - 1,
                                               [&] { EXPECT_EQ(value("out"), "kept"); });
                            engine.runPageCall({}, [&] { set("out", "of the main view"); });
                            set("out", "of the inner one");
                            engine.closePage(innerWindow, true);
                        }};
    const auto outer = dialog("addevent");
    EXPECT_TRUE(outer->create());
    EXPECT_EQ(toText(outer->output), "kept");
    EXPECT_EQ(frontEnd.seen, (Seen{"open addevent", "open editeventexpense",
                                   "close editeventexpense", "close addevent"}));
}

TEST_F(Dialogs, ReportAHandlerThatFailsAndClose)
{
    const auto failing = dialog("addevent");
    failing->fails = true;
    frontEnd.windows = {[&](int window) { EXPECT_TRUE(engine.closePage(window, true)); }};
    EXPECT_FALSE(failing->create());
    EXPECT_EQ(frontEnd.seen,
              (Seen{"open addevent", "close addevent", "unexpected error Overflow||6"}));
}

TEST_F(Dialogs, UndoAnInnerPageWhoseCommandFailsBeforeItIsShown)
{
    const auto outer = dialog("findevent");
    outer->input = qmevents::Value("outer");
    frontEnd.windows = {[&](int window) {
        const auto fail = [&] {
            call(late->invoke(late->memberId("Dialog"), qmevents::CallKind::get, {}).object(),
                 "SetRestorePoint", "subdialog");
            engine.setHandler(dialog("results"));
            set("in", "half set");
            set("new", "half set");
            throw Error(1004, "Test", "lost");
        };
        EXPECT_THROW(engine.runPageCall(window, fail), Error);
        EXPECT_EQ(value("in"), "outer");
        EXPECT_EQ(value("new"), "");
        EXPECT_EQ(engine.handler(), Ref<qmevents::Object>(outer));
        engine.closePage(window, true);
    }};
    EXPECT_TRUE(outer->create());
}

TEST_F(Dialogs, CloseFromACommandOnceItHasEndedAndThenNavigate)
{
    frontEnd.windows = {[&](int window) {
        engine.runPageCall(window, [&] {
            call(shell->dialog({}).object(), "Close", "obsidian://events/events-view");
            EXPECT_TRUE(engine.isOpen(window));
            call(late, "MsgBox", "still here");
        });
        EXPECT_FALSE(engine.isOpen(window));
    }};
    EXPECT_FALSE(dialog("findevent")->create());
    EXPECT_EQ(frontEnd.seen, (Seen{"open findevent", "box still here|", "close findevent",
                                   "go obsidian://events/events-view"}));
}

TEST_F(Dialogs, StayOpenWhenTheCommandDoesNotWaitForThem)
{
    int window = 0;
    frontEnd.windows = {[&](int opened) { window = opened; }};
    engine.setWaitForClose(false);
    engine.show("events", "progressbar", 200, 300);
    EXPECT_TRUE(engine.isOpen(window));
    EXPECT_TRUE(engine.waitForClose()) << "only that one window is left open";
    engine.Close({});
    EXPECT_FALSE(engine.isOpen(window));
    EXPECT_EQ(frontEnd.seen, (Seen{"open progressbar", "close progressbar"}));
}

TEST_F(Dialogs, CancelWithEverythingOpenedOverThem)
{
    const auto outer = dialog("addevent");
    outer->keepsOpen = true;
    frontEnd.windows = {[&](int window) {
                            const auto over = dialog("editeventtask");
                            EXPECT_FALSE(over->create());
                            EXPECT_FALSE(engine.isOpen(window));
                        },
                        [&](int window) { engine.cancel(window - 1); }};
    EXPECT_FALSE(outer->create());
    EXPECT_EQ(frontEnd.seen, (Seen{"open addevent", "open editeventtask", "close editeventtask",
                                   "close addevent"}));
}

TEST_F(Dialogs, RefuseWhatMakesNoSense)
{
    frontEnd.windows = {[&](int window) {
        engine.closePage(window, true);
        expectRefusal([&] { engine.closePage(window, true); }, "is not open");
    }};
    engine.show("events", "addevent");
    const struct {
        std::function<void()> act;
        const char* part;
    } cases[] = {
        {[&] { engine.closePage(99, true); }, "dialog window 99 is not open"},
        {[&] { engine.goBack(99); }, "dialog window 99 is not open"},
        {[&] { engine.runPageCall(99, [] {}); }, "dialog window 99 is not open"},
        {[&] { engine.Close({}); }, "no dialog is open"},
        {[&] { engine.GoNext(); }, "no dialog is open"},
        {[&] { engine.loadPage("events", "addevent"); }, "no dialog is open"},
        {[&] { engine.SetRestorePoint("c"); }, "no dialog is open"},
        {[&] { engine.Restore("c"); }, "no restore point called \"c\""},
        {[&] { engine.GetRestoreTask("c"); }, "no restore point called \"c\""},
        {[&] { engine.show("events", ""); }, "is not a dialog page"},
        {[&] { engine.show("events", "../secrets"); }, "is not a dialog page"},
        {[&] { engine.show("events", "addevent", 0); }, "height"},
        {[&] { engine.show("events", "addevent", {}, -5); }, "width"},
    };
    for (const auto& [act, part] : cases) expectRefusal(act, part);
}

} // namespace
} // namespace refhost
