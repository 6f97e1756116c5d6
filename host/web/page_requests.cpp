#include "host/web/page_requests.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

#include <nlohmann/json.hpp>

#include "host/web/event_stream.h"
#include "host/web/request_checks.h"
#include "host/web/responses.h"
#include "host/web/wire_value.h"

namespace refhost {

using nlohmann::json;

namespace {

/// Half of the server's threads: the other half is for requests.
constexpr int mostStreams = 64;
constexpr std::size_t longestName = 256;
constexpr std::string_view folder = "/api/";

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
    constexpr std::int64_t highest = std::numeric_limits<int>::max();
    const bool isWhole = found != body.end() && found->is_number_integer();
    if (!isWhole || found->get<std::int64_t>() < 0 || found->get<std::int64_t>() > highest)
        throw BadRequest(std::string("\"") + name + "\" must be a whole number");
    return found->get<int>();
}

} // namespace

PageRequests::PageRequests(Backend& backend, SessionStore& sessions, Options options)
    : backend_(backend), sessions_(sessions), options_(std::move(options))
{
}

bool PageRequests::isOne(const Request& request) { return rawPath(request).starts_with(folder); }

std::string PageRequests::cookieOf(const Request& request) const
{
    return cookieIn(request, options_.cookieName);
}

/// One address of the interface and what a request to it must bring.
struct PageRequests::Route {
    std::string_view name;
    std::string_view method;
    bool needsToken; ///< Those that a browser sends by itself cannot carry it.
    void (PageRequests::*run)(const Request&, Response&, const Session&);
};

void PageRequests::handle(const Request& request, Response& response)
{
    static constexpr std::array routes{
        Route{"session", "POST", false, &PageRequests::describe},
        Route{"signout", "POST", true, &PageRequests::signOut},
        Route{"events", "GET", false, &PageRequests::stream},
        Route{"leave", "POST", false, &PageRequests::leave},
        Route{"answer", "POST", true, &PageRequests::answer},
    };
    const std::string name(rawPath(request).substr(folder.size()));
    const auto found = std::ranges::find(routes, name, &Route::name);
    const bool isSignIn = name == "signin";
    const bool isProgress = name == "signin-progress";
    const bool needsSession = !isSignIn && !isProgress;
    if (found == routes.end() && needsSession && !Desk::knows(name))
        return sendFailure(response, 404, "There is no such request.");
    const Route route =
        found != routes.end() ? *found : Route{name, "POST", needsSession, &PageRequests::perform};
    if (request.method != route.method) {
        response.set_header("Allow", std::string(route.method));
        return sendFailure(response, 405,
                           "The request must be a " + std::string(route.method) + ".");
    }
    auto refused = checkOrigin(request, options_.names);
    if (!refused && route.method == "POST") refused = checkJson(request);
    if (refused) return sendFailure(response, refused->status, refused->reason);
    try {
        if (isSignIn) return signIn(request, response);
        if (isProgress) return signInProgress(request, response);
        const Session session = sessions_.find(cookieOf(request));
        if (!session) return sendFailure(response, 401, "Nobody is signed in.");
        if (route.needsToken && request.get_header_value("X-Token") != session->token())
            return sendFailure(response, 403, "The request does not come from a page of ours.");
        (this->*route.run)(request, response, session);
    } catch (const BadRequest& fault) {
        sendFailure(response, 400, std::string("The request is malformed: ") + fault.what() + ".");
    }
}

std::string PageRequests::cookie(const std::string& value, bool isGone) const
{
    return options_.cookieName + "=" + value + "; Path=/; HttpOnly; SameSite=Strict" +
           (isGone ? "; Max-Age=0" : "");
}

void PageRequests::signIn(const Request& request, Response& response)
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
    if (isClosed_ || sessions_.isFull())
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
    sessions_.remove(cookieOf(request));
    const SignInAttempts::Scope attempt(
        attempts_, body.contains("attempt") ? textIn(body, "attempt") : std::string());
    std::string value;
    std::string firstPage;
    try {
        const auto session = std::make_shared<BrowserSession>(backend_, *name, options_.viewGrace,
                                                              attempt.progress());
        firstPage = session->firstPage();
        value = sessions_.add(session);
    } catch (const std::exception& fault) {
        return sendFailure(response, 500,
                           std::string("The session could not begin: ") + fault.what());
    }
    if (value.empty())
        return sendFailure(response, 503, "The server takes no more users at present.");
    response.set_header("Set-Cookie", cookie(value, false));
    json answer{{"ok", true}};
    if (!firstPage.empty()) answer["page"] = firstPage;
    sendJson(response, 200, answer.dump(-1, ' ', false, json::error_handler_t::replace));
}

void PageRequests::signInProgress(const Request& request, Response& response) const
{
    const auto progress = attempts_.find(textIn(parseBody(request.body), "attempt"));
    json answer = json::object();
    if (progress) {
        const auto [heading, description, done, total] = progress->state();
        answer = {
            {"heading", heading}, {"description", description}, {"done", done}, {"total", total}};
    }
    sendJson(response, 200, answer.dump(-1, ' ', false, json::error_handler_t::replace));
}

void PageRequests::signOut(const Request& request, Response& response, const Session&)
{
    sessions_.remove(cookieOf(request));
    response.set_header("Set-Cookie", cookie("", true));
    sendJson(response, 200, R"({"ok":true})");
}

void PageRequests::describe(const Request&, Response& response, const Session& session)
{
    auto description = session->description();
    if (!description) return sendFailure(response, 401, "The session has ended.");
    sendJson(response, 200, std::move(*description));
}

void PageRequests::stream(const Request& request, Response& response, const Session& session)
{
    const auto view = viewName(request.get_param_value("view"));
    if (!view || view->empty()) throw BadRequest("\"view\" must name the page");
    if (streams_ >= mostStreams) return sendFailure(response, 503, "Too many pages are open.");
    const auto count = std::shared_ptr<void>(nullptr, [this](void*) { --streams_; });
    ++streams_;
    streamEvents(request, response, session, *view, options_.streamLength, count);
}

void PageRequests::leave(const Request& request, Response& response, const Session& session)
{
    const auto view = viewName(textIn(parseBody(request.body), "view"));
    if (!view) throw BadRequest("\"view\" must name the page");
    session->leave(*view);
    sendJson(response, 200, R"({"ok":true})");
}

void PageRequests::answer(const Request& request, Response& response, const Session& session)
{
    const json body = parseBody(request.body);
    const bool taken = session->views().answer(numberIn(body, "id"), numberIn(body, "button"));
    sendJson(response, 200, taken ? R"({"ok":true})" : R"({"ok":false})");
}

void PageRequests::perform(const Request& request, Response& response, const Session& session)
{
    const json body = parseBody(request.body);
    const auto view = viewName(request.get_header_value("X-View"));
    if (!view) throw BadRequest("X-View must name the page");
    const std::string kind(rawPath(request).substr(folder.size()));
    auto answer = session->answer(kind, body, *view);
    if (!answer) return sendFailure(response, 401, "The session has ended.");
    sendJson(response, 200, std::move(*answer));
}

} // namespace refhost
