#pragma once

#include <cstdint>
#include <string>

#include "automation/error.h"
#include "automation/object.h"

namespace qmevents {

/// The host refused a record lock because another session holds the record. The host has told the
/// user so; the operation ends without a further message.
class LockRefused : public Error {
public:
    explicit LockRefused(const Error& cause) : Error(cause) {}
};

/// A host record lock for the lifetime of this object.
class RecordLock {
public:
    /// Throws LockRefused when another session holds the record.
    RecordLock(const std::string& entity, std::int32_t id);
    /// Lets the record go before the end of the scope.
    void release() { lock_ = {}; }

private:
    Ref<Object> lock_;
};

/// Locks an event. Every change of an event or of what belongs to it holds this lock.
inline RecordLock lockEvent(std::int32_t eventId) { return {"event", eventId}; }

} // namespace qmevents
