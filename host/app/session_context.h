#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/document/objects/lock_manager.h"
#include "host/document/sql_session.h"
#include "host/security/user_store.h"
#include "host/shell/shell.h"

namespace refhost {

using qmevents::Members;
using qmevents::Object;
using qmevents::Ref;
using qmevents::Value;

/// What the objects of one session share. They may outlive the session, in the hands of a script or
/// a page; from its end on every access is error 91.
class SessionContext {
public:
    /// What lives no longer than the session.
    struct Live {
        std::unique_ptr<SqlSession> sql = {};
        FrontEnd* frontEnd = nullptr;
        Ref<Shell> shell = {};
        std::function<void(const std::string& key, Value data)> raise = {};
        std::function<void()> doEvents = {};
        std::function<Ref<Object>()> app = {};
    };

    SqlSession& sql() const { return *live().sql; }
    FrontEnd& frontEnd() const { return *live().frontEnd; }
    const Ref<Shell>& shell() const { return live().shell; }
    void raise(const std::string& key, Value data) const { live().raise(key, std::move(data)); }
    void doEvents() const;
    /// What scripts call App.
    Ref<Object> app() const { return live().app(); }

    void begin(Live live) { live_ = std::move(live); }
    void end() { live_.reset(); }

    User user;
    std::optional<std::vector<std::string>> rights; ///< Exactly these, if given.
    std::shared_ptr<LockManager> locks;
    std::uint64_t lockSession = 0;
    std::string addInPath; ///< Ends with a separator.

private:
    const Live& live() const;

    std::optional<Live> live_;
};

using SharedContext = std::shared_ptr<SessionContext>;

/// Keeps the host's own statements out of the trace for a scope.
class Untraced {
public:
    explicit Untraced(SqlSession& sql) : sql_(sql), onStatement_(std::move(sql.onStatement))
    {
        sql_.onStatement = nullptr;
    }
    Untraced(const Untraced&) = delete;
    Untraced& operator=(const Untraced&) = delete;
    ~Untraced() { sql_.onStatement = std::move(onStatement_); }

private:
    SqlSession& sql_;
    std::function<void(const Traced&)> onStatement_;
};

/// A transaction for a scope, within the one that is open already if there is one. Rolls back its
/// own unless commit() was reached.
class Transaction {
public:
    explicit Transaction(SqlSession& sql) : sql_(sql), begun_(!sql.inTransaction())
    {
        if (begun_) sql_.begin();
    }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    ~Transaction();
    void commit();

private:
    SqlSession& sql_;
    bool begun_;
};

/// Reads `text`, a SELECT that both dialects accept, for the host itself: calls `row` for each row.
void readRows(const SharedContext& context, std::string_view text,
              const std::function<void(const Cursor&)>& row);
/// Runs `text`, a statement that both dialects accept, for the host itself.
std::int64_t runStatement(const SharedContext& context, std::string_view text);
/// The key that the last INSERT of the session gave its row.
std::int32_t newKey(const SharedContext& context);

/// The cell of a column that may be NULL, as a `T`.
template <typename T>
T cellOr(const Cursor& row, std::string_view column, T fallback)
{
    const Value value = row.value(row.columnIndex(column).value());
    return value.isNull() ? fallback : qmevents::convertTo<T>(value);
}

} // namespace refhost
