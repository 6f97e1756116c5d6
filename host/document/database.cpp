#include "host/document/database.h"

#include <sqlite3.h>

#include "host/document/sql_error.h"

namespace refhost {

Database::Database(std::string address) : address_(std::move(address)) {}

std::shared_ptr<Database> Database::open(const std::filesystem::path& file)
{
    return std::shared_ptr<Database>(new Database(std::filesystem::absolute(file).string()));
}

std::shared_ptr<Database> Database::inMemory()
{
    static std::atomic<std::uint64_t> created{0};
    const std::string name = std::to_string(++created);
    std::shared_ptr<Database> database(new Database("file:/refhost-" + name + "?vfs=memdb"));
    sqlite3* anchor = nullptr;
    if (sqlite3_open_v2(database->address_.c_str(), &anchor,
                        SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_URI,
                        nullptr) != SQLITE_OK) {
        sqlite3_close(anchor);
        throw sqlError(SqlErrorNumber::statement, "A database in memory cannot be opened");
    }
    database->memoryAnchor_ = anchor;
    return database;
}

Database::~Database() { sqlite3_close(static_cast<sqlite3*>(memoryAnchor_)); }

} // namespace refhost
