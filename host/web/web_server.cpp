#include "host/web/web_server.h"

#include <array>
#include <atomic>
#include <functional>
#include <mutex>
#include <stdexcept>
#include <string_view>
#include <sys/socket.h>
#include <thread>
#include <utility>

#include <httplib.h>
#include <nlohmann/json.hpp>

#include "automation/error.h"
#include "host/web/event_stream.h"
#include "host/web/page_files.h"
#include "host/web/request_checks.h"
#include "host/web/session_store.h"
#include "host/web/sign_in_guard.h"
#include "host/web/wire_value.h"

namespace refhost {

using httplib::Request;
using httplib::Response;
using nlohmann::json;

namespace {

/// Every event stream, and every command that waits for its user, keeps one of these busy.
constexpr std::size_t threads = 128;
constexpr int mostStreams = 64;
constexpr std::size_t longestBody = 1024 * 1024;
constexpr std::size_t longestName = 256;
constexpr std::string_view signInPage = "/host/signin";
constexpr std::string_view notFoundPage = "/host/404";

const httplib::Headers securityHeaders{
    {"Content-Security-Policy",
     "default-src 'self'; img-src 'self' data:; object-src 'none'; base-uri 'none'; "
     "form-action 'self'; frame-ancestors 'self'"},
    {"X-Content-Type-Options", "nosniff"},
    {"X-Frame-Options", "SAMEORIGIN"},
    {"Referrer-Policy", "no-referrer"},
    {"Cross-Origin-Opener-Policy", "same-origin"},
    {"Cross-Origin-Resource-Policy", "same-origin"},
};

// The library compresses bodies of the types it knows, which costs more than it saves on a
// connection within one machine; files go out through a provider and JSON under a longer name.
void sendFile(Response& response, int status, PageFile file)
{
    response.status = status;
    if (file.content.empty()) return response.set_content("", file.type.c_str());
    const auto content = std::make_shared<const std::string>(std::move(file.content));
    response.set_content_provider(
        content->size(), file.type,
        [content](std::size_t offset, std::size_t length, httplib::DataSink& sink) {
            return sink.write(content->data() + offset, length);
        });
}

void sendJson(Response& response, int status, std::string text)
{
    response.status = status;
    response.body = std::move(text);
    response.set_header("Cache-Control", "no-store");
    response.set_header("Content-Type", "application/json; charset=utf-8");
}

void sendFailure(Response& response, int status, const std::string& reason)
{
    sendJson(response, status,
             json{{"error", reason}}.dump(-1, ' ', false, json::error_handler_t::replace));
}

std::string encoded(std::string_view text)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string result;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if ((std::isalnum(byte) && byte < 0x80) ||
            std::string_view("-._~/").find(c) != std::string_view::npos)
            result += c;
        else
            result += {'%', digits[byte >> 4U], digits[byte & 0xFU]};
    }
    return result;
}

std::string textIn(const json& body, const char* name)
{
    const auto found = body.find(name);
    if (found == body.end() || !found->is_string())
        throw BadRequest(std::string("\"") + name + "\" must be a text");
    auto text = found->get<std::string>();
    if (text.size() > longestName) throw BadRequest(std::string("\"") + name + "\" is too long");
    return text;
}

int numberIn(const json& body, const char* name)
{
    const auto found = body.find(name);
    if (found == body.end() || !found->is_number_integer())
        throw BadRequest(std::string("\"") + name + "\" must be a whole number");
    return found->get<int>();
}

} // namespace

