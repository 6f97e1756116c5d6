#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "automation/clock.h"
#include "host/document/sql_session.h"

namespace refhost::test {

/// Column and value, the value as text: "750.5", "True", "2026-03-01 00:00:00", "Null".
using Row = std::map<std::string, std::string>;

/// A gift as the donation module would record it.
struct GiftRow {
    int donor = 0, event = 0, reservation = 0;
    bool pledge = false, deleted = false;
};

/// A new database with the host's tables; helpers insert rows in the words of the dialect and give
/// their keys. Days are "2026-03-01" or "2026-03-01 18:30:00"; an empty one is NULL.
class EventsDatabase {
public:
    explicit EventsDatabase(Dialect dialect);

    /// Runs a section of the schema file.
    void run(int version, const std::string& section);
    void install() { run(2, "install"); }

    int donor(const std::string& display);
    int event(const std::string& name, const std::string& start = "", int category = 0);
    int activity(int event, int price, int available, bool sponsorship = false);
    int reservation(int event, int donor, const std::string& day, int paid);
    int line(int reservation, int activity, int quantity, int price);
    int participant(int event, int donor, int status, bool attended);
    int expense(int event, const std::string& amount);
    int gift(const GiftRow& row);
    /// What is expected on a day and, when `receivedOn` is not empty, was received on that day.
    void payment(int gift, int expected, const std::string& receivedOn, int received);

    int insert(const std::string& table,
               const std::vector<std::pair<std::string, std::string>>& cells);
    std::string day(const std::string& day) const;
    std::string text(const std::string& value) const;

    Row row(const std::string& select);
    SqlSession& sql() { return sql_; }

private:
    std::shared_ptr<Database> database_;
    SqlSession sql_;
};

/// The number of the error that `statement` ends with; 0 when it succeeds.
int failureOf(SqlSession& sql, const std::string& statement);

/// Expects each named column to have its value; reports the others' names.
void expectColumns(const Row& actual, const Row& expected);

/// A test that runs in both dialects on a certain day.
class InBothDialects : public ::testing::TestWithParam<Dialect> {
protected:
    qmevents::PinnedClock clock_{qmevents::Date::of(2026, 11, 21, 12)};
    EventsDatabase db_{GetParam()};
};

std::string dialectTestName(const ::testing::TestParamInfo<Dialect>& info);

} // namespace refhost::test

#define QM_IN_BOTH_DIALECTS(suite)                                                                 \
    INSTANTIATE_TEST_SUITE_P(                                                                      \
        , suite, ::testing::Values(refhost::Dialect::sqlServer, refhost::Dialect::jet),            \
        refhost::test::dialectTestName)
