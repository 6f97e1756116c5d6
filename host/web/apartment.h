#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <future>
#include <mutex>
#include <thread>

namespace refhost {

/// The one thread on which everything of a signed-in session happens. Others hand it work; while a
/// piece of work waits for the user, it lets further work run on top of itself.
class Apartment {
public:
    /// Starts the thread: `begin` runs first; `end` runs last, if `begin` did not throw.
    Apartment(std::function<void()> begin, std::function<void()> end);
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;
    ~Apartment(); ///< Stops and waits for the thread.

    /// Waits until `begin` has run; throws what it threw.
    void waitUntilBegun();
    /// Runs `work` on the thread and waits for it. False when the apartment ended first, or when
    /// more work is queued than it takes.
    bool run(std::function<void()> work);
    /// Hands over `work` without waiting.
    bool post(std::function<void()> work);
    /// Ends all waiting; work that has not begun is dropped.
    void stop();
    bool isStopping() const;
    /// Lets whoever waits in waitUntil look at its condition again.
    void wake();

    // --- On the thread itself.

    /// Runs what is handed over until `done` holds or the apartment is stopping.
    void waitUntil(const std::function<bool()>& done);
    /// Runs what is queued by now, without waiting.
    void runPending();
    /// How many pieces of work wait below the one that runs.
    int depth() const { return depth_; }

private:
    using Lock = std::unique_lock<std::mutex>;
    void main(const std::function<void()>& begin, const std::function<void()>& end);
    void runNext(Lock& lock);

    mutable std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<std::function<void()>> queue_;
    bool stopping_ = false;
    int depth_ = 0;
    std::promise<void> begun_;
    std::shared_future<void> hasBegun_;
    std::thread thread_; // last, so that all else is there when it starts
};

} // namespace refhost
