#include "host/web/web_server.h"

#include <atomic>
#include <cctype>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <sys/socket.h>
#include <thread>
#include <utility>

#include <httplib.h>

#include "host/web/page_files.h"
#include "host/web/page_requests.h"
#include "host/web/request_checks.h"
#include "host/web/responses.h"
#include "host/web/session_store.h"

namespace refhost {

using httplib::Request;
using httplib::Response;

namespace {

/// Every event stream, and every command that waits for its user, keeps one of these busy.
constexpr std::size_t threads = 128;
constexpr std::size_t longestBody = std::size_t{1024} * 1024;
constexpr std::string_view signInPage = "/host/signin";
constexpr std::string_view notFoundPage = "/host/404";
constexpr std::string_view refusedPage = "/host/403";

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

/// Whether the session's user may open the page; nothing when the session has ended. What cannot be
/// found out is not allowed.
std::optional<bool> mayOpen(BrowserSession& session, const std::string& path)
{
    try {
        return session.mayOpen(path);
    } catch (const std::exception&) {
        return false;
    }
}

} // namespace

class WebServer::Implementation {
public:
    Implementation(Backend& backend, WebServerOptions options)
        : options_(std::move(options)), files_(options_.pages, options_.addIn),
          sessions_(options_.idleTimeout)
    {
        configure();
        bind();
        names_ = namesOf(options_.address, port_);
        requests_.emplace(backend, sessions_,
                          PageRequests::Options{"quillmere_" + std::to_string(port_), names_,
                                                options_.viewGrace, options_.streamLength});
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
        requests_->close();
        sessions_.clear(); // ends what waits for users, so that all requests come to their end
        http_.stop();
        listener_.join();
        sessions_.clear();
    }

private:
    void configure();
    void bind();
    void handle(const Request& request, Response& response);
    void handlePage(const Request& request, Response& response);
    /// The page at `path` with this status, or plain words when there is no such page.
    void sendInstead(std::string_view path, int status, const std::string& words,
                     Response& response) const;

    const WebServerOptions options_;
    const PageFiles files_;
    SessionStore sessions_;
    std::optional<PageRequests> requests_;
    httplib::Server http_;
    int port_ = 0;
    std::vector<std::string> names_;
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
    http_.set_default_headers(securityHeaders());
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
    if (PageRequests::isOne(request))
        requests_->handle(request, response);
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
    const auto session = sessions_.find(requests_->cookieOf(request));
    bool isSignedIn = session != nullptr;
    const std::string_view path = rawPath(request);
    if (path == "/")
        return response.set_redirect(isSignedIn ? "/host/home" : std::string(signInPage));
    auto file = files_.find(path);
    if (!file) return sendInstead(notFoundPage, 404, "There is no page at this address.", response);
    if (file->isPage && isSignedIn && path != signInPage) {
        const auto isAllowed = mayOpen(*session, std::string(path));
        if (isAllowed && !*isAllowed)
            return sendInstead(refusedPage, 403, "You may not open this page.", response);
        isSignedIn = isAllowed.has_value();
    }
    if (file->isPage && !isSignedIn && path != signInPage) {
        return response.set_redirect(std::string(signInPage) + "?next=" + encoded(request.target));
    }
    response.set_header("ETag", file->tag);
    if (request.get_header_value("If-None-Match") == file->tag) {
        response.status = 304;
        response.set_header("Cache-Control", "no-cache");
        return;
    }
    sendFile(response, 200, std::move(*file));
}

void WebServer::Implementation::sendInstead(std::string_view path, int status,
                                            const std::string& words, Response& response) const
{
    auto page = files_.find(path);
    if (page) return sendFile(response, status, std::move(*page));
    sendFailure(response, status, words);
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
