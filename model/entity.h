#pragma once

#include <cstdint>
#include <string>

#include "automation/describe.h"

namespace qmevents {

/// The one door through which the store loads records and sets their flags (store/store_access.h).
class StoreAccess;

/// A record in memory. `IsNew`, `IsDirty` and `Id` are written by the store alone; assigning a
/// `Tracked` field marks the record dirty, whether or not the value changed.
class Entity : public DescribedObject {
public:
    bool IsNew() const { return isNew_; }
    bool IsDirty() const { return isDirty_; }
    std::int32_t Id() const { return id_; }

protected:
    friend class StoreAccess;
    template <typename T>
    friend class Tracked;
    void markDirty() { isDirty_ = true; }
    /// For the classes whose key may be assigned by anyone.
    void assignId(std::int32_t id) { id_ = id; }

private:
    bool isNew_ = false;
    bool isDirty_ = false;
    bool isUntold_ = false; // stored, but what a save tells of a new record is still to come
    std::int32_t id_ = 0;
};

/// A stored property whose assignment marks its record dirty. A property that leaves its record
/// clean is a plain member instead.
template <typename T>
class Tracked {
public:
    using TrackedValue = T;

    explicit Tracked(Entity& owner) : owner_(owner) {}
    Tracked(const Tracked&) = delete;
    Tracked& operator=(const Tracked&) = delete;
    Tracked& operator=(T value)
    {
        value_ = std::move(value);
        owner_.markDirty();
        return *this;
    }
    const T& get() const { return value_; }
    operator const T&() const { return value_; }
    const T* operator->() const { return &value_; }

private:
    friend class StoreAccess;
    Entity& owner_;
    T value_{};
};

/// The marks' lines of a member table.
template <typename C>
void entityMarks(Describe<C>& table)
{
    table.readOnly("IsNew", &C::IsNew, "The record has not been stored yet.")
        .storeOnly()
        .readOnly("IsDirty", &C::IsDirty, "Assigned to since the store last loaded or saved it.")
        .storeOnly();
}

/// The entity flags' lines of a member table: the marks and a key that the store alone writes.
template <typename C>
void entityFlags(Describe<C>& table)
{
    table.with(entityMarks<C>)
        .readOnly("Id", &C::Id, "Key of the record in its table; 0 before it is stored.")
        .storeOnly();
}

/// The audit columns of a record, filled by the store. They leave the record clean.
struct AuditFields {
    std::int32_t CreateUser = 0;
    Date CreateDate;
    std::int32_t LastUpdateUser = 0;
    Date LastUpdateDate;
};

/// The audit fields' lines of a member table.
template <typename C>
void auditFields(Describe<C>& table)
{
    table.stored("CreateUser", &C::CreateUser, leavesClean, "Host user who created the record.")
        .stored("CreateDate", &C::CreateDate, leavesClean, "When it was created.")
        .stored("LastUpdateUser", &C::LastUpdateUser, leavesClean, "User of the last update.")
        .stored("LastUpdateDate", &C::LastUpdateDate, leavesClean, "When it was last updated.");
}

} // namespace qmevents
