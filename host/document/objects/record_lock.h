#pragma once

#include <memory>

#include "automation/members.h"
#include "host/document/objects/lock_manager.h"

namespace refhost {

/// What GetLock gives: the record stays locked until the object is dropped or released.
class LockObject : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "RecordLock";
    const qmevents::Members& members() const override;

    /// Holds the lock that `manager` has granted.
    LockObject(std::shared_ptr<LockManager> manager, LockedRecord record, LockHolder holder);
    ~LockObject() override { Release(); }

    // The late-bound face.
    std::string Kind() const { return record_.kind; }
    std::int32_t Id() const { return record_.id; }
    std::string Owner() const { return holder_.userName; }
    void Release();

private:
    std::shared_ptr<LockManager> manager_; // nothing once released
    LockedRecord record_;
    LockHolder holder_;
};

} // namespace refhost
