// Sign-in on a large database: when all is sound, and when everything refers to deleted records.
#include <benchmark/benchmark.h>

#include "bench/events_database.h"

namespace bench {
namespace {

constexpr int count = 100000;

EventsDatabase& database() { return databaseOf(count, count); }

void run(const std::vector<std::string>& statements)
{
    auto& sql = database().session().sql();
    sql.hostExecute("BEGIN");
    for (const std::string& statement : statements) sql.hostExecute(statement);
    sql.hostExecute("COMMIT");
    sql.hostExecute("PRAGMA wal_checkpoint(TRUNCATE)");
}

// An activity, a participant in a group, a reservation with a line and a gift, and a task for each
// event; every key refers to a record that is there.
void makeSound()
{
    std::vector<std::string> statements{
        "UPDATE donor_donors SET deleted = 0",
        "UPDATE events_event_info SET FKCoordinatorId = 1 + Id % 50, FKFundId = 1 + Id % 10, "
        "FKCampaignId = 1 + Id % 10, FKAppealId = 1 + Id % 10"};
    for (const std::string table :
         {"events_event_activities", "events_event_participants",
          "events_event_participants_groups", "events_event_reservations",
          "events_event_reservations_activities", "events_event_tasks", "donor_gifts",
          "events_list_eventcoordinators", "donor_funds", "donor_campaigns",
          "donor_list_gifts_sources", "donor_list_assignedto"}) {
        statements.push_back("DELETE FROM " + table);
    }
    for (const std::string table :
         {"donor_funds", "donor_campaigns", "donor_list_gifts_sources", "donor_list_assignedto"}) {
        statements.push_back("INSERT INTO " + table +
                             " (id, value) SELECT Id, 'Code' FROM events_event_info WHERE Id < 11");
    }
    for (const char* statement :
         {"INSERT INTO events_list_eventcoordinators (FKDonorId) SELECT id FROM donor_donors WHERE "
          "id < 51",
          "INSERT INTO events_event_activities (Id, FKEventId, Name, FKFundId, FKCampaignId, "
          "FKAppealId) SELECT Id, Id, 'Seat', FKFundId, FKCampaignId, FKAppealId FROM "
          "events_event_info",
          "INSERT INTO events_event_participants (FKEventId, FKDonorId) SELECT Id, Id FROM "
          "events_event_info",
          "INSERT INTO events_event_participants_groups (FKEventId, FKDonorId, "
          "FKInvitationGroupId) SELECT Id, Id, 1 FROM events_event_info",
          "INSERT INTO events_event_reservations (Id, FKEventId, FKDonorId) SELECT Id, Id, Id FROM "
          "events_event_info",
          "INSERT INTO events_event_reservations_activities (FKReservationId, FKActivityId) SELECT "
          "Id, Id FROM events_event_info",
          "INSERT INTO donor_gifts (donorId, FKReservationId) SELECT Id, Id FROM events_event_info",
          "INSERT INTO events_event_tasks (FKEventId, Name, FKAssignedToId) SELECT Id, 'Call', 1 + "
          "Id % 10 FROM events_event_info"}) {
        statements.emplace_back(statement);
    }
    run(statements);
}

void signInToSoundData(benchmark::State& state)
{
    makeSound();
    for (auto _ : state) database().session().raise("application-signin");
}
BENCHMARK(signInToSoundData)->Arg(count)->Iterations(1)->Unit(benchmark::kMillisecond);

void repairEverything(benchmark::State& state)
{
    for (auto _ : state) {
        state.PauseTiming();
        makeSound();
        run({"UPDATE donor_donors SET deleted = 1", "DELETE FROM donor_funds",
             "DELETE FROM donor_campaigns", "DELETE FROM donor_list_gifts_sources",
             "DELETE FROM donor_list_assignedto"});
        state.ResumeTiming();
        database().session().raise("application-signin");
    }
    const auto left = database().session().sql().hostQuery(
        "SELECT (SELECT COUNT(*) FROM events_event_info WHERE FKCoordinatorId + FKFundId + "
        "FKCampaignId + FKAppealId <> 0) + (SELECT COUNT(*) FROM events_event_participants) + "
        "(SELECT COUNT(*) FROM events_event_reservations_activities)");
    if (std::get<std::int64_t>(left[0][0]) != 0) state.SkipWithError("something is left");
}
BENCHMARK(repairEverything)->Arg(count)->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace bench
