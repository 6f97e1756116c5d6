#include "automation/clock.h"

#include <ctime>
#include <mutex>

namespace qmevents {
namespace {

std::optional<Date>& pinned()
{
    static thread_local std::optional<Date> moment;
    return moment;
}

} // namespace

Date Clock::now()
{
    if (pinned()) return *pinned();
    // std::localtime answers in a buffer that all threads share.
    static std::mutex mutex;
    const std::lock_guard lock(mutex);
    const std::time_t moment = std::time(nullptr);
    const std::tm local = *std::localtime(&moment);
    return Date::of(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour,
                    local.tm_min, local.tm_sec > 59 ? 59 : local.tm_sec);
}

void Clock::pin(std::optional<Date> moment) { pinned() = moment; }

} // namespace qmevents
