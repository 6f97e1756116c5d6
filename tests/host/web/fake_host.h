#pragma once

#include <condition_variable>
#include <filesystem>
#include <fstream>
#include <future>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <httplib.h>
#include <nlohmann/json.hpp>

#include "automation/collection.h"
#include "automation/describe.h"
#include "automation/error.h"
#include "host/web/web_server.h"
#include "tests/host/shell/fakes.h"
#include "tests/support/temp_folder.h"

namespace refhost {

using nlohmann::json;

/// A record as pages show it.
class Thing : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "Thing";
    const qmevents::Members& members() const override
    {
        static const qmevents::Members table =
            qmevents::describe<Thing>("A thing.")
                .property("Id", &Thing::id, "Number.")
                .property("Name", &Thing::name, "Name.")
                .property("Cost", &Thing::cost, "Money.")
                .property("Day", &Thing::day, "Date.")
                .property("Part", &Thing::part, "Another thing.");
        return table;
    }
    std::int32_t id = 0;
    std::string name;
    qmevents::Currency cost;
    qmevents::Date day;
    qmevents::Ref<Thing> part;
};

class FakeUser : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "FakeUser";
    const qmevents::Members& members() const override
    {
        static const qmevents::Members table = qmevents::describe<FakeUser>("Who is signed in.")
                                                   .readOnly("Id", &FakeUser::id, "Number.")
                                                   .readOnly("Name", &FakeUser::name, "Name.")
                                                   .readOnly("CurrentUser", &FakeUser::self, "Me.");
        return table;
    }
    qmevents::Ref<FakeUser> self() { return qmevents::Ref<FakeUser>(this); }
    std::int32_t id = 7;
    std::string name;
};

/// The commands and data that the tests call.
class FakeApp : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "FakeApp";
    const qmevents::Members& members() const override
    {
        using qmevents::arg;
        static const qmevents::Members table =
            qmevents::describe<FakeApp>("Where all begins.")
                .readOnly("Shell", &FakeApp::shell, "The shell.")
                .readOnly("Security", &FakeApp::user, "Security.")
                .readOnly("Things", &FakeApp::things, "All things.")
                .property("Note", &FakeApp::note, "Anything.")
                .method("Find", &FakeApp::find,
                        {arg("Id"), qmevents::optional("Reason"), qmevents::optional("Found")},
                        "Looks for a thing.")
                .method("Same", &FakeApp::same, {arg("Value")}, "Gives it back.")
                .method("Fail", &FakeApp::fail, "Fails.")
                .method("Ask", &FakeApp::ask, {arg("Text")}, "Asks and notes the button.")
                .method("RunDialog", &FakeApp::runDialog, {arg("Page")}, "Shows a dialog.")
                .method("LeaveFor", &FakeApp::leaveFor, {arg("Url")}, "Navigates, then tells.");
        return table;
    }

    explicit FakeApp(FrontEnd& frontEnd)
        : shell(makeShell(frontEnd)), user(qmevents::makeRef<FakeUser>()),
          things(qmevents::makeRef<qmevents::Collection>())
    {
        for (std::int32_t i = 1; i <= 3; ++i) addThing(i);
    }
    ~FakeApp() override { shell->dialogEngine().reset(); }

    void addThing(std::int32_t id) const
    {
        const auto thing = qmevents::makeRef<Thing>();
        thing->id = id;
        thing->name = "Thing " + std::to_string(id);
        thing->cost = qmevents::Currency::fromScaled(125'000);
        thing->day = qmevents::Date::of(2026, 3, 7, 18);
        if (id == 2) thing->part = toThing(things->at(1));
        things->append(thing, std::to_string(id));
    }
    static qmevents::Ref<Thing> toThing(const qmevents::Value& value)
    {
        return qmevents::refCast<Thing>(value.object());
    }
    bool find(std::int32_t id, std::string* reason, qmevents::Ref<Thing>* found) const
    {
        if (!things->contains(std::to_string(id))) {
            if (reason) *reason = "There is no such thing.";
            return false;
        }
        if (found) *found = toThing(things->at(std::to_string(id)));
        return true;
    }
    qmevents::Value same(const qmevents::Value& value) { return value; }
    void fail() { throw qmevents::Error(1004, "Fake", "It \"broke\" \xE2\x82\xAC \xFF."); }
    std::int32_t ask(const std::string& text) const
    {
        shell->MsgBox("About to ask", "Note");
        return shell->MsgPrompt(text, 4, "Question");
    }
    std::string runDialog(const std::string& page) const
    {
        const auto dialog = qmevents::makeRef<FakeDialog>(*shell, page);
        dialog->input = qmevents::Value("in of " + page);
        const bool confirmed = dialog->create();
        return (confirmed ? "confirmed " : "cancelled ") + toText(dialog->output);
    }
    void leaveFor(const std::string& url) const
    {
        shell->Navigate(url, {});
        shell->MsgBox("Leaving", "");
    }

    qmevents::Ref<Shell> shell;
    qmevents::Ref<FakeUser> user;
    qmevents::Ref<qmevents::Collection> things;
    qmevents::Value note;
};

