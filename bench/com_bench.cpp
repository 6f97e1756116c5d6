// What the COM boundary costs, as ratios against the same add-in inside this program. The component
// must be registered. Measures, never judges.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <vector>

#include "automation/conversions.h"
#include "com/bridge.h"
#include "com/com_ptr.h"
#include "tests/support/scripted_host.h"
#include "tests/support/transport.h"

namespace {

using qmevents::call;
using qmevents::get;
using qmevents::Object;
using qmevents::Ref;
using qmevents::testing::eventRow;
using qmevents::testing::Rows;
using qmevents::testing::ScriptedHost;
using qmevents::testing::transport;

constexpr int rounds = 5;

Ref<Object> createByCom(std::string_view progId)
{
    CLSID classId{};
    qmevents::com::ComPtr<IDispatch> object;
    const std::wstring name(progId.begin(), progId.end());
    if (SUCCEEDED(CLSIDFromProgID(name.c_str(), &classId))) {
        CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, object.outAny());
    }
    return qmevents::com::imported(object.get());
}

// The median of some runs, in nanoseconds.
double timeOf(const std::function<void()>& act)
{
    std::vector<double> times;
    for (int i = 0; i < rounds; ++i) {
        const auto start = std::chrono::steady_clock::now();
        act();
        const std::chrono::duration<double, std::nano> taken =
            std::chrono::steady_clock::now() - start;
        times.push_back(taken.count());
    }
    std::nth_element(times.begin(), times.begin() + rounds / 2, times.end());
    return times[rounds / 2];
}

struct Figures {
    double number, text, load;
};

// Nanoseconds of a read, and of loading 10,000 events out of the host's record set.
Figures measure()
{
    constexpr int reads = 100000;
    constexpr std::int32_t events = 10000;
    ScriptedHost host;
    Rows rows = eventRow(1, {{"Name", "A gala in spring"}, {"MaxCapacity", 250}});
    rows.rows.resize(events, rows.rows[0]);
    for (std::int32_t i = 0; i < events; ++i) rows.rows[static_cast<std::size_t>(i)][0] = i + 1;
    host.answer("SELECT * FROM events_event_info", std::move(rows));
    const auto event = qmevents::toObject(call(host.store(), "GetEvent", 1));
    const auto read = [&](const char* name) {
        return timeOf([&] {
                   for (int i = 0; i < reads; ++i) get(event, name);
               }) /
               reads;
    };
    return {read("MaxCapacity"), read("Name"), timeOf([&] { call(host.store(), "GetEvents"); })};
}

} // namespace

int main()
{
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    const Figures inside = measure();
    transport.makeRoot = createByCom;
    transport.release = [] {};
    if (!createByCom("QMEvents.Events")) {
        std::puts("The component is not registered.");
        return 1;
    }
    const Figures across = measure();
    std::printf("%6.1f  reading a number through COM against in-process (%.0f ns, %.0f ns)\n"
                "%6.1f  reading a text (%.0f ns, %.0f ns)\n"
                "%6.1f  loading 10,000 events through a COM record set (%.0f ms, %.0f ms)\n",
                across.number / inside.number, across.number, inside.number,
                across.text / inside.text, across.text, inside.text, across.load / inside.load,
                across.load / 1e6, inside.load / 1e6);
    CoUninitialize();
    return 0;
}
