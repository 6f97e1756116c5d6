#include "host/web/sign_in_progress.h"

#include <utility>

namespace refhost {

void SignInProgress::tell(State state)
{
    const std::lock_guard lock(mutex_);
    state_ = std::move(state);
}

SignInProgress::State SignInProgress::state() const
{
    const std::lock_guard lock(mutex_);
    return state_;
}

SignInAttempts::Scope::Scope(SignInAttempts& attempts, std::string name)
    : attempts_(attempts), name_(std::move(name))
{
    const std::lock_guard lock(attempts_.mutex_);
    if (!name_.empty()) attempts_.underWay_.insert_or_assign(name_, progress_);
}

SignInAttempts::Scope::~Scope()
{
    const std::lock_guard lock(attempts_.mutex_);
    const auto mine = attempts_.underWay_.find(name_);
    if (mine != attempts_.underWay_.end() && mine->second == progress_) {
        attempts_.underWay_.erase(mine);
    }
}

std::shared_ptr<SignInProgress> SignInAttempts::find(const std::string& name) const
{
    const std::lock_guard lock(mutex_);
    const auto found = underWay_.find(name);
    return found == underWay_.end() ? nullptr : found->second;
}

} // namespace refhost
