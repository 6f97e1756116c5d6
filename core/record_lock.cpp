#include "core/record_lock.h"

#include "core/host.h"

namespace qmevents {

RecordLock::RecordLock(const std::string& entity, std::int32_t id)
{
    try {
        lock_ = host().document().lock(entity, id);
    } catch (const Error& error) {
        if (error.is(ErrorNumber::permissionDenied)) throw LockRefused(error);
        throw;
    }
    if (!lock_) throw LockRefused(Error(ErrorNumber::permissionDenied));
}

} // namespace qmevents
