// Calls of the add-in into a host.

#include <algorithm>

#include "automation/conversions.h"
#include "tests/com/client.h"
#include "tests/support/scripted_host.h"

namespace qmevents::com::testing {
namespace {

using qmevents::testing::Log;
using qmevents::testing::ScriptedHost;

// A double whose members are called "Member" (id 7); what it was told is kept.
struct Recorder {
    DISPID id = -9;
    WORD flags = 0;
    std::vector<VARTYPE> types; // in natural order
    std::vector<DISPID> names;
    std::function<HRESULT(DISPPARAMS&, VARIANT*, EXCEPINFO*)> act = [](auto&&...) { return S_OK; };
    ComPtr<HostDouble> object =
        hostDouble({{L"Member", 7}}, [this](DISPID called, WORD how, DISPPARAMS& parameters,
                                            VARIANT* result, EXCEPINFO* info, UINT*) {
            id = called;
            flags = how;
            types.clear();
            for (UINT i = parameters.cArgs; i-- > 0;) {
                types.push_back(V_VT(&parameters.rgvarg[i]));
            }
            names.assign(parameters.rgdispidNamedArgs,
                         parameters.rgdispidNamedArgs + parameters.cNamedArgs);
            return act(parameters, result, info);
        });
    Ref<Object> inside = imported(object.get());
};

TEST(HostObjects, AreAskedForANameOnceAndForAnUnknownOneEachTime)
{
    Recorder host;
    for (int i = 0; i < 3; ++i) call(host.inside, "Member");
    get(host.inside, "MEMBER");
    EXPECT_EQ(host.object->lookups, 1);
    for (int i = 0; i < 2; ++i) EXPECT_THROW(call(host.inside, "Other"), Error);
    EXPECT_EQ(host.object->lookups, 3) << "a host may grow the member";
    EXPECT_EQ(imported(host.object.get()), host.inside) << "one proxy for one object";
}

TEST(HostObjects, TakeArgumentsOfMethodsByReferenceAndOthersByValue)
{
    Recorder host;
    const auto other = hostDouble({}, {});
    constexpr VARTYPE byReference = VT_BYREF | VT_VARIANT;
    call(host.inside, "Member", 1, "two", imported(other.get()), Value::nothing(), Missing{});
    EXPECT_EQ(host.types,
              (std::vector<VARTYPE>{byReference, byReference, VT_DISPATCH, byReference, VT_ERROR}));
    get(host.inside, "Member", 1, Date::of(2026, 3, 7));
    EXPECT_EQ(host.types, (std::vector<VARTYPE>{VT_I4, VT_DATE}));
    EXPECT_EQ(host.flags, DISPATCH_METHOD | DISPATCH_PROPERTYGET);
    put(host.inside, "Member", "section", "key", Currency::fromUnits(3));
    EXPECT_EQ(host.types, (std::vector<VARTYPE>{VT_BSTR, VT_BSTR, VT_CY}));
    EXPECT_EQ(host.flags, DISPATCH_PROPERTYPUT);
    EXPECT_EQ(host.names, std::vector<DISPID>{DISPID_PROPERTYPUT});
}

TEST(HostObjects, GiveResultsBackThroughArguments)
{
    Recorder host;
    host.act = [](DISPPARAMS& parameters, VARIANT* result, EXCEPINFO*) {
        VARIANT* const first = V_VARIANTREF(&parameters.rgvarg[1]);
        VariantClear(first);
        V_VT(first) = VT_BSTR;
        V_BSTR(first) = SysAllocString(L"out");
        V_VT(result) = VT_BOOL;
        V_BOOL(result) = VARIANT_TRUE;
        return S_OK;
    };
    Value arguments[] = {Value(), Value("in")};
    EXPECT_TRUE(toBool(invokeNamed(host.inside, "Member", CallKind::method, arguments)));
    EXPECT_EQ(toText(arguments[0]), "out");
    EXPECT_EQ(toText(arguments[1]), "in");
}

TEST(HostObjects, TakeAnObjectByValueWhenTheyKnowNoOtherWay)
{
    Recorder host;
    std::vector<WORD> ways;
    host.act = [&](auto&&...) {
        ways.push_back(host.flags);
        return host.flags == DISPATCH_PROPERTYPUTREF ? DISP_E_MEMBERNOTFOUND : S_OK;
    };
    put(host.inside, "Member", host.inside);
    EXPECT_EQ(ways, (std::vector<WORD>{DISPATCH_PROPERTYPUTREF, DISPATCH_PROPERTYPUT}));
    put(host.inside, "Member", 5);
    EXPECT_EQ(ways.size(), 3U);
}

TEST(HostObjects, FailWithTheNumberThatScriptsWouldSee)
{
    Recorder host;
    const std::pair<HRESULT, int> results[] = {{DISP_E_MEMBERNOTFOUND, 438},
                                               {DISP_E_BADPARAMCOUNT, 450},
                                               {DISP_E_TYPEMISMATCH, 13},
                                               {DISP_E_OVERFLOW, 6},
                                               {DISP_E_PARAMNOTOPTIONAL, 449},
                                               {E_OUTOFMEMORY, 7},
                                               {E_ACCESSDENIED, 70},
                                               {RPC_E_WRONG_THREAD, RPC_E_WRONG_THREAD},
                                               {RPC_E_DISCONNECTED, RPC_E_DISCONNECTED},
                                               {E_FAIL, E_FAIL}};
    for (const auto& [result, number] : results) {
        host.act = [result = result](auto&&...) { return result; };
        try {
            call(host.inside, "Member");
            ADD_FAILURE() << std::hex << result;
        } catch (const Error& error) {
            EXPECT_EQ(error.number(), number);
            EXPECT_NE(error.description().find("(Object.Member)"), std::string::npos)
                << error.description();
        }
    }
    const struct {
        WORD code;
        SCODE scode;
        const wchar_t* description;
        int number;
        const char* told;
    } exceptions[] = {
        {1004, 0, L"plain", 1004, "plain"},
        {0, static_cast<SCODE>(0x800A0BB9), L"vbs", 3001, "vbs"},
        {0, E_NOTIMPL, L"h", 445, "h"},
        {0, static_cast<SCODE>(0x80040E14), L"sql", static_cast<int>(0x80040E14), "sql"},
        {0, 0, nullptr, 51, "Internal error (Object.Member)"}};
    for (const auto& [code, scode, description, number, told] : exceptions) {
        host.act = [c = code, s = scode, d = description](DISPPARAMS&, VARIANT*, EXCEPINFO* info) {
            info->wCode = c;
            info->scode = s;
            if (d) {
                info->bstrHelpFile = SysAllocString(d); // filled in when it is asked for
                info->pfnDeferredFillIn = [](EXCEPINFO* late) -> HRESULT {
                    late->bstrDescription = SysAllocString(late->bstrHelpFile);
                    late->bstrSource = SysAllocString(L"Host");
                    return S_OK;
                };
            }
            return DISP_E_EXCEPTION;
        };
        try {
            call(host.inside, "Member");
            ADD_FAILURE() << number;
        } catch (const Error& error) {
            EXPECT_EQ(error.number(), number);
            EXPECT_EQ(error.description(), told);
            EXPECT_EQ(error.source(), description ? "Host" : "Object");
        }
    }
}

TEST(HostObjects, WithoutAWalkAreNoCollections)
{
    Recorder host;
    host.act = [](auto&&...) { return DISP_E_MEMBERNOTFOUND; };
    try {
        host.inside->enumerate();
        ADD_FAILURE();
    } catch (const Error& error) {
        EXPECT_EQ(error.number(), 451);
    }
    EXPECT_EQ(host.id, DISPID_NEWENUM);
    const auto list = makeRef<Collection>();
    list->append("a");
    list->append("b");
    host.act = [&](DISPPARAMS&, VARIANT* result, EXCEPINFO*) {
        V_VT(result) = VT_UNKNOWN;
        V_UNKNOWN(result) = exportedWalk(list->enumerate(), {}).detach();
        return S_OK;
    };
    std::string items;
    Value item;
    for (const auto walk = host.inside->enumerate(); walk->next(item);) items += toText(item);
    EXPECT_EQ(items, "ab");
}

// The add-in in its file, with a host that answers as hosts do when they are broken.
TEST(AddIn, ReportsAHostWithoutAMemberAndOneThatFails)
{
    ScriptedHost host;
    const auto broken = qmevents::testing::puppet("Document");
    put(host.app(), "Document", broken);
    broken->on("GetDataSet", [](std::span<Value>) -> Value { throw std::runtime_error("lost"); });
    host.log.clear();
    EXPECT_TRUE(call(host.store(), "GetEvents").isNothing());
    EXPECT_EQ(host.takeLog(), Log{"ErrorUnexpected: Internal error (lost)"});
    EXPECT_FALSE(toBool(call(host.store(), "DeleteEvent", 7, false)));
    EXPECT_EQ(host.takeLog(), Log{"ErrorUnexpected: Object doesn't support this property or method "
                                  "(Document.GetLock)"});
}

} // namespace
} // namespace qmevents::com::testing
