// A process that is killed in the middle of its work.
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <random>
#include <thread>

#include "tests/host/addin/whole_host.h"

namespace refhost {
namespace {

namespace fs = std::filesystem;
using qmevents::Date;
using qmevents::toBool;
using qmevents::toInt32;

constexpr int kills = 50;
constexpr int longestWork = 60; // milliseconds
constexpr const char* complete = "complete";

/// Makes events with something of everything, and deletes them again, for ever.
class BusyUser {
public:
    BusyUser(Dialect dialect, const fs::path& file) : host_(dialect, Database::open(file)) {}

    void workOn()
    {
        for (;;) {
            makeEvent();
            deleteOldest();
        }
    }

private:
    Ref<Object> make(const char* operation, std::int32_t event) const
    {
        return toObject(call(host_.store(), operation, event));
    }
    void save(const char* operation, const Ref<Object>& record) const
    {
        if (!toBool(call(host_.store(), operation, record))) ::_exit(1);
    }
    void makeEvent() const
    {
        const auto event = toObject(call(host_.store(), "GetNewEvent"));
        put(event, "Name", "Gala");
        put(event, "StartDateTime", Date::of(2026, 12, 1, 18));
        save("UpdateEvent", event);
        const std::int32_t id = toInt32(get(event, "Id"));
        const auto seat = make("GetNewEventActivity", id);
        put(seat, "Name", "Seat");
        put(seat, "QuantityAvailable", 10);
        save("UpdateEventActivity", seat);
        const auto participants = toObject(call(host_.store(), "GetNewEventParticipants"));
        for (const int donor : {1, 2}) {
            const auto one = toObject(call(host_.store(), "GetNewEventParticipant", id, donor));
            call(one, "AddInvitationGroup", 1, "Press");
            call(participants, "Add", one);
        }
        if (!toBool(call(host_.store(), "AddEventParticipants", id, participants))) ::_exit(1);
        const auto reservation = make("GetNewEventReservation", id);
        put(reservation, "FKdonorId", 1);
        put(reservation, "ReservationDate", Date::of(2026, 11, 21));
        const auto line = toObject(call(host_.store(), "GetNewEventReservationActivity"));
        put(line, "FKActivityId", get(seat, "Id"));
        put(line, "Quantity", 1);
        call(getObject(reservation, "Activities"), "Add", line, 0);
        save("UpdateEventReservation", reservation);
        const auto expense = make("GetNewEventExpense", id);
        put(expense, "ExpenseDate", Date::of(2026, 11, 21));
        put(expense, "Amount", 5);
        put(expense, "Description", "Flowers");
        save("UpdateEventExpense", expense);
        const auto task = make("GetNewEventTask", id);
        put(task, "Name", "Call");
        put(task, "DueDateTime", Date::of(2026, 11, 21));
        save("UpdateEventTask", task);
        host_.execute("INSERT INTO donor_gifts (donorId, FKEventId) VALUES (1, " +
                      std::to_string(id) + ")");
        put(event, "Notes", complete);
        save("UpdateEvent", event);
    }
    void deleteOldest() const
    {
        if (std::stoi(host_.cell("SELECT COUNT(*) FROM events_event_info")) < 3) return;
        const auto oldest = host_.cell("SELECT MIN(Id) FROM events_event_info");
        if (!toBool(call(host_.store(), "DeleteEvent", std::stoi(oldest), false))) ::_exit(1);
    }

    WholeHost host_;
};

/// A child process that works in the database until it is killed.
class BusyProcess {
public:
    BusyProcess(Dialect dialect, const fs::path& file)
    {
        int ends[2];
        if (::pipe(ends) != 0) throw std::runtime_error("no pipe");
        process_ = ::fork();
        if (process_ == 0) {
            BusyUser user(dialect, file);
            const char signedIn = 1;
            if (::write(ends[1], &signedIn, 1) == 1) user.workOn();
            ::_exit(1);
        }
        ::close(ends[1]);
        char signedIn = 0;
        if (::read(ends[0], &signedIn, 1) != 1) ADD_FAILURE() << "the process did not sign in";
        ::close(ends[0]);
    }
    BusyProcess(const BusyProcess&) = delete;
    BusyProcess& operator=(const BusyProcess&) = delete;
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
};

class Killed : public InBothDialects {
protected:
    Killed()
        : file(fs::temp_directory_path() /
               ("killed_" + std::to_string(::getpid()) + "_" + testNameOf({GetParam(), 0}) + ".db"))
    {
        removeFile();
        const WholeHost host(GetParam(), Database::open(file));
        for (const char* name : {"Lee, Kim", "Ode, Ann"}) {
            host.execute("INSERT INTO donor_donors (display) VALUES ('" + std::string(name) + "')");
        }
        const auto group = toObject(call(host.lists(), "GetNewItem", "eventinvitationgroup"));
        put(group, "Name", "Press");
        call(host.lists(), "UpdateEventInvitationGroup", group);
    }
    ~Killed() override { removeFile(); }
    void removeFile() const
    {
        for (const char* suffix : {"", "-wal", "-shm"}) fs::remove(file.string() + suffix);
    }

    fs::path file;
};
INSTANTIATE_TEST_SUITE_P(Both, Killed, ::testing::Values(Dialect::sqlServer, Dialect::jet),
                         testNameOf);

constexpr std::pair<const char*, int> rowsOfACompleteEvent[] = {
    {"events_event_activities", 1},
    {"events_event_participants", 2},
    {"events_event_participants_groups", 2},
    {"events_event_reservations", 1},
    {"events_event_expenses", 1},
    {"events_event_tasks", 1},
    {"donor_gifts", 1}};

TEST_P(Killed, LeavesEachEventWholeOrGoneAndTheDatabaseSound)
{
    std::mt19937 random(20261121); // NOLINT: the same delays in every run
    int wholeEvents = 0;
    for (int killed = 0; killed < kills; ++killed) {
        SCOPED_TRACE(killed);
        const BusyProcess process(GetParam(), file);
        std::this_thread::sleep_for(std::chrono::milliseconds(random() % longestWork));
        ASSERT_TRUE(process.kill());

        const WholeHost host(GetParam(), Database::open(file));
        ASSERT_EQ(host.frontEnd.seen, std::vector<std::string>{});
        const auto check = host.session->sql().hostQuery("PRAGMA integrity_check");
        ASSERT_EQ(std::get<std::string>(check.at(0).at(0)), "ok");
        for (const auto& [table, perEvent] : rowsOfACompleteEvent) {
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
