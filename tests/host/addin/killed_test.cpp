// A process that is killed in the middle of its work.
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <functional>
#include <random>
#include <thread>

#include "tests/host/addin/full_event.h"
#include "tests/support/temp_folder.h"

namespace refhost {
namespace {

namespace fs = std::filesystem;
using qmevents::toBool;

constexpr int kills = 50;
/// More than an event takes that is made, and one that is deleted.
constexpr int mostStatements = 150;

/// Makes events with something of everything, and deletes them again, for ever; tells of each
/// statement through `progress`.
[[noreturn]] void work(Dialect dialect, const fs::path& file, int progress)
{
    WholeHost host(dialect, Database::open(file));
    host.afterStatement = [progress] {
        const char done = 1;
        if (::write(progress, &done, 1) != 1) ::_exit(1);
    };
    for (;;) {
        EventFiller(host).fill();
        if (std::stoi(host.cell("SELECT COUNT(*) FROM events_event_info")) < 3) continue;
        const auto oldest = host.cell("SELECT MIN(Id) FROM events_event_info");
        if (!toBool(call(host.store(), "DeleteEvent", std::stoi(oldest), false))) ::_exit(1);
    }
}

/// A child process that works in the database until it is killed.
class BusyProcess {
public:
    BusyProcess(Dialect dialect, const fs::path& file)
    {
        int ends[2];
        if (::pipe(ends) != 0) throw std::runtime_error("no pipe");
        process_ = ::fork();
        if (process_ == 0) {
            try {
                work(dialect, file, ends[1]);
            } catch (...) { // what was made for the parent shall not be ended here
                ::_exit(1);
            }
        }
        ::close(ends[1]);
        progress_ = ends[0];
    }
    BusyProcess(const BusyProcess&) = delete;
    BusyProcess& operator=(const BusyProcess&) = delete;
    ~BusyProcess() { ::close(progress_); }

    /// Waits until so many statements have run.
    void waitForStatements(int count) const
    {
        for (char done = 0; count > 0; --count) {
            ASSERT_EQ(::read(progress_, &done, 1), 1) << "the process has ended by itself";
        }
    }
    /// Kills it; whether it was still working.
    bool kill() const
    {
        ::kill(process_, SIGKILL);
        int status = 0;
        ::waitpid(process_, &status, 0);
        return WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
    }

private:
    pid_t process_ = 0;
    int progress_ = -1;
};

class Killed : public InBothDialects {
protected:
    Killed()
    {
        const WholeHost host(GetParam(), Database::open(file));
        EventFiller(host).prepare();
    }

    const qmevents::testing::TempFolder folder;
    const fs::path file = folder / "killed.db";
};
INSTANTIATE_TEST_SUITE_P(Both, Killed, ::testing::Values(Dialect::sqlServer, Dialect::jet),
                         testNameOf);

TEST_P(Killed, LeavesEachEventWholeOrGoneAndTheDatabaseSound)
{
    std::mt19937 random(20261121); // NOLINT: the same moments in every run
    int wholeEvents = 0;
    for (int killed = 0; killed < kills; ++killed) {
        SCOPED_TRACE(killed);
        const BusyProcess process(GetParam(), file);
        process.waitForStatements(1 + static_cast<int>(random() % mostStatements));
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 500));
        ASSERT_TRUE(process.kill());

        const WholeHost host(GetParam(), Database::open(file));
        ASSERT_EQ(host.frontEnd.seen, std::vector<std::string>{});
        const auto check = host.session->sql().hostQuery("PRAGMA integrity_check");
        ASSERT_EQ(std::get<std::string>(check.at(0).at(0)), "ok");
        for (const auto& [table, perEvent] : rowsOfAFullEvent) {
            const std::string rows = "SELECT COUNT(*) FROM " + std::string(table) + " c ";
            EXPECT_EQ(host.cell(rows + "LEFT JOIN events_event_info e ON c.FKEventId = e.Id "
                                       "WHERE c.FKEventId <> 0 AND e.Id IS NULL"),
                      "0")
                << table << " of an event that is gone";
            const auto whole = std::stoi(
                host.cell("SELECT COUNT(*) FROM events_event_info WHERE Notes LIKE 'complete'"));
            EXPECT_EQ(host.cell(rows + "INNER JOIN events_event_info e ON c.FKEventId = e.Id "
                                       "WHERE e.Notes LIKE 'complete'"),
                      std::to_string(whole * perEvent))
                << table << " of the events that were complete";
            wholeEvents = std::max(wholeEvents, whole);
        }
        EXPECT_EQ(host.cell("SELECT COUNT(*) FROM events_event_reservations_activities l LEFT JOIN "
                            "events_event_reservations r ON l.FKReservationId = r.Id "
                            "WHERE r.Id IS NULL"),
                  "0");
    }
    EXPECT_GT(wholeEvents, 0);
}

} // namespace
} // namespace refhost
