#pragma once

#include <chrono>
#include <mutex>
#include <string>
#include <unordered_map>

namespace refhost {

/// Slows down guessing: after a few wrong passwords in a row for a name, or many from one address,
/// further tries are refused for a while that grows with each.
class SignInGuard {
public:
    using Clock = std::chrono::steady_clock;

    /// How long a try must still wait; zero when it may be made now.
    std::chrono::seconds mustWait(const std::string& user, const std::string& address,
                                  Clock::time_point now = Clock::now());
    void failed(const std::string& user, const std::string& address,
                Clock::time_point now = Clock::now());
    void succeeded(const std::string& user);

private:
    struct Record {
        int failures = 0;
        Clock::time_point last;
        Clock::time_point blockedUntil;
    };
    void note(const std::string& key, int allowed, Clock::time_point now);
    void forgetOld(Clock::time_point now);

    std::mutex mutex_;
    std::unordered_map<std::string, Record> records_;
};

} // namespace refhost
