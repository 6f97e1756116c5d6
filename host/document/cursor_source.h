#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "automation/value.h"
#include "host/document/prepared_plan.h"

namespace refhost {

/// The rows behind a cursor: a running statement, or its rows kept in memory.
class CursorSource {
public:
    /// Runs the query up to its first row. `writes` is the database's count of writes by then.
    CursorSource(Connection& connection, std::shared_ptr<PreparedPlan> plan,
                 std::vector<HostValue> parameters, std::uint64_t writes);
    CursorSource(const CursorSource&) = delete;
    CursorSource& operator=(const CursorSource&) = delete;
    ~CursorSource() { close(); }

    const std::vector<ResultColumn>& columns() const { return plan_->plan.columns; }
    bool eof() const { return atEnd_; }
    bool isStreaming() const { return static_cast<bool>(statement_); }
    std::uint64_t writesWhenOpened() const { return writes_; }

    void next();
    void moveFirst();
    std::int64_t count();
    qmevents::Value cell(std::size_t column) const;

    /// Keeps all rows in memory and ends the running statement; the position stays.
    void keepRows();
    void close();
    /// The session is gone: no statement can run any more.
    void abandon();

private:
    EngineStatement run();
    void advance();
    void readRow(const EngineStatement& statement);
    std::size_t keptCount() const { return kept_.size() / columns().size(); }

    Connection* connection_;
    std::shared_ptr<PreparedPlan> plan_;
    std::vector<HostValue> parameters_;
    std::uint64_t writes_;
    EngineStatement statement_;
    std::vector<qmevents::Value> kept_; // row by row
    bool isKept_ = false;
    std::size_t position_ = 0; // rows before the present one
    bool atEnd_ = false;
};

} // namespace refhost
