#pragma once

#include <atomic>
#include <chrono>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include <httplib.h>

#include "host/web/backend.h"
#include "host/web/session_store.h"
#include "host/web/sign_in_guard.h"
#include "host/web/sign_in_progress.h"

namespace refhost {

/// Answers the requests that page scripts make, below /api/: signing in and out, the event stream,
/// answers to questions, and the calls that a session's desk carries out.
class PageRequests {
public:
    struct Options {
        std::string cookieName;
        std::vector<std::string> names; ///< What the server is called; see namesOf.
        std::chrono::milliseconds viewGrace;
        std::chrono::milliseconds streamLength;
    };
    /// `backend` and `sessions` outlive this.
    PageRequests(Backend& backend, SessionStore& sessions, Options options);

    static bool isOne(const httplib::Request& request);
    void handle(const httplib::Request& request, httplib::Response& response);
    /// The cookie that names the browser's session; empty without one.
    std::string cookieOf(const httplib::Request& request) const;
    /// Lets nobody sign in any more.
    void close() { isClosed_ = true; }

private:
    using Request = httplib::Request;
    using Response = httplib::Response;
    using Session = std::shared_ptr<BrowserSession>;
    struct Route;

    void signIn(const Request& request, Response& response);
    void signInProgress(const Request& request, Response& response) const;
    void signOut(const Request& request, Response& response, const Session& session);
    void describe(const Request& request, Response& response, const Session& session);
    void stream(const Request& request, Response& response, const Session& session);
    void leave(const Request& request, Response& response, const Session& session);
    void answer(const Request& request, Response& response, const Session& session);
    void perform(const Request& request, Response& response, const Session& session);
    std::string cookie(const std::string& value, bool isGone) const;

    Backend& backend_;
    SessionStore& sessions_;
    const Options options_;
    SignInGuard guard_;
    SignInAttempts attempts_;
    std::mutex authenticating_; // checking a password takes much memory
    std::atomic<int> streams_ = 0;
    std::atomic<bool> isClosed_ = false;
};

} // namespace refhost
