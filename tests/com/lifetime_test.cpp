// How long things live, and on which thread.

#include "automation/conversions.h"
#include "com/apartment.h"
#include "tests/com/client.h"
#include "tests/support/scripted_host.h"

namespace qmevents::com::testing {
namespace {

using qmevents::testing::Puppet;
using qmevents::testing::puppet;
using qmevents::testing::ScriptedHost;

// A thread as hosts make them. Those of the C++ library free their variables before they destroy
// them in this environment.
HANDLE startThread(std::function<void()>& act)
{
    const auto run = [](void* what) -> DWORD {
        CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        (*static_cast<std::function<void()>*>(what))();
        CoUninitialize();
        return 0;
    };
    return CreateThread(nullptr, 0, run, &act, 0, nullptr);
}

void awaitThread(HANDLE thread)
{
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);
}

// Runs `act` on a thread with an apartment of its own.
void inAnotherApartment(std::function<void()> act) { awaitThread(startThread(act)); }

TEST(Component, CanBeUnloadedAfterTheLastReleaseThoughAppHoldsOnToIt)
{
    {
        ScriptedHost host;
        EXPECT_FALSE(canUnload());
        // What the host's App keeps of the add-in opens no circle.
        host.session["store"] = host.store();
        host.dialogValues["event"] = call(host.store(), "GetNewEvent");
        put(getObject(getObject(host.app(), "Shell"), "Dialog"), "Handler", host.commands());
    }
    EXPECT_TRUE(canUnload());
    EXPECT_EQ(ModuleUse::count, 0) << "nor does the add-in keep anything of the host's";
    CoFreeUnusedLibrariesEx(0, 0);
    EXPECT_EQ(GetModuleHandleW(L"QMEvents.dll"), nullptr);
    EXPECT_TRUE(create("QMEvents.Events")) << "it comes again when it is needed";
}

TEST(Component, StaysForFactoriesLocksAndWalks)
{
    create("QMEvents.Utils");
    EXPECT_TRUE(canUnload());
    CLSID classId{};
    CLSIDFromProgID(L"QMEvents.Events", &classId);
    ComPtr<IClassFactory> factory;
    ASSERT_EQ(CoGetClassObject(classId, CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory,
                               factory.outAny()),
              S_OK);
    EXPECT_FALSE(canUnload());
    ComPtr<IUnknown> object;
    EXPECT_EQ(factory->CreateInstance(factory.get(), IID_IUnknown, object.outAny()),
              CLASS_E_NOAGGREGATION);
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_IStream, object.outAny()), E_NOINTERFACE);
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, nullptr), E_POINTER);
    factory->LockServer(TRUE);
    ComPtr<IClassFactory> another = factory;
    factory = {};
    another->LockServer(FALSE);
    another = {};
    EXPECT_TRUE(canUnload());

    auto walk = getObject(createByCom("QMEvents.Events"), "Links")->enumerate();
    EXPECT_FALSE(canUnload());
    walk = {};
    EXPECT_TRUE(canUnload());
}

TEST(Component, ForgetsAppWithTheLastObjectThatTakesIt)
{
    const auto lateStore = ScriptedHost().store();
    try {
        call(lateStore, "UpdateEvent", call(lateStore, "GetNewEvent"));
        ADD_FAILURE() << "there is no host any more";
    } catch (const Error& error) {
        EXPECT_EQ(error.number(), 91);
        EXPECT_EQ(error.description(),
                  "Object variable not set (OnInitialize has not been called)");
    }
}

