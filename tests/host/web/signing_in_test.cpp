// What happens between the password and the first page, and which pages open then.

#include "host/shell/dialog_engine.h"
#include "tests/host/web/fake_host.h"

namespace refhost {
namespace {

class SigningIn : public WebTest {
protected:
    json signIn(const char* attempt = "") const
    {
        return newBrowser("view-b")->post(
            "signin", {{"user", "ben"}, {"password", "right"}, {"attempt", attempt}});
    }
    json progress(const char* attempt) const
    {
        return newBrowser("view-c")->post("signin-progress", {{"attempt", attempt}});
    }
};

TEST_F(SigningIn, EndsAtThePageThatAModuleAsksFor)
{
    EXPECT_EQ(signIn().dump(), R"({"ok":true})");
    backend.onSignIn = [](Shell& shell, auto&) {
        shell.Navigate("obsidian://host/home", {});
        shell.Navigate("obsidian://events/events-view?show=all", {});
    };
    EXPECT_EQ(signIn().at("page"), "/events/events-view?show=all");
}

TEST_F(SigningIn, ShowsTheProgressOfLongWorkToWhoeverKnowsTheAttempt)
{
    std::promise<void> begun, seen, told;
    backend.onSignIn = [&](Shell& shell, const std::function<void()>& doEvents) {
        auto& dialog = shell.dialogEngine();
        dialog.setValue("heading", qmevents::Value("Repairing"));
        dialog.setValue("total", qmevents::Value(3));
        dialog.setWaitForClose(false);
        dialog.show("events", "progressbar");
        begun.set_value();
        seen.get_future().wait();
        dialog.setValue("done", qmevents::Value(2));
        doEvents();
        told.set_value();
    };
    auto answer = std::async(std::launch::async, [&] { return signIn("secret"); });
    begun.get_future().wait();
    EXPECT_EQ(progress("secret").at("heading"), "Repairing");
    EXPECT_EQ(progress("other").dump(), "{}");
    seen.set_value();
    told.get_future().wait();
    // The dialog that was never closed keeps nobody from signing in, and neither does one that
    // waits or a question.
    EXPECT_EQ(answer.get().dump(), R"({"ok":true})");
    EXPECT_EQ(progress("secret").dump(), "{}");
    backend.onSignIn = [](Shell& shell, auto&) {
        shell.dialogEngine().show("events", "addevent");
        EXPECT_EQ(shell.MsgPrompt("Go on?", 4, ""), 7);
    };
    EXPECT_EQ(signIn().dump(), R"({"ok":true})");
}

TEST_F(SigningIn, OpensNoPageThatTheUserMayNotSee)
{
    write("pages/host/403.html", "<p>not for you</p>");
    const auto get = [&](const char* path, const httplib::Headers& headers = {}) {
        auto all = anna->headers();
        all.insert(headers.begin(), headers.end());
        const auto result = anna->client().Get(path, all);
        return std::to_string(result->status) + " " + result->body;
    };
    const auto open = anna->client().Get("/events/events-view", anna->headers());
    EXPECT_EQ(open->body, "<p>events</p>");
    backend.refusedPath = "/events/events-view";
    EXPECT_EQ(get("/events/events-view?show=all"), "403 <p>not for you</p>");
    // A copy that the browser still has is no way in.
    EXPECT_EQ(get("/events/events-view", {{"If-None-Match", open->get_header_value("ETag")}}),
              "403 <p>not for you</p>");
    EXPECT_EQ(get("/host/home"), "200 <p>home</p>");
    EXPECT_EQ(get("/lib/app.js"), "200 export {}");
}

} // namespace
} // namespace refhost
