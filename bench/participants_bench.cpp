// Reading and adding an event's participants, against the engine alone.
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include "automation/text.h"
#include "bench/events_database.h"

namespace bench {
namespace {

using qmevents::call;
using qmevents::get;
using qmevents::Object;
using qmevents::Ref;
using qmevents::toBool;
using qmevents::toInt32;
using qmevents::toObject;

constexpr int count = 10000;

EventsDatabase& database() { return databaseOf(2, count); }

// What a program without an object model would keep of a participant.
struct PlainParticipant {
    std::int64_t numbers[6] = {};
    std::string texts[5];
    std::string groups;
};

constexpr const char* join =
    "SELECT eep.Id, eep.FKEventId, eep.FKDonorId, eep.Status, eep.Attended, eep.CreateUser, "
    "eep.Notes, eep.CreateDate, eep.LastUpdateDate, dd.display, eligg.Name "
    "FROM events_event_participants eep INNER JOIN donor_donors dd ON eep.FKDonorId = dd.id "
    "LEFT JOIN events_event_participants_groups eepg "
    "ON eep.FKDonorId = eepg.FKDonorId AND eep.FKEventId = eepg.FKEventId "
    "LEFT JOIN events_list_eventinvitationgroups eligg ON eepg.FKInvitationGroupId = eligg.Id "
    "WHERE eep.FKEventId = 1 ORDER BY eep.Id, eepg.FKInvitationGroupId";

std::string textAt(sqlite3_stmt* statement, int column)
{
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
    if (!text) return {};
    return {text, static_cast<std::size_t>(sqlite3_column_bytes(statement, column))};
}

std::vector<PlainParticipant> readPlainly(sqlite3* raw)
{
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(raw, join, -1, &statement, nullptr);
    std::vector<PlainParticipant> participants;
    while (sqlite3_step(statement) == SQLITE_ROW) {
        const std::int64_t id = sqlite3_column_int64(statement, 0);
        if (participants.empty() || participants.back().numbers[0] != id) {
            PlainParticipant& one = participants.emplace_back();
            for (int i = 0; i < 6; ++i) one.numbers[i] = sqlite3_column_int64(statement, i);
            for (int i = 0; i < 4; ++i) one.texts[i] = textAt(statement, 6 + i);
        }
        std::string& groups = participants.back().groups;
        if (!groups.empty()) groups += ", ";
        groups += textAt(statement, 10);
    }
    sqlite3_finalize(statement);
    return participants;
}

void rawParticipants(benchmark::State& state)
{
    sqlite3* const raw = database().raw();
    for (auto _ : state) {
        if (readPlainly(raw).size() != count) state.SkipWithError("not every one was read");
    }
}
BENCHMARK(rawParticipants)->Arg(count)->Unit(benchmark::kMillisecond);

void getParticipants(benchmark::State& state)
{
    const auto store = database().store();
    for (auto _ : state) {
        const auto read = toObject(call(store, "GetEventParticipants", 1));
        if (toInt32(get(read, "Count")) != count) state.SkipWithError("not every one was read");
    }
}
BENCHMARK(getParticipants)->Arg(count)->Unit(benchmark::kMillisecond);

// --- Adding -----------------------------------------------------------------------------------

Ref<Object> newParticipants(const Ref<Object>& store)
{
    const auto participants = toObject(call(store, "GetNewEventParticipants"));
    const auto add = participants->memberId("Add");
    for (int donor = 1; donor <= count; ++donor) {
        const auto one = call(store, "GetNewEventParticipant", 2, donor);
        call(toObject(one), "AddInvitationGroup", 1 + donor % 5, "Group");
        qmevents::Value arguments[] = {one};
        participants->invoke(add, qmevents::CallKind::method, arguments);
    }
    return participants;
}

// So that every run begins with the same rows.
void removeAdded()
{
    for (const char* statement :
         {"DELETE FROM events_event_participants WHERE FKEventId = 2",
          "DELETE FROM events_event_participants_groups WHERE FKEventId = 2",
          "DELETE FROM actions_interactions"}) {
        database().session().sql().hostExecute(statement);
    }
    database().session().sql().hostExecute("PRAGMA wal_checkpoint(TRUNCATE)");
}

void addParticipants(benchmark::State& state)
{
    const auto store = database().store();
    int statements = 0;
    database().session().sql().beforeStatement = [&](std::string_view) { ++statements; };
    for (auto _ : state) {
        state.PauseTiming();
        removeAdded();
        const auto participants = newParticipants(store);
        statements = 0;
        state.ResumeTiming();
        if (!toBool(call(store, "AddEventParticipants", 2, participants))) {
            state.SkipWithError("not added");
        }
    }
    database().session().sql().beforeStatement = nullptr;
    state.counters["statements_each"] = static_cast<double>(statements) / count;
}
BENCHMARK(addParticipants)->Arg(count)->Iterations(2)->Unit(benchmark::kMillisecond);

// The texts that adding sends, the host's own included, in the engine's words for the few that it
// has other words for.
std::vector<std::string> recordedTexts()
{
    std::vector<std::string> texts;
    const auto store = database().store();
    removeAdded();
    database().session().sql().beforeStatement = [&](std::string_view text) {
        std::string plain = qmevents::text::replaceAll(std::string(text), "N'", "'");
        texts.push_back(qmevents::text::replaceAll(plain, "@@IDENTITY", "last_insert_rowid()"));
    };
    call(store, "AddEventParticipants", 2, newParticipants(store));
    database().session().sql().beforeStatement = nullptr;
    return texts;
}

void rawStatements(benchmark::State& state)
{
    const auto texts = recordedTexts();
    sqlite3* const raw = database().raw();
    sqlite3_exec(raw, "PRAGMA synchronous = NORMAL; PRAGMA cache_size = -16000", nullptr, nullptr,
                 nullptr);
    for (auto _ : state) {
        state.PauseTiming();
        removeAdded();
        state.ResumeTiming();
        for (const std::string& text : texts) {
            char* reason = nullptr;
            if (sqlite3_exec(raw, text.c_str(), nullptr, nullptr, &reason) != SQLITE_OK) {
                state.SkipWithError((text + ": " + reason).c_str());
                return;
            }
        }
    }
    removeAdded();
}
BENCHMARK(rawStatements)->Arg(count)->Iterations(2)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace bench