TEST(Component, StaysInitialisedUntilTheCallIsOver)
{
    auto host = std::make_unique<ScriptedHost>();
    host->answer("WHERE Id = <2:12>", qmevents::testing::eventRow(12));
    Ref<Object> workflow = createByCom("QMEvents.Workflow");
    const auto app = refCast<Puppet>(host->app());
    const auto shell = refCast<Puppet>(getObject(app, "Shell"));
    std::string told;
    const auto commands = getObject(workflow, "Events");
    call(workflow, "OnInitialize", app);
    shell->on("Navigate", [&](std::span<Value> arguments) {
        told = toText(arguments[0]);
        return Value();
    });
    // The host drops everything while the add-in is at work.
    const auto document = refCast<Puppet>(getObject(app, "Document"));
    document->on("GetLock", [&](std::span<Value>) -> Value {
        workflow = {};
        return puppet("Lock");
    });
    call(commands, "ViewEvent", 12, "", 0);
    EXPECT_EQ(told, "obsidian://events/event-details?id=12");
}

TEST(Threads, OfOthersGetARefusalAndDoNoHarm)
{
    const auto events = create("QMEvents.Events");
    const auto links = exported(getObject(imported(events.get()), "Links"));
    Invocation walked;
    invoke(links, {.id = DISPID_NEWENUM}, walked);
    const auto walk =
        ComPtr<IUnknown>(V_UNKNOWN(&walked.answer)).as<IEnumVARIANT>(IID_IEnumVARIANT);
    links->AddRef();
    inAnotherApartment([&] {
        Invocation outcome;
        invoke(links, {.id = DISPID_VALUE, .arguments = {number(1)}}, outcome);
        EXPECT_EQ(outcome.result, RPC_E_WRONG_THREAD);
        ComPtr<IErrorInfo> told;
        EXPECT_EQ(GetErrorInfo(0, told.out()), S_OK);
        EXPECT_EQ(idOf(links, L"Count"), DISPID_UNKNOWN);
        Variant item;
        EXPECT_EQ(walk->Next(1, &item, nullptr), RPC_E_WRONG_THREAD);
        EXPECT_EQ(walk->Reset(), RPC_E_WRONG_THREAD);
        links->Release(); // made up for at the next call on its own thread
    });
    EXPECT_EQ(toInt32(get(imported(links.get()), "Count")), 0);
}

TEST(Threads, WithApartmentsOfTheirOwnHaveAddInsOfTheirOwn)
{
    ScriptedHost here;
    inAnotherApartment([&] {
        ScriptedHost there;
        there.donors[1] = "There";
        call(there.store(), "GetEvents");
        EXPECT_EQ(there.log, qmevents::testing::Log{"SELECT * FROM events_event_info"});
        EXPECT_EQ(here.log.size(), 0U);
    });
    call(here.store(), "GetEvent", 5);
    EXPECT_EQ(here.log.size(), 1U);
}

TEST(Threads, AreServedThroughProxiesWhenTheyAskAsTheyShould)
{
    const auto links = exported(getObject(createByCom("QMEvents.Events"), "Links"));
    IStream* stream = nullptr;
    ASSERT_EQ(CoMarshalInterThreadInterfaceInStream(IID_IDispatch, links.get(), &stream), S_OK);
    std::int32_t count = -1;
    const DWORD mine = GetCurrentThreadId();
    std::function<void()> ask = [&] {
        ComPtr<IDispatch> proxy;
        CoGetInterfaceAndReleaseStream(stream, IID_IDispatch, proxy.outAny());
        if (proxy) count = toInt32(get(imported(proxy.get()), "Count"));
        proxy = {};
        PostThreadMessageW(mine, WM_QUIT, 0, 0);
    };
    const HANDLE other = startThread(ask);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
    awaitThread(other);
    EXPECT_EQ(count, 0);
}

// In a run of its own, as it leaves behind what nobody can release.
TEST(EndOfThread, LeavesWhatIsStillHeldAlone)
{
    ComPtr<IDispatch> left;
    for (int i = 0; i < 20; ++i) {
        inAnotherApartment([&] {
            auto* const host = new ScriptedHost;
            call(host->store(), "GetEvents");
            left = exported(host->root("Events"));
        });
        EXPECT_EQ(idOf(left, L"Links"), DISPID_UNKNOWN);
    }
    EXPECT_FALSE(canUnload()) << "someone may still hold on to it";
}

} // namespace
} // namespace qmevents::com::testing
