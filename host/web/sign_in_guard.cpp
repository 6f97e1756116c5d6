#include "host/web/sign_in_guard.h"

#include <algorithm>

#include "automation/text.h"

namespace refhost {

namespace {

constexpr int allowedForName = 5;
constexpr int allowedForAddress = 50;
constexpr auto longestBlock = std::chrono::seconds(60);
constexpr auto memory = std::chrono::minutes(15);
constexpr std::size_t mostRecords = 10'000;

std::string nameKey(const std::string& user) { return "user:" + qmevents::text::lower(user); }
std::string addressKey(const std::string& address) { return "address:" + address; }

} // namespace

std::chrono::seconds SignInGuard::mustWait(const std::string& user, const std::string& address,
                                           Clock::time_point now)
{
    const std::lock_guard lock(mutex_);
    forgetOld(now);
    auto wait = Clock::duration::zero();
    for (const auto& key : {nameKey(user), addressKey(address)}) {
        if (const auto found = records_.find(key); found != records_.end())
            wait = std::max(wait, found->second.blockedUntil - now);
    }
    return std::chrono::ceil<std::chrono::seconds>(wait);
}

void SignInGuard::failed(const std::string& user, const std::string& address, Clock::time_point now)
{
    const std::lock_guard lock(mutex_);
    note(nameKey(user), allowedForName, now);
    note(addressKey(address), allowedForAddress, now);
}

void SignInGuard::succeeded(const std::string& user)
{
    const std::lock_guard lock(mutex_);
    records_.erase(nameKey(user));
}

void SignInGuard::note(const std::string& key, int allowed, Clock::time_point now)
{
    Record& record = records_[key];
    record.last = now;
    if (++record.failures < allowed) return;
    constexpr int mostDoublings = 6;
    const int doublings = std::min(record.failures - allowed, mostDoublings);
    record.blockedUntil = now + std::min(longestBlock, std::chrono::seconds(1 << doublings));
}

void SignInGuard::forgetOld(Clock::time_point now)
{
    const bool isFull = records_.size() > mostRecords;
    std::erase_if(records_, [&](const auto& entry) {
        return now - entry.second.last > memory || (isFull && entry.second.blockedUntil < now);
    });
}

} // namespace refhost