class FakeBackend : public Backend {
public:
    std::optional<std::string> authenticate(const std::string& user,
                                            const std::string& password) override
    {
        if (password != "right") return std::nullopt;
        return user;
    }
    std::unique_ptr<SignedIn> signIn(const std::string& user, FrontEnd& frontEnd,
                                     std::function<void()> doEvents) override
    {
        if (user == "unlucky") throw std::runtime_error("no luck");
        auto session = std::make_unique<Fake>(user, frontEnd, *this);
        if (onSignIn) onSignIn(session->shell(), doEvents);
        return session;
    }
    std::atomic<int> alive = 0;
    std::string refusedPath; ///< A page that nobody may open.
    std::function<void(Shell&, const std::function<void()>& doEvents)> onSignIn;

private:
    class Fake : public SignedIn {
    public:
        Fake(const std::string& user, FrontEnd& frontEnd, FakeBackend& backend)
            : backend_(backend), app_(qmevents::makeRef<FakeApp>(frontEnd))
        {
            app_->user->name = user;
            ++backend_.alive;
        }
        ~Fake() override { --backend_.alive; }
        Shell& shell() const { return *app_->shell; }
        qmevents::Ref<qmevents::Object> app() override { return app_; }
        std::vector<std::string> rights() override { return {"events/view"}; }
        qmevents::Date fiscalYearStart() override { return qmevents::Date::of(2026, 7, 1); }
        bool mayOpen(const std::string& path) override { return path != backend_.refusedPath; }

    private:
        FakeBackend& backend_;
        qmevents::Ref<FakeApp> app_;
    };
};

/// A browser with one page: requests, and the events that the page was told.
class Browser {
public:
    Browser(int port, std::string viewName) : view(std::move(viewName)), port_(port) {}
    ~Browser() { closeStream(); }

    httplib::Client client() const
    {
        httplib::Client result("127.0.0.1", port_);
        result.set_read_timeout(20);
        return result;
    }
    httplib::Headers headers() const
    {
        httplib::Headers all{{"X-View", view}};
        if (!token.empty()) all.emplace("X-Token", token);
        if (!cookie.empty()) all.emplace("Cookie", cookie);
        return all;
    }
    httplib::Result send(const std::string& path, const std::string& body) const
    {
        return client().Post("/api/" + path, headers(), body, "application/json");
    }
    int status(const std::string& path, const json& body) const
    {
        const auto result = send(path, body.dump());
        return result ? result->status : 0;
    }
    json post(const std::string& path, const json& body = json::object()) const
    {
        const auto result = send(path, body.dump());
        if (!result) return "no answer";
        return json::parse(result->body);
    }
    std::future<json> later(const std::string& path, const json& body) const
    {
        return std::async(std::launch::async, [this, path, body] { return post(path, body); });
    }
    int signIn(const std::string& user = "anna", const std::string& password = "right")
    {
        const json body{{"user", user}, {"password", password}};
        const auto result = client().Post("/api/signin", body.dump(), "application/json");
        if (!result) return 0;
        if (result->status == 200) {
            cookie = result->get_header_value("Set-Cookie");
            cookie.resize(cookie.find(';'));
            token = post("session").at("token");
        }
        return result->status;
    }

