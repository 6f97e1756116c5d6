#include "host/document/objects/lock_manager.h"

namespace refhost {

std::shared_ptr<LockManager> LockManager::of(const std::string& address)
{
    static std::mutex mutex;
    static std::map<std::string, std::weak_ptr<LockManager>> managers;
    const std::lock_guard guard(mutex);
    std::erase_if(managers, [](const auto& entry) { return entry.second.expired(); });
    std::weak_ptr<LockManager>& known = managers[address];
    std::shared_ptr<LockManager> manager = known.lock();
    if (!manager) known = manager = std::make_shared<LockManager>();
    return manager;
}

std::uint64_t LockManager::newSession()
{
    const std::lock_guard guard(mutex_);
    return ++lastSession_;
}

std::optional<LockHolder> LockManager::acquire(const LockedRecord& record, const LockHolder& taker)
{
    const std::lock_guard guard(mutex_);
    const auto [entry, isNew] = held_.try_emplace(record, Held{taker, 0});
    if (!isNew && entry->second.holder.session != taker.session) return entry->second.holder;
    ++entry->second.times;
    return std::nullopt;
}

void LockManager::release(const LockedRecord& record, std::uint64_t session)
{
    const std::lock_guard guard(mutex_);
    const auto entry = held_.find(record);
    if (entry == held_.end() || entry->second.holder.session != session) return;
    if (--entry->second.times == 0) held_.erase(entry);
}

} // namespace refhost
