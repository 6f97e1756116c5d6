#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "automation/error.h"
#include "host/document/sql_session.h"

namespace refhost::testing {

/// A small database of donors and their gifts, with a session in each dialect.
struct GiftDatabase {
    explicit GiftDatabase(const std::shared_ptr<Database>& shared = Database::inMemory());

    SqlSession& in(Dialect dialect) { return dialect == Dialect::jet ? jet : sqlServer; }

    std::shared_ptr<Database> database;
    SqlSession sqlServer;
    SqlSession jet;
};

/// A value as tests write it: 12, 1.5, "Null", True, 2026-03-01 18:30:00, text as it is.
std::string shown(const qmevents::Value& value);
/// The cells of the present row, separated by "|".
std::string row(const Cursor& cursor);
/// All rows of a query, separated by "; ".
std::string rows(SqlSession& session, std::string_view sql);
/// The kinds of the values of a query's first row: "Long|Currency".
std::string kinds(SqlSession& session, std::string_view sql);
/// The names of a query's columns, separated by "|".
std::string columnNames(SqlSession& session, std::string_view sql);
/// Runs a SELECT to its end, or any other statement.
void run(SqlSession& session, std::string_view sql);
/// What the error of a statement says; empty when there is none.
std::string refusal(SqlSession& session, std::string_view sql);

/// Rolls back what happened in a scope.
class Undone {
public:
    explicit Undone(SqlSession& session) : session_(session) { session_.begin(); }
    Undone(const Undone&) = delete;
    Undone& operator=(const Undone&) = delete;
    ~Undone() { session_.rollback(); }

private:
    SqlSession& session_;
};

} // namespace refhost::testing
