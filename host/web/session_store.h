#pragma once

#include <chrono>
#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "host/web/browser_session.h"

namespace refhost {

/// The signed-in browsers by their cookies. Ends those that have not been used for long.
class SessionStore {
public:
    static constexpr std::size_t mostSessions = 64;

    explicit SessionStore(std::chrono::milliseconds idleTimeout);
    ~SessionStore();

    /// Takes a session and gives the cookie that names it; empty when there are too many.
    std::string add(std::shared_ptr<BrowserSession> session);
    std::shared_ptr<BrowserSession> find(const std::string& cookie);
    /// Ends the session; requests that wait in it are answered first.
    void remove(const std::string& cookie);
    bool isFull();
    /// Ends all sessions.
    void clear();

private:
    void sweep();

    const std::chrono::milliseconds idleTimeout_;
    std::mutex mutex_;
    std::condition_variable ending_;
    bool isEnding_ = false;
    std::map<std::string, std::shared_ptr<BrowserSession>> sessions_;
    std::thread sweeper_; // last, so that all else is there when it starts
};

} // namespace refhost
