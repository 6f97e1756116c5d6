#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "automation/date.h"

namespace refhost {

/// A record as locks know it: its kind in lower case ("event") and its id.
struct LockedRecord {
    std::string kind;
    std::int32_t id = 0;
    auto operator<=>(const LockedRecord&) const = default;
};

/// Who holds a lock.
struct LockHolder {
    std::uint64_t session = 0;
    std::string userName;
    qmevents::Date since;
};

/// The record locks of one database, shared by its sessions on all threads. A session may take a
/// lock that it holds again; the record is free once it has let go as often.
class LockManager {
public:
    /// The locks of the database at `address`: one and the same object for all who share it.
    static std::shared_ptr<LockManager> of(const std::string& address);

    /// A number for a session, unlike that of any other.
    std::uint64_t newSession();
    /// Locks the record for `taker`; otherwise gives the holder in another session.
    std::optional<LockHolder> acquire(const LockedRecord& record, const LockHolder& taker);
    void release(const LockedRecord& record, std::uint64_t session);

private:
    struct Held {
        LockHolder holder;
        int times = 0;
    };
    std::mutex mutex_;
    std::map<LockedRecord, Held> held_;
    std::uint64_t lastSession_ = 0;
};

} // namespace refhost
