#include "tests/host/web/fake_host.h"

namespace refhost {
namespace {

using std::chrono::milliseconds;

class WebDialogs : public WebTest {
protected:
    static json run(const char* command, const char* argument)
    {
        return chainOf({{{"call", command}, {"args", {argument}}}});
    }
    static json inWindow(json body, const json& window)
    {
        body["window"] = window;
        return body;
    }
    static json dialogValue(const char* name)
    {
        return chainOf({{{"get", "Shell"}}, {{"call", "Dialog"}, {"args", {name}}}});
    }
    static json putDialogValue(const char* name, const json& value)
    {
        return chainOf(
            {{{"get", "Shell"}}, {{"put", "Dialog"}, {"args", {name}}, {"value", value}}});
    }
};

TEST_F(WebDialogs, LetThePageCallWhileTheCommandWaits)
{
    anna->openStream();
    auto command = anna->later("call", run("RunDialog", "addevent"));
    const json opened = anna->next("dialog-open");
    const json& window = opened.at("window");
    EXPECT_EQ(opened.at("url"), "/events/dialogs/addevent?window=" + window.dump());
    EXPECT_EQ(opened.at("title"), "Title of addevent");
    EXPECT_EQ(opened.at("width"), 550);
    EXPECT_EQ(anna->post("call", inWindow(dialogValue("in"), window)).at("value"),
              "in of addevent");
    anna->post("call", inWindow(putDialogValue("out", "saved"), window));
    EXPECT_EQ(anna->post("call", dialogValue("in")).at("value"), nullptr)
        << "the page behind has no part in the dialog's values";

    // A dialog over the dialog.
    auto inner = anna->later("call", inWindow(run("RunDialog", "editeventtask"), window));
    const json over = anna->next("dialog-open").at("window");
    const json closeOuter{{"window", window}, {"returnValue", true}};
    EXPECT_EQ(anna->post("dialog-close", closeOuter).at("error").at("number"), 5);
    anna->post("dialog-close", {{"window", over}, {"returnValue", false}});
    EXPECT_EQ(anna->next("dialog-close").at("window"), over);
    EXPECT_EQ(inner.get().at("value"), "cancelled ");

    EXPECT_EQ(anna->post("dialog-close", closeOuter), (json{{"ok", true}, {"closed", true}}));
    EXPECT_EQ(anna->next("dialog-close").at("window"), window);
    EXPECT_EQ(command.get().at("value"), "confirmed saved");
    EXPECT_EQ(anna->post("dialog-close", closeOuter).at("error").at("number"), 5);
}

TEST_F(WebDialogs, ShowMessagesAndTakeAnswers)
{
    anna->openStream();
    auto command = anna->later("call", run("Ask", "Sure?"));
    const json message = anna->next("message");
    EXPECT_EQ(message.at("kind"), "box");
    EXPECT_EQ(message.at("text"), "About to ask");
    EXPECT_EQ(anna->post("answer", {{"id", 999}, {"button", 1}}).at("ok"), false);
    EXPECT_EQ(anna->post("answer", {{"id", message.at("id")}, {"button", 1}}).at("ok"), true);
    const json prompt = anna->next("prompt");
    EXPECT_EQ(prompt.at("buttons"), 4);
    EXPECT_EQ(anna->post("answer", {{"id", prompt.at("id")}, {"button", 2}}).at("ok"), false);
    EXPECT_EQ(anna->post("answer", {{"id", prompt.at("id")}, {"button", 6}}).at("ok"), true);
    EXPECT_EQ(command.get().at("value"), 6);
}

TEST_F(WebDialogs, NavigateOnceTheCommandHasEnded)
{
    anna->openStream();
    auto command = anna->later("call", run("LeaveFor", "obsidian://events/event-details?id=5"));
    const json message = anna->next("message");
    anna->post("answer", {{"id", message.at("id")}, {"button", 1}});
    EXPECT_EQ(anna->next("navigate").at("url"), "/events/event-details?id=5");
    EXPECT_EQ(command.get().at("value"), nullptr);
}

TEST_F(WebDialogs, AreCancelledWhenTheirPageGoesAway)
{
    struct {
        const char* how;
        bool saysGoodbye;
    } const cases[] = {{"leaves", true}, {"vanishes", false}};
    for (const auto& [how, saysGoodbye] : cases) {
        SCOPED_TRACE(how);
        Browser page(server->port(), std::string("page-that-") + how);
        page.cookie = anna->cookie;
        page.token = anna->token;
        page.openStream();
        const json thing =
            page.post("call", chainOf({{{"get", "Things"}}, {{"call", "Item"}, {"args", {1}}}}));
        auto command = page.later("call", run("RunDialog", "addevent"));
        const json window = page.next("dialog-open").at("window");
        auto question = page.later("call", inWindow(run("Ask", "Sure?"), window));
        page.next("message");
        if (saysGoodbye) anna->post("leave", {{"view", page.view}});
        page.closeStream();
        EXPECT_EQ(question.get().at("value"), 7);
        EXPECT_EQ(command.get().at("value"), "cancelled ");
        const json held = chainOf({{{"from", thing.at("value")}}, {{"get", "Id"}}});
        EXPECT_EQ(anna->post("call", held).contains("error"), saysGoodbye)
            << "a page whose connection broke for a moment still needs its objects";
    }
}

TEST_F(WebDialogs, WaitInOneBrowserWhileAnotherWorks)
{
    anna->openStream();
    auto ben = newBrowser("view-b");
    ASSERT_EQ(ben->signIn("anna"), 200); // the same user once more
    ben->openStream();
    auto command = anna->later("call", run("RunDialog", "addevent"));
    const json window = anna->next("dialog-open").at("window");
    EXPECT_EQ(ben->post("call", dialogValue("in")).at("value"), nullptr);
    EXPECT_EQ(ben->status("call", inWindow(dialogValue("in"), window)), 200);
    auto other = ben->later("call", run("RunDialog", "findevent"));
    const json bensWindow = ben->next("dialog-open").at("window");
    ben->post("dialog-close", {{"window", bensWindow}, {"returnValue", true}});
    EXPECT_EQ(other.get().at("value"), "confirmed ");
    anna->post("dialog-close", {{"window", window}, {"returnValue", true}});
    EXPECT_EQ(command.get().at("value"), "confirmed ");
}

TEST_F(WebDialogs, GoToThePageWhoseCallRuns)
{
    anna->openStream();
    Browser second(server->port(), "second-tab");
    second.cookie = anna->cookie;
    second.token = anna->token;
    second.openStream();
    auto first = anna->later("call", run("RunDialog", "addevent"));
    const json window = anna->next("dialog-open").at("window");
    auto other = second.later("call", run("RunDialog", "findevent"));
    const json over = second.next("dialog-open").at("window");
    // Either window may close first; neither page stands over the other's.
    anna->post("dialog-close", {{"window", window}, {"returnValue", true}});
    EXPECT_EQ(anna->next("dialog-close").at("window"), window);
    second.post("dialog-close", {{"window", over}, {"returnValue", false}});
    EXPECT_EQ(second.next("dialog-close").at("window"), over);
    EXPECT_EQ(first.get().at("value"), "confirmed ");
    EXPECT_EQ(other.get().at("value"), "cancelled ");
}

TEST_F(WebDialogs, EndWithTheSession)
{
    anna->openStream();
    auto command = anna->later("call", run("RunDialog", "addevent"));
    anna->next("dialog-open");
    EXPECT_EQ(anna->status("signout", json::object()), 200);
    EXPECT_EQ(command.get().at("value"), "cancelled ");
    const auto patience = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (backend.alive > 0 && std::chrono::steady_clock::now() < patience)
        std::this_thread::sleep_for(milliseconds(10));
    EXPECT_EQ(backend.alive, 0);

    ASSERT_EQ(anna->signIn(), 200);
    anna->closeStream();
    anna->openStream();
    auto waiting = anna->later("call", run("RunDialog", "addevent"));
    anna->next("dialog-open");
    server->stop();
    EXPECT_EQ(waiting.get().at("value"), "cancelled ");
    EXPECT_EQ(backend.alive, 0);
}

} // namespace
} // namespace refhost
