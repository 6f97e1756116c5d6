// Reading events through the add-in against a bare loop over the same columns.
#include <benchmark/benchmark.h>
#include <malloc.h>
#include <sqlite3.h>

#include <vector>

#include "bench/events_database.h"

namespace bench {
namespace {

using qmevents::call;
using qmevents::get;
using qmevents::put;
using qmevents::toInt32;
using qmevents::toObject;
using qmevents::Value;

// The columns of events_event_info as a program without an object model would keep them.
struct PlainEvent {
    std::int64_t numbers[12] = {};
    double goal = 0;
    std::string texts[8];
};

constexpr const char* columns =
    "SELECT Id, FKLocationId, MaxCapacity, MinCapacity, FKCategoryId, FKStatusId, "
    "FKCoordinatorId, AttendanceGoal, FKFundId, FKCampaignId, FKAppealId, CreateUser, RevenueGoal, "
    "Name, Description, StartDateTime, EndDateTime, RSVPDateTime, Notes, CreateDate, "
    "LastUpdateDate FROM events_event_info";

std::vector<PlainEvent> readPlainly(sqlite3* database)
{
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(database, columns, -1, &statement, nullptr);
    std::vector<PlainEvent> events;
    while (sqlite3_step(statement) == SQLITE_ROW) {
        PlainEvent& event = events.emplace_back();
        for (int i = 0; i < 12; ++i) event.numbers[i] = sqlite3_column_int64(statement, i);
        event.goal = sqlite3_column_double(statement, 12);
        for (int i = 0; i < 8; ++i) {
            const auto* text = sqlite3_column_text(statement, 13 + i);
            event.texts[i].assign(
                reinterpret_cast<const char*>(text),
                static_cast<std::size_t>(sqlite3_column_bytes(statement, 13 + i)));
        }
    }
    sqlite3_finalize(statement);
    return events;
}

void rawLoop(benchmark::State& state)
{
    sqlite3* database = databaseOf(state.range(0)).raw();
    for (auto _ : state) benchmark::DoNotOptimize(readPlainly(database));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(rawLoop)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void getEvents(benchmark::State& state)
{
    const auto store = databaseOf(state.range(0)).store();
    for (auto _ : state) {
        const Value events = call(store, "GetEvents");
        if (toInt32(get(toObject(events), "Count")) != state.range(0)) {
            state.SkipWithError("not every event was read");
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(getEvents)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void memoryPerEvent(benchmark::State& state)
{
    const auto store = databaseOf(state.range(0)).store();
    double bytes = 0;
    for (auto _ : state) {
        const auto before = mallinfo2();
        const Value events = call(store, "GetEvents");
        const auto after = mallinfo2();
        bytes = static_cast<double>(after.uordblks + after.hblkhd) -
                static_cast<double>(before.uordblks + before.hblkhd);
    }
    // Name, description and notes of a row.
    constexpr double texts = 20 + 32 + 17;
    state.counters["bytes_beyond_texts"] = bytes / static_cast<double>(state.range(0)) - texts;
}
BENCHMARK(memoryPerEvent)->Arg(100000)->Iterations(2)->Unit(benchmark::kMillisecond);

// What the list page asks for: the first rows in order, out of many.
void firstPageOfTheList(benchmark::State& state)
{
    const auto store = databaseOf(10000).store();
    for (auto _ : state) {
        const auto criteria = toObject(call(store, "GetNewEventsCriteria"));
        put(criteria, "MaxRows", 51);
        put(criteria, "CustomOrderBy", "StartDateTime DESC, Name");
        const auto events = toObject(call(store, "GetEventsBySearch", criteria));
        Value event;
        for (const auto walk = events->enumerate(); walk->next(event);) {
            for (const char* column :
                 {"Id", "Name", "StartDateTime", "FKStatusId", "MaxCapacity"}) {
                benchmark::DoNotOptimize(get(event.object(), column));
            }
        }
    }
}
BENCHMARK(firstPageOfTheList)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace bench
