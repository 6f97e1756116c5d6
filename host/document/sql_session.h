#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/document/cursor.h"
#include "host/document/database.h"
#include "host/document/dialect.h"
#include "host/document/host_value.h"

namespace refhost {

/// What a session did, for a trace.
struct Traced {
    enum class Kind { read, write };
    std::string_view text{};
    Kind kind = Kind::read;
    std::int64_t rows = 0;         ///< Changed rows of a write; -1 for a read, whose rows stream.
    std::int64_t microseconds = 0; ///< For a read until its first row was there.
    std::string error{};           ///< Empty when the statement succeeded.
};

/// One signed-in user's way to the database, in one dialect, used on one thread. Texts are
/// accepted exactly as the dialect's engine takes them; anything else is an Error whose
/// description gives line, column, token and reason. Failed statements change nothing and roll
/// nothing else back.
class SqlSession {
public:
    SqlSession(std::shared_ptr<Database> database, Dialect dialect);
    SqlSession(const SqlSession&) = delete;
    SqlSession& operator=(const SqlSession&) = delete;
    /// Rolls back a transaction that is still open; cursors that are still read stand at their end.
    ~SqlSession();

    Dialect dialect() const;

    /// Runs a statement that changes data or the schema, and gives the number of changed rows.
    std::int64_t execute(std::string_view text);
    /// Runs a SELECT; the cursor stands on the first row.
    std::unique_ptr<Cursor> query(std::string_view text);

    /// Starts a transaction; an error when one is open.
    void begin();
    /// Ends the transaction; an error when none is open.
    void commit();
    void rollback();
    bool inTransaction() const;

    /// Called after each statement, failed ones too.
    std::function<void(const Traced&)> onStatement;
    /// Called before each statement; what it throws becomes the statement's failure.
    std::function<void(std::string_view text)> beforeStatement;

    /// Runs the host's own SQL (of the embedded engine, `?` for each parameter), untraced. Tables
    /// whose names begin with "host_" are the host's: no dialect text reaches them.
    std::int64_t hostExecute(std::string_view sql, const std::vector<HostValue>& parameters = {});
    std::vector<HostRow> hostQuery(std::string_view sql,
                                   const std::vector<HostValue>& parameters = {});

private:
    class Implementation;
    std::unique_ptr<Implementation> implementation_;
};

} // namespace refhost
