#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include <nlohmann/json.hpp>

#include "host/web/apartment.h"
#include "host/web/backend.h"
#include "host/web/desk.h"
#include "host/web/sign_in_progress.h"
#include "host/web/view_hub.h"
#include "host/web/web_front_end.h"

namespace refhost {

/// A signed-in browser: a thread with a session of the host on it, and the pages that show it.
class BrowserSession {
public:
    /// Begins the session; throws what the host refuses it with.
    /// What is told to the user meanwhile goes to `progress`, if there is one.
    BrowserSession(Backend& backend, const std::string& user, std::chrono::milliseconds grace,
                   std::shared_ptr<SignInProgress> progress = {});
    BrowserSession(const BrowserSession&) = delete;
    BrowserSession& operator=(const BrowserSession&) = delete;
    ~BrowserSession(); ///< Waits until what runs has ended; must not be the session's own thread.

    const std::string& token() const { return token_; }
    ViewHub& views() { return views_; }

    /// The answer to a request of the page `view`, or nothing when the session has ended. Throws
    /// BadRequest.
    std::optional<std::string> answer(const std::string& kind, const nlohmann::json& body,
                                      const std::string& view);
    /// Who is signed in, with their rights and locale, and the present day.
    std::optional<std::string> description();
    /// Whether the user may open the page at `path`; nothing when the session has ended.
    std::optional<bool> mayOpen(const std::string& path);
    /// The page that the host or a module asked for while the user signed in; empty without one.
    const std::string& firstPage() const { return firstPage_; }
    /// The page has gone: what waits for it is cancelled and what it holds is let go.
    void leave(const std::string& view);
    /// Ends all waiting and the event streams; later requests get nothing.
    void end();

    /// Lets go what pages hold that have not been heard of for long.
    void forgetAbsentViews();
    std::chrono::steady_clock::duration idleTime() const;

private:
    struct OnThread;
    std::shared_ptr<View> visit(const std::string& view);

    const std::string token_;
    ViewHub views_;
    std::atomic<std::chrono::steady_clock::time_point> lastUsed_;
    std::unique_ptr<OnThread> onThread_; // touched by the apartment's thread only
    std::string firstPage_;              // written before the session counts as begun
    Apartment apartment_;                // last: its thread uses all else
};

/// `bytes` random bytes as hexadecimal digits, from the system's source of secrets.
std::string randomText(std::size_t bytes);

} // namespace refhost
