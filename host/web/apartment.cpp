#include "host/web/apartment.h"

#include <exception>
#include <memory>
#include <utility>

namespace refhost {

namespace {

constexpr std::size_t longestQueue = 256;
/// How often a wait looks whether the user is still there.
constexpr auto glance = std::chrono::milliseconds(200);

} // namespace

Apartment::Apartment(std::function<void()> begin, std::function<void()> end)
    : hasBegun_(begun_.get_future().share()),
      thread_([this, begin = std::move(begin), end = std::move(end)] { main(begin, end); })
{
}

Apartment::~Apartment()
{
    stop();
    thread_.join();
}

void Apartment::waitUntilBegun() { hasBegun_.get(); }

bool Apartment::run(std::function<void()> work)
{
    auto finished = std::make_shared<std::promise<bool>>();
    auto result = finished->get_future();
    // The queue alone holds the promise: work that is dropped breaks it, which ends the wait.
    const bool queued = post([work = std::move(work), finished = std::move(finished)] {
        try {
            work();
            finished->set_value(true);
        } catch (...) {
            finished->set_exception(std::current_exception());
        }
    });
    if (!queued) return false;
    try {
        return result.get();
    } catch (const std::future_error&) {
        return false; // the work was dropped, and its promise with it
    }
}

bool Apartment::post(std::function<void()> work)
{
    {
        const Lock lock(mutex_);
        if (stopping_ || queue_.size() >= longestQueue) return false;
        queue_.push_back(std::move(work));
    }
    changed_.notify_all();
    return true;
}

void Apartment::stop()
{
    {
        const Lock lock(mutex_);
        stopping_ = true;
    }
    changed_.notify_all();
}

bool Apartment::isStopping() const
{
    const Lock lock(mutex_);
    return stopping_;
}

void Apartment::wake() { changed_.notify_all(); }

void Apartment::main(const std::function<void()>& begin, const std::function<void()>& end)
{
    try {
        begin();
        begun_.set_value();
    } catch (...) {
        begun_.set_exception(std::current_exception());
        stop();
    }
    const bool hasBegun = !isStopping();
    Lock lock(mutex_);
    while (!stopping_) {
        if (queue_.empty())
            changed_.wait(lock);
        else
            runNext(lock);
    }
    const auto dropped = std::exchange(queue_, {});
    lock.unlock();
    if (hasBegun) end();
}

void Apartment::runNext(Lock& lock)
{
    auto work = std::move(queue_.front());
    queue_.pop_front();
    lock.unlock();
    ++depth_;
    try {
        work();
    } catch (...) {
        // Work that someone waits for carries its failure to them; nobody hears of other work's.
    }
    --depth_;
    work = nullptr; // what it holds may need the lock
    lock.lock();
}

void Apartment::waitUntil(const std::function<bool()>& done)
{
    Lock lock(mutex_);
    while (!stopping_) {
        lock.unlock();
        const bool isDone = done();
        lock.lock();
        if (isDone || stopping_) return;
        if (queue_.empty())
            changed_.wait_for(lock, glance);
        else
            runNext(lock);
    }
}

void Apartment::runPending()
{
    Lock lock(mutex_);
    for (std::size_t left = queue_.size(); left > 0 && !queue_.empty() && !stopping_; --left)
        runNext(lock);
}

} // namespace refhost
