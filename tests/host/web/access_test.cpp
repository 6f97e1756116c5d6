#include <cstring>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include "host/web/addresses.h"
#include "host/web/held_objects.h"
#include "host/web/sign_in_guard.h"
#include "tests/host/web/fake_host.h"

namespace refhost {
namespace {

class Access : public WebTest {
protected:
    int status(const std::string& method, const std::string& path, httplib::Headers headers = {},
               const std::string& type = "application/json") const
    {
        httplib::Request request;
        request.method = method;
        request.path = path;
        request.headers = std::move(headers);
        if (method != "GET" && method != "HEAD") {
            request.body = R"({"chain":[]})";
            request.headers.emplace("Content-Type", type);
        }
        const auto result = anna->client().send(request);
        return result ? result->status : 0;
    }
    httplib::Headers with(const std::string& name, const std::string& value) const
    {
        auto headers = anna->headers();
        headers.erase(name);
        if (!value.empty()) headers.emplace(name, value);
        return headers;
    }
    // The status of a request sent exactly as written, which a client library would tidy up.
    std::string rawStatus(const std::string& target) const
    {
        const int connection = socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(static_cast<std::uint16_t>(server->port()));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        EXPECT_EQ(connect(connection, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
        const std::string text = "GET " + target +
                                 " HTTP/1.1\r\nHost: localhost:" + std::to_string(server->port()) +
                                 "\r\nCookie: " + anna->cookie + "\r\nConnection: close\r\n\r\n";
        EXPECT_EQ(::write(connection, text.data(), text.size()), ssize_t(text.size()));
        char answer[13] = {};
        EXPECT_GT(recv(connection, answer, 12, MSG_WAITALL), 0);
        close(connection);
        return std::string(answer).substr(std::min<std::size_t>(9, std::strlen(answer)));
    }
};

TEST_F(Access, NeedsASessionATokenAndOurOwnOrigin)
{
    const std::string ours = "127.0.0.1:" + std::to_string(server->port());
    const struct {
        const char* what;
        int status;
        std::string method, path;
        httplib::Headers headers;
        std::string type;
    } cases[] = {
        {"all right", 200, "POST", "/api/call", anna->headers(), "application/json"},
        {"our origin", 200, "POST", "/api/call", with("Origin", "http://" + ours),
         "application/json"},
        {"no session", 401, "POST", "/api/call", with("Cookie", ""), "application/json"},
        {"made-up session", 401, "POST", "/api/call", with("Cookie", "quillmere_1=1"),
         "application/json"},
        {"no session", 401, "GET", "/api/events?view=a", {}, ""},
        {"no token", 403, "POST", "/api/call", with("X-Token", ""), "application/json"},
        {"wrong token", 403, "POST", "/api/call", with("X-Token", "1"), "application/json"},
        {"foreign page", 403, "POST", "/api/call", with("Origin", "http://other.example"),
         "application/json"},
        {"other port", 403, "POST", "/api/call", with("Origin", "http://127.0.0.1:1"),
         "application/json"},
        {"no origin", 403, "POST", "/api/call", with("Origin", "null"), "application/json"},
        {"foreign sign-in", 403, "POST", "/api/signin", with("Origin", "http://other.example"),
         "application/json"},
        {"foreign beacon", 403, "POST", "/api/leave", with("Origin", "http://other.example"),
         "application/json"},
        {"cross-site", 403, "GET", "/api/events?view=a", with("Sec-Fetch-Site", "cross-site"), ""},
        {"other name", 403, "POST", "/api/call", with("Host", "rebound.example"),
         "application/json"},
        {"other name", 403, "GET", "/lib/app.js", with("Host", "rebound.example:80"), ""},
        {"a form", 415, "POST", "/api/call", anna->headers(), "text/plain"},
        {"reading a call", 405, "GET", "/api/call", anna->headers(), ""},
        {"posting the stream", 405, "POST", "/api/events", anna->headers(), "application/json"},
        {"posting a page", 405, "POST", "/host/home", anna->headers(), "application/json"},
        {"deleting", 405, "DELETE", "/api/call", anna->headers(), "application/json"},
        {"putting a page", 405, "PUT", "/lib/app.js", anna->headers(), "application/json"},
        {"unknown request", 404, "POST", "/api/everything", anna->headers(), "application/json"},
        {"bad view", 400, "POST", "/api/call", with("X-View", "a b"), "application/json"},
        {"no view", 400, "GET", "/api/events", anna->headers(), ""},
    };
    for (const auto& [what, expected, method, path, headers, type] : cases)
        EXPECT_EQ(status(method, path, headers, type), expected) << what << " " << path;
    const auto large = anna->send("call", std::string(1024 * 1024 + 1, ' '));
    EXPECT_EQ(large ? large->status : 0, 413);
}

TEST_F(Access, GivesFilesBelowThePagesPicturesAndLibrariesAlone)
{
    write("secret.html", "secret");
    write("secret.gif", "secret");
    write("cache/1033/report.gif", "picture");
    write("cache/lists/columns.json", "queries");
    write("cache/lists/columns.html", "queries");
    write("node_modules/d3/dist/d3.min.js", "library");
    write("pages/.hidden.js", "hidden");
    write("pages/.git/config.js", "hidden");
    write("pages/notes.txt", "of no known type");
    std::filesystem::create_symlink(folder / "secret.html", folder / "pages/lib/link.html");
    std::filesystem::create_directory_symlink(folder.path(), folder / "pages/up");
    const struct {
        const char* target;
        const char* status;
    } cases[] = {
        {"/lib/app.js", "200"},
        {"/lib/app.js?x=../y", "200"},
        {"/events/events-view?id=5", "200"},
        {"/../secret", "404"},
        {"/lib/../../secret", "404"},
        {"/lib/../lib/app.js", "404"},
        {"/lib/./app.js", "404"},
        {"//lib/app.js", "404"},
        {"/lib//app.js", "404"},
        {"/lib/", "404"},
        {"/lib", "404"},
        {"/%2e%2e/secret", "404"},
        {"/..%2fsecret", "404"},
        {"/%2e%2e%2fsecret", "404"},
        {"/..%5csecret", "404"},
        {"/..\\secret", "404"},
        {"/lib%2fapp.js", "404"},
        {"/lib/app.js%00.html", "404"},
        {"/lib/app%252ejs", "404"},
        {"/%c0%ae%c0%ae/secret", "404"},
        {"/.hidden.js", "404"},
        {"/.git/config.js", "404"},
        {"/notes.txt", "404"},
        {"/host/home.html", "404"},
        {"/lib/link", "404"},
        {"/up/secret", "404"},
        {"/api", "404"},
        {"/cache/1033/report.gif", "200"},
        {"/cache/1033/gone.gif", "404"},
        {"/cache/lists/columns.json", "404"},
        {"/cache/lists/columns", "404"},
        {"/cache/../secret.gif", "404"},
        {"/secret.gif", "404"},
        {"/libraries/d3.js", "200"},
        {"/libraries/other.js", "404"},
        {"/node_modules/d3/dist/d3.min.js", "404"},
    };
    for (const auto& [target, status] : cases) EXPECT_EQ(rawStatus(target), status) << target;
    EXPECT_NE(rawStatus("secret"), "200");
    EXPECT_NE(rawStatus("file:///etc/passwd"), "200");
}

TEST_F(Access, SendsPagesWithTheirTagAndGuards)
{
    auto client = anna->client();
    auto page = client.Get("/events/events-view?id=5", anna->headers());
    ASSERT_TRUE(page);
    EXPECT_EQ(page->body, "<p>events</p>");
    EXPECT_EQ(page->get_header_value("Content-Type"), "text/html; charset=utf-8");
    EXPECT_EQ(page->get_header_value("Cache-Control"), "no-cache");
    EXPECT_EQ(page->get_header_value("X-Content-Type-Options"), "nosniff");
    EXPECT_NE(page->get_header_value("Content-Security-Policy").find("frame-ancestors 'self'"),
              std::string::npos);
    const auto again =
        client.Get("/events/events-view", with("If-None-Match", page->get_header_value("ETag")));
    EXPECT_EQ(again->status, 304);
    const auto missing = client.Get("/events/nowhere", anna->headers());
    EXPECT_EQ(missing->status, 404);
    EXPECT_EQ(missing->body, "<p>nothing here</p>");

    EXPECT_EQ(client.Get("/", anna->headers())->get_header_value("Location"), "/host/home");
    EXPECT_EQ(client.Get("/")->get_header_value("Location"), "/host/signin");
    EXPECT_EQ(client.Get("/host/signin")->status, 200);
    EXPECT_EQ(client.Get("/events/events-view?id=5&x=y")->get_header_value("Location"),
              "/host/signin?next=/events/events-view?id=5&x=y")
        << "as this client decodes it";
}

TEST_F(Access, EndsWithSigningOutAndSlowsGuessingDown)
{
    const json session = anna->post("session");
    EXPECT_EQ(session.at("user"), (json{{"id", 7}, {"name", "anna"}}));
    EXPECT_EQ(session.at("rights"), json::array({"events/view"}));
    EXPECT_EQ(session.at("locale").at("order"), "mdy");
    EXPECT_EQ(session.at("today").get<std::string>().size(), 10U);
    EXPECT_EQ(session.at("season"), (json{{"from", "2026-07-01"}, {"until", "2027-07-01"}}));
    EXPECT_EQ(backend.alive, 1);
    EXPECT_EQ(anna->status("signout", json::object()), 200);
    EXPECT_EQ(anna->status("call", chainOf({})), 401);
    EXPECT_EQ(anna->status("session", json::object()), 401);

    auto other = newBrowser("view-b");
    EXPECT_EQ(other->signIn("unlucky"), 500);
    for (int i = 0; i < 5; ++i) EXPECT_EQ(other->signIn("Bob", "wrong"), 401);
    EXPECT_EQ(other->signIn("bob", "right"), 429);
    EXPECT_EQ(other->signIn("anna", "right"), 200);
}

TEST_F(Access, EndsForBrowsersThatDoNothingForLong)
{
    WebServerOptions options;
    options.pages = folder / "pages";
    options.idleTimeout = std::chrono::milliseconds(200);
    FakeBackend impatient;
    WebServer other(impatient, options);
    Browser browser(other.port(), "view");
    ASSERT_EQ(browser.signIn(), 200);
    EXPECT_EQ(browser.status("session", json::object()), 200);
    std::this_thread::sleep_for(std::chrono::milliseconds(800));
    EXPECT_EQ(browser.status("session", json::object()), 401);
    EXPECT_EQ(impatient.alive, 0);
}

TEST(HeldObjects, AreBoundedAndGoWithWhoHoldsThem)
{
    HeldObjects held;
    const auto thing = qmevents::makeRef<Thing>();
    const int first = held.hold(thing, {"a", 0});
    const int second = held.hold(thing, {"a", 3});
    held.releaseWindow(3);
    EXPECT_NO_THROW(held.at(first));
    EXPECT_THROW(held.at(second), qmevents::Error);
    for (std::size_t i = 1; i < HeldObjects::mostPerView; ++i) held.hold(thing, {"a", 0});
    EXPECT_THROW(held.hold(thing, {"a", 0}), qmevents::Error);
    EXPECT_NO_THROW(held.hold(thing, {"b", 0}));
    held.releaseView("a");
    EXPECT_EQ(held.size(), 1U);
}

TEST(SignInGuard, WaitsLongerWithEachFailureAndForgets)
{
    SignInGuard guard;
    const SignInGuard::Clock::time_point start{};
    for (int i = 0; i < 4; ++i) guard.failed("ann", "here", start);
    EXPECT_EQ(guard.mustWait("ann", "here", start).count(), 0);
    guard.failed("ANN", "here", start);
    EXPECT_EQ(guard.mustWait("ann", "here", start).count(), 1);
    for (int i = 0; i < 20; ++i) guard.failed("ann", "here", start);
    EXPECT_EQ(guard.mustWait("Ann", "elsewhere", start).count(), 60);
    EXPECT_EQ(guard.mustWait("ben", "here", start).count(), 0);
    EXPECT_EQ(guard.mustWait("ann", "here", start + std::chrono::hours(1)).count(), 0);
}

TEST(Addresses, LeadFromTheHostsSchemeToThePagesAndBack)
{
    EXPECT_EQ(browserPath("obsidian://events/event-details?id=5"), "/events/event-details?id=5");
    EXPECT_EQ(browserPath("obsidian:////evil.example/x"), "/evil.example/x");
    EXPECT_EQ(browserPath("obsidian://events/x?tab=a \"b\"\n"), "/events/x?tab=a%20%22b%22%0A");
    EXPECT_EQ(hostAddress("/events/dialogs/findevent"), "obsidian://events/dialogs/findevent");
    EXPECT_EQ(hostAddress("obsidian://a/b"), "obsidian://a/b");
    EXPECT_EQ(hostAddress(""), "");
    EXPECT_EQ(dialogPath({"events", "addevent", 1, 1, 3, ""}), "/events/dialogs/addevent?window=3");
    EXPECT_EQ(dialogPath({"donor", "find?x=1", 1, 1, 3, ""}), "/donor/dialogs/find?x=1&window=3");
}

} // namespace
} // namespace refhost