class WebServer::Implementation {
public:
    Implementation(Backend& backend, WebServerOptions options)
        : backend_(backend), options_(std::move(options)), files_(options_.pages),
          sessions_(options_.idleTimeout)
    {
        configure();
        bind();
        cookieName_ = "quillmere_" + std::to_string(port_);
        names_ = namesOf(options_.address, port_);
        listener_ = std::thread([this] { http_.listen_after_bind(); });
        // Stopping a server that does not run yet would be lost.
        while (!http_.is_running()) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    Implementation(const Implementation&) = delete;
    Implementation& operator=(const Implementation&) = delete;
    ~Implementation() { stop(); }

    int port() const { return port_; }
    const std::string& address() const { return options_.address; }

    void stop()
    {
        if (isStopping_.exchange(true)) return;
        sessions_.clear();
        http_.stop();
        listener_.join();
        sessions_.clear();
    }

private:
    using Session = std::shared_ptr<BrowserSession>;
    struct Route;

    void configure();
    void bind();
    void handle(const Request& request, Response& response);
    void handleApi(const Request& request, Response& response);
    void handlePage(const Request& request, Response& response);
    void sendNotFound(Response& response) const;

    void signIn(const Request& request, Response& response);
    void signOut(const Request& request, Response& response, const Session& session);
    void describe(const Request& request, Response& response, const Session& session);
    void stream(const Request& request, Response& response, const Session& session);
    void leave(const Request& request, Response& response, const Session& session);
    void answer(const Request& request, Response& response, const Session& session);
    void perform(const Request& request, Response& response, const Session& session);

    std::string cookie(const std::string& value, bool isGone) const;

    Backend& backend_;
    const WebServerOptions options_;
    const PageFiles files_;
    SignInGuard guard_;
    std::mutex authenticating_; // checking a password takes much memory
    SessionStore sessions_;
    httplib::Server http_;
    int port_ = 0;
    std::string cookieName_;
    std::vector<std::string> names_;
    std::atomic<int> streams_ = 0;
    std::atomic<bool> isStopping_ = false;
    std::thread listener_;
};

void WebServer::Implementation::configure()
{
    http_.new_task_queue = [] { return new httplib::ThreadPool(threads); };
    http_.set_payload_max_length(longestBody);
    http_.set_tcp_nodelay(true);
    http_.set_keep_alive_timeout(2);
    http_.set_keep_alive_max_count(1000);
    http_.set_default_headers(securityHeaders);
    // The library would also let a second server share the port.
    http_.set_socket_options([](socket_t socket) {
        const int yes = 1;
        setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    });
    const auto handler = [this](const Request& request, Response& response) {
        handle(request, response);
    };
    http_.Get(".*", handler);
    http_.Post(".*", handler);
    http_.Put(".*", handler);
    http_.Patch(".*", handler);
    http_.Delete(".*", handler);
    http_.Options(".*", handler);
    http_.set_exception_handler([](const Request&, Response& response, const std::exception_ptr&) {
        sendFailure(response, 500, "The server failed unexpectedly.");
    });
    http_.set_error_handler([](const Request&, Response& response) {
        const bool isAnswered = response.has_header("Content-Type");
        if (isAnswered) return;
        const int status = response.status;
        sendFailure(response, status,
                    status == 413 ? "The body is too large." : "The request is malformed.");
    });
}

void WebServer::Implementation::bind()
{
    if (options_.port == 0)
        port_ = http_.bind_to_any_port(options_.address);
    else if (http_.bind_to_port(options_.address, options_.port))
        port_ = options_.port;
    if (port_ <= 0) {
        throw std::runtime_error("cannot answer at " + options_.address + ", port " +
                                 std::to_string(options_.port) + "; is it in use?");
    }
}

void WebServer::Implementation::handle(const Request& request, Response& response)
{
    if (const auto refused = checkHost(request, names_))
        return sendFailure(response, refused->status, refused->reason);
    if (rawPath(request).starts_with("/api/"))
        handleApi(request, response);
    else
        handlePage(request, response);
}

// --- Pages

void WebServer::Implementation::handlePage(const Request& request, Response& response)
{
    if (request.method != "GET" && request.method != "HEAD") {
        response.set_header("Allow", "GET, HEAD");
        return sendFailure(response, 405, "Pages can only be read.");
    }
    const bool isSignedIn = sessions_.find(cookieIn(request, cookieName_)) != nullptr;
    const std::string_view path = rawPath(request);
    response.set_header("Cache-Control", "no-cache");
    if (path == "/")
        return response.set_redirect(isSignedIn ? "/host/home" : std::string(signInPage));
    auto file = files_.find(path);
    if (!file) return sendNotFound(response);
    if (file->isPage && !isSignedIn && path != signInPage) {
        return response.set_redirect(std::string(signInPage) + "?next=" + encoded(request.target));
    }
    response.set_header("ETag", file->tag);
    if (request.get_header_value("If-None-Match") == file->tag) {
        response.status = 304;
        return;
    }
    sendFile(response, 200, std::move(*file));
}

void WebServer::Implementation::sendNotFound(Response& response) const
{
    auto page = files_.find(notFoundPage);
    if (page) return sendFile(response, 404, std::move(*page));
    sendFailure(response, 404, "There is no page at this address.");
}

// --- Requests of pages

/// One address of the interface and what a request to it must bring.
struct WebServer::Implementation::Route {
    std::string_view name;
    std::string_view method;
    bool needsToken; ///< Those that a browser sends by itself cannot carry it.
    void (Implementation::*run)(const Request&, Response&, const Session&);
};

void WebServer::Implementation::handleApi(const Request& request, Response& response)
{
    static constexpr std::array routes{
        Route{"session", "POST", false, &Implementation::describe},
        Route{"signout", "POST", true, &Implementation::signOut},
        Route{"events", "GET", false, &Implementation::stream},
        Route{"leave", "POST", false, &Implementation::leave},
        Route{"answer", "POST", true, &Implementation::answer},
    };
    const std::string name(rawPath(request).substr(std::string_view("/api/").size()));
    const auto found = std::ranges::find(routes, name, &Route::name);
    const bool isSignIn = name == "signin";
    if (found == routes.end() && !isSignIn && !Desk::knows(name))
        return sendFailure(response, 404, "There is no such request.");
    const Route route =
        found != routes.end() ? *found : Route{name, "POST", !isSignIn, &Implementation::perform};
    if (request.method != route.method) {
        response.set_header("Allow", std::string(route.method));
        return sendFailure(response, 405,
                           "The request must be a " + std::string(route.method) + ".");
    }
    auto refused = checkOrigin(request, names_);
    if (!refused && route.method == "POST") refused = checkJson(request);
    if (refused) return sendFailure(response, refused->status, refused->reason);
    try {
        if (isSignIn) return signIn(request, response);
        const Session session = sessions_.find(cookieIn(request, cookieName_));
        if (!session) return sendFailure(response, 401, "Nobody is signed in.");
        if (route.needsToken && request.get_header_value("X-Token") != session->token())
            return sendFailure(response, 403, "The request does not come from a page of ours.");
        (this->*route.run)(request, response, session);
    } catch (const BadRequest& fault) {
        sendFailure(response, 400, std::string("The request is malformed: ") + fault.what() + ".");
    }
}

std::string WebServer::Implementation::cookie(const std::string& value, bool isGone) const
{
    return cookieName_ + "=" + value + "; Path=/; HttpOnly; SameSite=Strict" +
           (isGone ? "; Max-Age=0" : "");
}

void WebServer::Implementation::signIn(const Request& request, Response& response)
{
    const json body = parseBody(request.body);
    const std::string user = textIn(body, "user");
    const std::string password = textIn(body, "password");
    if (const auto wait = guard_.mustWait(user, request.remote_addr); wait.count() > 0) {
        response.set_header("Retry-After", std::to_string(wait.count()));
        return sendFailure(response, 429,
                           "Too many tries. Wait " + std::to_string(wait.count()) +
                               (wait.count() == 1 ? " second" : " seconds") + " and try again.");
    }
    if (isStopping_ || sessions_.isFull())
        return sendFailure(response, 503, "The server takes no more users at present.");
    std::optional<std::string> name;
    {
        const std::lock_guard lock(authenticating_);
        name = backend_.authenticate(user, password);
    }
    if (!name) {
        guard_.failed(user, request.remote_addr);
        return sendFailure(response, 401, "The user name or the password is not right.");
    }
    guard_.succeeded(user);
    sessions_.remove(cookieIn(request, cookieName_));
    std::string value;
    try {
        value =
            sessions_.add(std::make_shared<BrowserSession>(backend_, *name, options_.viewGrace));
    } catch (const std::exception& fault) {
        return sendFailure(response, 500,
                           std::string("The session could not begin: ") + fault.what());
    }
    if (value.empty())
        return sendFailure(response, 503, "The server takes no more users at present.");
    response.set_header("Set-Cookie", cookie(value, false));
    sendJson(response, 200, R"({"ok":true})");
}

void WebServer::Implementation::signOut(const Request& request, Response& response, const Session&)
{
    sessions_.remove(cookieIn(request, cookieName_));
    response.set_header("Set-Cookie", cookie("", true));
    sendJson(response, 200, R"({"ok":true})");
}

void WebServer::Implementation::describe(const Request&, Response& response, const Session& session)
{
    auto description = session->description();
    if (!description) return sendFailure(response, 401, "The session has ended.");
    sendJson(response, 200, std::move(*description));
}

void WebServer::Implementation::stream(const Request& request, Response& response,
                                       const Session& session)
{
    const auto view = viewName(request.get_param_value("view"));
    if (!view || view->empty()) throw BadRequest("\"view\" must name the page");
    if (request.method != "GET" || streams_ >= mostStreams)
        return sendFailure(response, 503, "Too many pages are open.");
    const auto count = std::shared_ptr<void>(nullptr, [this](void*) { --streams_; });
    ++streams_;
    streamEvents(request, response, session, *view, options_.streamLength, count);
}

void WebServer::Implementation::leave(const Request& request, Response& response,
                                      const Session& session)
{
    const auto view = viewName(textIn(parseBody(request.body), "view"));
    if (!view) throw BadRequest("\"view\" must name the page");
    session->leave(*view);
    sendJson(response, 200, R"({"ok":true})");
}

void WebServer::Implementation::answer(const Request& request, Response& response,
                                       const Session& session)
{
    const json body = parseBody(request.body);
    const bool taken = session->views().answer(numberIn(body, "id"), numberIn(body, "button"));
    sendJson(response, 200, taken ? R"({"ok":true})" : R"({"ok":false})");
}

void WebServer::Implementation::perform(const Request& request, Response& response,
                                        const Session& session)
{
    const json body = parseBody(request.body);
    const auto view = viewName(request.get_header_value("X-View"));
    if (!view) throw BadRequest("X-View must name the page");
    const std::string kind(rawPath(request).substr(std::string_view("/api/").size()));
    auto answer = session->answer(kind, body, *view);
    if (!answer) return sendFailure(response, 401, "The session has ended.");
    sendJson(response, 200, std::move(*answer));
}

// --- The server

WebServer::WebServer(Backend& backend, WebServerOptions options)
    : implementation_(std::make_unique<Implementation>(backend, std::move(options)))
{
}

WebServer::~WebServer() = default;

int WebServer::port() const { return implementation_->port(); }

std::string WebServer::url() const
{
    const std::string& address = implementation_->address();
    const bool isBracketed = address.find(':') != std::string::npos;
    return "http://" + (isBracketed ? "[" + address + "]" : address) + ":" +
           std::to_string(port()) + "/";
}

void WebServer::stop() { implementation_->stop(); }

} // namespace refhost
