#include "host/document/objects/record_lock.h"

#include "automation/describe.h"

namespace refhost {

const qmevents::Members& LockObject::members() const
{
    static const qmevents::Members table =
        qmevents::describe<LockObject>("A record that nobody else may change meanwhile.")
            .readOnly("Kind", &LockObject::Kind, "The record's kind, for example \"event\".")
            .readOnly("Id", &LockObject::Id, "The record's id.")
            .readOnly("Owner", &LockObject::Owner, "The user who holds the lock.")
            .method("Release", &LockObject::Release,
                    "Lets the record go; dropping the object does.");
    return table;
}

LockObject::LockObject(std::shared_ptr<LockManager> manager, LockedRecord record, LockHolder holder)
    : manager_(std::move(manager)), record_(std::move(record)), holder_(std::move(holder))
{
}

void LockObject::Release()
{
    if (!manager_) return;
    manager_->release(record_, holder_.session);
    manager_.reset();
}

} // namespace refhost
