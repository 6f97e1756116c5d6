#include "bench/events_database.h"

#include <sqlite3.h>
#include <unistd.h>

#include <filesystem>
#include <stdexcept>

namespace bench {
namespace {

// Numbers from 1 to `count` as n(i).
std::string numbers(int count)
{
    return "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " +
           std::to_string(count) + ") ";
}

// Rows made by the engine itself: every column filled, texts as long as people write them.
std::string fillStatement(int events)
{
    return numbers(events) +
           "INSERT INTO events_event_info (Name, Description, FKLocationId, StartDateTime, "
           "EndDateTime, RSVPDateTime, MaxCapacity, MinCapacity, FKCategoryId, FKStatusId, "
           "FKCoordinatorId, RevenueGoal, AttendanceGoal, FKFundId, FKCampaignId, FKAppealId, "
           "Notes, CreateUser, CreateDate, LastUpdateUser, LastUpdateDate) SELECT 'Benefit night "
           "number ' || i, 'An evening with music and dinner', i % 20, datetime('2026-01-01', (i % "
           "365) || ' days', '18 hours'), datetime('2026-01-01', (i % 365) || ' days', '23 "
           "hours'), datetime('2025-12-01', (i % 365) || ' days'), 100 + i % 400, 20, i % 5, i % "
           "4, i % 50, 1000.5 + i, 80, i % 7, i % 9, i % 11, 'Bring the banners', 1, '2025-06-01 "
           "10:00:00', 1, '2025-07-01 11:30:00' FROM n";
}

void addParticipants(refhost::SqlSession& sql, int count)
{
    const std::string each = numbers(count);
    for (const std::string& statement :
         {each + "INSERT INTO donor_donors (display, entitytype, deleted) "
                 "SELECT 'Donor, Number ' || i, 'Person', 0 FROM n",
          numbers(5) + "INSERT INTO events_list_eventinvitationgroups (Name, Visible, [Order]) "
                       "SELECT 'Group ' || i, 1, i FROM n",
          each + "INSERT INTO events_event_participants (FKEventId, FKDonorId, Status, Notes, "
                 "Attended, CreateUser, CreateDate) SELECT 1, i, i % 4, 'Brings a guest', i % 2, "
                 "1, '2025-06-01 10:00:00' FROM n",
          each + "INSERT INTO events_event_participants_groups (FKEventId, FKDonorId, "
                 "FKInvitationGroupId) SELECT 1, i, 1 + i % 5 FROM n",
          each + "INSERT INTO events_event_participants_groups (FKEventId, FKDonorId, "
                 "FKInvitationGroupId) SELECT 1, i, 1 + (i + 1) % 5 FROM n WHERE i % 2 = 0"}) {
        sql.hostExecute(statement);
    }
}

} // namespace

EventsDatabase::EventsDatabase(int events, int participants)
    : events_(events), participants_(participants),
      file_((std::filesystem::temp_directory_path() /
             ("events_bench_" + std::to_string(::getpid()) + "_" + std::to_string(events) + ".db"))
                .string())
{
    std::filesystem::remove(file_);
    refhost::SessionOptions options;
    options.database = refhost::Database::open(file_);
    options.frontEnd = &frontEnd_;
    options.addInPath = SOURCE_FOLDER;
    session_ = std::make_unique<refhost::Session>(std::move(options));
    if (sqlite3_open(file_.c_str(), &raw_) != SQLITE_OK) throw std::runtime_error(file_);
    session_->sql().hostExecute(fillStatement(events));
    if (participants > 0) addParticipants(session_->sql(), participants);
}

EventsDatabase::~EventsDatabase()
{
    sqlite3_close(raw_);
    session_.reset();
    for (const char* suffix : {"", "-wal", "-shm"}) std::filesystem::remove(file_ + suffix);
}

qmevents::Ref<qmevents::Object> EventsDatabase::store()
{
    using qmevents::call;
    using qmevents::getObject;
    using qmevents::toObject;
    const auto module = getObject(getObject(session_->app(), "Modules"), "Events");
    return getObject(toObject(call(module, "Objects", "Events")), "EventsManage");
}

EventsDatabase& databaseOf(std::int64_t eventCount, std::int64_t participantCount)
{
    static std::unique_ptr<EventsDatabase> database;
    const auto events = static_cast<int>(eventCount);
    const auto participants = static_cast<int>(participantCount);
    if (!database || !database->holds(events, participants)) {
        database.reset(); // the old session leaves its thread first
        database = std::make_unique<EventsDatabase>(events, participants);
    }
    return *database;
}

} // namespace bench
