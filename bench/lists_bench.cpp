// A list of donors with every column of the events, in one statement.
#include <benchmark/benchmark.h>

#include <unistd.h>

#include <filesystem>

#include "host/document/host_schema.h"
#include "host/document/sql_session.h"
#include "tests/data/builder_file.h"
#include "tests/data/schema_file.h"

namespace bench {
namespace {

constexpr int donors = 100000;

// Each donor has three gifts. One in five was invited to four events of 200 or so, one in ten has
// two reservations, each of two lines, one of them paid by a gift, and gave to an event besides.
void fill(refhost::SqlSession& sql)
{
    const std::string each = "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n "
                             "WHERE i < " +
                             std::to_string(donors) + "), four(k) AS (VALUES (0), (1), (2), (3)) ";
    for (const char* statement : {
             "INSERT INTO donor_donors (display, entitytype, deleted) "
             "SELECT 'Donor, Number ' || i, 'Person', 0 FROM n",
             "INSERT INTO events_event_activities (FKEventId, Name, ListPrice, QuantityAvailable, "
             "Sponsorship) SELECT 1 + i / 2, 'Activity', 50, 100, i % 2 FROM n WHERE i < 400",
             "INSERT INTO events_event_participants (FKEventId, FKDonorId, Status, Attended) "
             "SELECT 1 + (i * 7 + k * 31) % 200, i, (i + k) % 4, k % 2 FROM n, four "
             "WHERE i % 5 = 0",
             "INSERT INTO events_event_reservations (FKEventId, FKDonorId, ReservationDate, "
             "AmountPaid) SELECT 1 + (i * 7 + k * 31) % 200, i, datetime('2024-01-01', "
             "((i + k * 400) % 1000) || ' days'), 50 * k FROM n, four WHERE i % 10 = 0 AND k < 2",
             "INSERT INTO events_event_reservations_activities (FKReservationId, FKActivityId, "
             "Quantity, Price) SELECT r.Id, 1 + (r.Id + k) % 399, 1 + k, 50 "
             "FROM events_event_reservations r, four WHERE k < 2",
             "INSERT INTO donor_gifts (donorId, created, pledge, deleted, FKEventId, "
             "FKReservationId) SELECT i, '2025-01-01 00:00:00', k = 2, 0, CASE WHEN i % 10 = 0 "
             "AND k > 0 THEN 1 + i % 200 ELSE 0 END, CASE WHEN i % 10 = 0 AND k = 0 "
             "THEN i / 5 ELSE 0 END FROM n, four WHERE k < 3",
             "INSERT INTO donor_gifts_payments (giftId, expectedDate, expectedAmount, actualDate, "
             "actualAmount) SELECT id, created, 40, datetime('2024-01-01', (id % 1000) || "
             "' days'), 40 FROM donor_gifts",
         }) {
        sql.hostExecute(each + statement);
    }
}

/// A database file of many donors, in the tables of one dialect.
class DonorsFile {
public:
    explicit DonorsFile(refhost::Dialect dialect)
        : file_((std::filesystem::temp_directory_path() /
                 ("lists_bench_" + std::to_string(::getpid()) + ".db"))
                    .string()),
          database_(refhost::Database::open(file_)), sql(database_, dialect)
    {
        refhost::createHostTables(database_);
        for (const std::string& text : refhost::test::schemaStatements(dialect, 2, "install")) {
            sql.execute(text);
        }
        fill(sql);
    }
    ~DonorsFile()
    {
        for (const char* suffix : {"", "-wal", "-shm"}) std::filesystem::remove(file_ + suffix);
    }

private:
    std::string file_;
    std::shared_ptr<refhost::Database> database_;

public:
    refhost::SqlSession sql;
};

// Every cell of every row is fetched.
void donorList(benchmark::State& state)
{
    const auto dialect = state.range(0) ? refhost::Dialect::sqlServer : refhost::Dialect::jet;
    const std::string statement = refhost::test::BuilderFile(dialect, "donors").statement();
    DonorsFile file(dialect);
    for (auto _ : state) {
        const auto rows = file.sql.query(statement);
        int count = 0;
        for (; !rows->eof(); rows->next(), ++count) {
            for (std::size_t i = 0; i < rows->columnCount(); ++i) {
                benchmark::DoNotOptimize(rows->value(i));
            }
        }
        if (count != donors) state.SkipWithError("not every donor was listed");
    }
}
BENCHMARK(donorList)
    ->ArgName("sqlServer")
    ->Arg(0)
    ->Arg(1)
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

} // namespace
} // namespace bench
