#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/document/database.h"
#include "host/document/dialect.h"
#include "host/document/host_value.h"
#include "host/document/sql_error.h"

namespace refhost {

/// What the functions of a session's connection know about their session.
struct EngineContext {
    Dialect dialect = Dialect::sqlServer;
    std::optional<std::int64_t> identity; ///< What @@IDENTITY gives; nothing is NULL.
    /// The number of the error that a function raised in the running statement.
    std::optional<SqlErrorNumber> failure;
};

/// How the dialect compares texts: ignoring case, SQL Server also trailing blanks.
std::string_view collationName(Dialect dialect);

/// A prepared statement of the embedded engine.
class EngineStatement {
public:
    EngineStatement() = default;
    EngineStatement(sqlite3_stmt* handle) : handle_(handle) {}

    explicit operator bool() const { return handle_ != nullptr; }
    sqlite3_stmt* handle() const { return handle_.get(); }

    /// Binds parameter `index`, counted from 1.
    void bind(int index, const HostValue& value) const;
    void reset() const;
    HostValue column(int index) const;

private:
    struct Finalizer {
        void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
    };
    std::unique_ptr<sqlite3_stmt, Finalizer> handle_;
};

/// A connection to a database, with the collations and functions that translated statements use.
class Connection {
public:
    Connection(const Database& database, Dialect dialect);
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection();

    sqlite3* handle() const { return handle_; }
    EngineContext& context() { return context_; }

    EngineStatement prepare(std::string_view sql);
    /// Goes to the next row; false when there is none.
    bool step(const EngineStatement& statement);
    /// Runs statements without parameters, separated by semicolons.
    void run(const std::string& sql);
    std::int64_t run(std::string_view sql, const std::vector<HostValue>& parameters);
    std::vector<HostRow> rows(std::string_view sql, const std::vector<HostValue>& parameters = {});

    /// The engine's last failure as an Error.
    [[noreturn]] void fail();

private:
    EngineStatement bound(std::string_view sql, const std::vector<HostValue>& parameters);

    sqlite3* handle_ = nullptr;
    EngineContext context_;
};

/// Registers collations and functions on `connection`; `context` must outlive it.
void registerFunctions(sqlite3* connection, EngineContext& context);

} // namespace refhost
