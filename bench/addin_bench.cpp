// The costs of late binding and of the collections.
#include <benchmark/benchmark.h>

#include "bench/events_database.h"
#include "core/root_objects.h"

namespace bench {
namespace {

using qmevents::call;
using qmevents::CallKind;
using qmevents::get;
using qmevents::Object;
using qmevents::put;
using qmevents::Ref;
using qmevents::toObject;
using qmevents::Value;

EventsDatabase& smallDatabase() { return databaseOf(1); }

void readProperty(benchmark::State& state)
{
    const auto event = toObject(call(smallDatabase().store(), "GetEvent", 1));
    for (auto _ : state) benchmark::DoNotOptimize(get(event, "MaxCapacity"));
}
BENCHMARK(readProperty);

void readTextProperty(benchmark::State& state)
{
    const auto event = toObject(call(smallDatabase().store(), "GetEvent", 1));
    for (auto _ : state) benchmark::DoNotOptimize(get(event, "Name"));
}
BENCHMARK(readTextProperty);

void ignoreUnknownHostEvent(benchmark::State& state)
{
    auto& session = smallDatabase().session();
    for (auto _ : state) session.raise("no-such-event");
}
BENCHMARK(ignoreUnknownHostEvent);

Ref<Object> newEvents()
{
    const auto store = smallDatabase().store();
    const auto criteria = toObject(call(store, "GetNewEventsCriteria"));
    put(criteria, "EventId", -1);
    return toObject(call(store, "GetEventsBySearch", criteria));
}

void addItems(benchmark::State& state, bool keyed)
{
    const auto event = call(smallDatabase().store(), "GetNewEvent");
    const auto add = newEvents()->memberId("Add");
    for (auto _ : state) {
        const auto events = newEvents();
        for (std::int32_t i = 1; i <= state.range(0); ++i) {
            Value arguments[] = {event, keyed ? i : 0};
            events->invoke(add, CallKind::method, arguments);
        }
    }
}
BENCHMARK_CAPTURE(addItems, keyed, true)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(addItems, unsaved, false)->Arg(100000)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace bench