    void openStream()
    {
        reader_ = std::thread([this] {
            // As a browser does, from where the last stream ended.
            while (!closing_) {
                std::string pending;
                auto all = headers();
                if (!lastEvent_.empty()) all.emplace("Last-Event-ID", lastEvent_);
                const auto result = client().Get(
                    "/api/events?view=" + view, all, [&](const char* data, size_t size) {
                        pending.append(data, size);
                        for (size_t end = 0; (end = pending.find("\n\n")) != std::string::npos;) {
                            take(pending.substr(0, end));
                            pending.erase(0, end + 2);
                        }
                        return !closing_;
                    });
                if (!result || result->status != 200) return;
            }
        });
    }
    void closeStream()
    {
        closing_ = true;
        if (reader_.joinable()) reader_.join();
        closing_ = false;
    }
    /// The data of the next event, which must be called `name`.
    json next(const std::string& name)
    {
        std::unique_lock lock(mutex_);
        const bool came =
            arrived_.wait_for(lock, std::chrono::seconds(10), [&] { return !events_.empty(); });
        if (!came) {
            ADD_FAILURE() << "no event " << name;
            return json::object();
        }
        const auto [cameName, data] = events_.front();
        events_.erase(events_.begin());
        EXPECT_EQ(cameName, name) << data;
        return json::parse(data);
    }

    std::string view;
    std::string cookie;
    std::string token;

private:
    void take(const std::string& block)
    {
        const auto field = [&](const std::string& name) {
            const auto begin = block.find("\n" + name + ": ");
            if (begin == std::string::npos) return std::string();
            const auto text = begin + name.size() + 3;
            return block.substr(text, block.find('\n', text) - text);
        };
        if (field("event").empty()) return;
        lastEvent_ = block.substr(4, block.find('\n') - 4);
        const std::lock_guard lock(mutex_);
        events_.emplace_back(field("event"), field("data"));
        arrived_.notify_all();
    }

    int port_;
    std::thread reader_;
    std::string lastEvent_;
    std::atomic<bool> closing_ = false;
    std::mutex mutex_;
    std::condition_variable arrived_;
    std::vector<std::pair<std::string, std::string>> events_;
};

/// A server with a few pages, and a browser that is signed in.
class WebTest : public testing::Test {
protected:
    WebTest()
    {
        write("pages/events/events-view.html", "<p>events</p>");
        write("pages/host/home.html", "<p>home</p>");
        write("pages/host/signin.html", "<p>sign in</p>");
        write("pages/host/404.html", "<p>nothing here</p>");
        write("pages/lib/app.js", "export {}");
        WebServerOptions options;
        options.pages = folder / "pages";
        options.addIn = folder.path();
        options.viewGrace = std::chrono::milliseconds(700);
        options.streamLength = std::chrono::milliseconds(300);
        server = std::make_unique<WebServer>(backend, options);
        anna = newBrowser("view-a");
        EXPECT_EQ(anna->signIn(), 200);
    }
    ~WebTest() override { server.reset(); }
    void write(const std::string& path, const std::string& content) const
    {
        std::filesystem::create_directories((folder / path).parent_path());
        std::ofstream(folder / path) << content;
    }
    std::unique_ptr<Browser> newBrowser(const std::string& view) const
    {
        return std::make_unique<Browser>(server->port(), view);
    }

    const qmevents::testing::TempFolder folder;
    FakeBackend backend;
    std::unique_ptr<WebServer> server;
    std::unique_ptr<Browser> anna;
};

inline json chainOf(std::initializer_list<json> steps) { return {{"chain", json(steps)}}; }

} // namespace refhost
