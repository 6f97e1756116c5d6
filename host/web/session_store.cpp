#include "host/web/session_store.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace refhost {

SessionStore::SessionStore(std::chrono::milliseconds idleTimeout)
    : idleTimeout_(idleTimeout), sweeper_([this] { sweep(); })
{
}

SessionStore::~SessionStore()
{
    {
        const std::lock_guard lock(mutex_);
        isEnding_ = true;
    }
    ending_.notify_all();
    sweeper_.join();
    clear();
}

std::string SessionStore::add(std::shared_ptr<BrowserSession> session)
{
    std::string cookie = randomText(32);
    const std::lock_guard lock(mutex_);
    if (sessions_.size() >= mostSessions) return {};
    sessions_[cookie] = std::move(session);
    return cookie;
}

std::shared_ptr<BrowserSession> SessionStore::find(const std::string& cookie)
{
    const std::lock_guard lock(mutex_);
    const auto found = sessions_.find(cookie);
    return found == sessions_.end() ? nullptr : found->second;
}

void SessionStore::remove(const std::string& cookie)
{
    std::shared_ptr<BrowserSession> removed;
    {
        const std::lock_guard lock(mutex_);
        const auto found = sessions_.find(cookie);
        if (found == sessions_.end()) return;
        removed = std::move(found->second);
        sessions_.erase(found);
    }
    removed->end();
}

bool SessionStore::isFull()
{
    const std::lock_guard lock(mutex_);
    return sessions_.size() >= mostSessions;
}

void SessionStore::clear()
{
    std::map<std::string, std::shared_ptr<BrowserSession>> ended;
    {
        const std::lock_guard lock(mutex_);
        ended.swap(sessions_);
    }
    for (const auto& [cookie, session] : ended) session->end();
}

void SessionStore::sweep()
{
    const auto pause = std::min<std::chrono::milliseconds>(std::chrono::seconds(5), idleTimeout_);
    std::unique_lock lock(mutex_);
    while (!ending_.wait_for(lock, pause, [&] { return isEnding_; })) {
        auto present = sessions_;
        lock.unlock();
        for (const auto& [cookie, session] : present) {
            session->forgetAbsentViews();
            if (session->idleTime() > idleTimeout_) remove(cookie);
        }
        present.clear(); // may wait for an ended session's thread, so not under the lock
        lock.lock();
    }
}

} // namespace refhost
