#pragma once

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

namespace refhost {

/// A database file, or a private database in memory, that any number of sessions share. It holds
/// no connection that runs statements; it outlives its sessions because they share it.
class Database {
public:
    /// Opens `file`, or creates it.
    static std::shared_ptr<Database> open(const std::filesystem::path& file);
    /// A new empty database that is gone with its last session.
    static std::shared_ptr<Database> inMemory();

    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;
    ~Database();

    bool isInMemory() const { return memoryAnchor_ != nullptr; }
    /// What a connection opens: a file's path or the URI of the memory database.
    const std::string& address() const { return address_; }

    /// Counts of what sessions have done, so that each sees when its cached knowledge is stale.
    std::atomic<std::uint64_t> schemaChanges{0};
    std::atomic<std::uint64_t> writes{0};

private:
    explicit Database(std::string address);

    std::string address_;
    void* memoryAnchor_ = nullptr; // the connection that keeps a memory database alive
};

} // namespace refhost
