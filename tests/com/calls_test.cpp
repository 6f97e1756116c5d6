// Calls of a host into the add-in.

#include "tests/com/client.h"
#include "tests/support/scripted_host.h"

namespace qmevents::com::testing {
namespace {

using qmevents::testing::puppet;
using qmevents::testing::ScriptedHost;

class Calls : public ::testing::Test {
protected:
    Calls()
    {
        for (const wchar_t* title : {L"first", L"second", L"third"}) {
            const auto link = newLink(title);
            add(link, title);
        }
    }
    ComPtr<IDispatch> objectFrom(const ComPtr<IDispatch>& object, const wchar_t* member)
    {
        Invocation got;
        invoke(object, {.id = idOf(object, member)}, got);
        EXPECT_EQ(got.result, S_OK) << got.description();
        return ComPtr<IDispatch>(V_DISPATCH(&got.answer));
    }
    ComPtr<IDispatch> newLink(const wchar_t* title)
    {
        auto link = objectFrom(events, L"GetNewLink");
        Invocation set;
        invoke(link,
               {idOf(link, L"Title"), DISPATCH_PROPERTYPUT, {text(title)}, {DISPID_PROPERTYPUT}},
               set);
        EXPECT_EQ(set.result, S_OK);
        return link;
    }
    void add(const ComPtr<IDispatch>& item, const wchar_t* key)
    {
        Invocation added;
        invoke(links, {.id = idOf(links, L"Add"), .arguments = {dispatchOf(item.get()), text(key)}},
               added);
        EXPECT_EQ(added.result, S_OK) << added.description();
    }
    std::string titleOf(IDispatch* link)
    {
        const ComPtr<IDispatch> held(link);
        Invocation title;
        invoke(held, {.id = idOf(held, L"TITLE")}, title);
        return V_VT(&title.answer) == VT_BSTR ? utf8(V_BSTR(&title.answer)) : "no text";
    }

    ComPtr<IDispatch> events = create("QMEvents.Events");
    ComPtr<IDispatch> links = objectFrom(events, L"Links");
};

TEST_F(Calls, FindNamesOfMembersAndArgumentsWhateverTheirCase)
{
    const wchar_t* names[] = {L"ADD", L"key", L"Item", L"Colour"};
    DISPID ids[4] = {};
    const auto look = [&](UINT count) {
        return links->GetIDsOfNames(IID_NULL, const_cast<LPOLESTR*>(names), count, 0, ids);
    };
    EXPECT_EQ(look(3), S_OK);
    EXPECT_EQ((std::vector<DISPID>{ids[1], ids[2]}), (std::vector<DISPID>{1, 0}));
    EXPECT_EQ(look(4), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(ids[3], DISPID_UNKNOWN);
    EXPECT_EQ(idOf(links, L"Item"), DISPID_VALUE);
    EXPECT_EQ(idOf(links, L"NewEnum"), DISPID_NEWENUM);
    EXPECT_EQ(idOf(links, L"Nowhere"), DISPID_UNKNOWN);
    names[0] = nullptr;
    EXPECT_EQ(look(1), E_INVALIDARG);
    EXPECT_EQ(look(0), E_INVALIDARG);
    EXPECT_EQ(links->GetIDsOfNames(IID_IUnknown, const_cast<LPOLESTR*>(names), 1, 0, ids),
              DISP_E_UNKNOWNINTERFACE);
    EXPECT_EQ(links->GetIDsOfNames(IID_NULL, nullptr, 1, 0, ids), E_INVALIDARG);
}

TEST_F(Calls, TakeNamedArgumentsInAnyOrder)
{
    const DISPID add = idOf(links, L"Add");
    const auto link = newLink(L"named");
    Invocation outcome;
    invoke(links, {add, DISPATCH_METHOD, {text(L"key"), dispatchOf(link.get())}, {1, 0}}, outcome);
    EXPECT_EQ(outcome.result, S_OK) << outcome.description();
    const struct {
        std::vector<VARIANT> arguments;
        std::vector<DISPID> names;
        HRESULT result;
        UINT argument;
    } bad[] = {{{dispatchOf(link.get()), text(L"k")}, {7}, DISP_E_PARAMNOTFOUND, 0},
               {{dispatchOf(link.get()), text(L"k")}, {0}, DISP_E_PARAMNOTFOUND, 0},
               {{dispatchOf(link.get()), text(L"k")}, {-5}, DISP_E_PARAMNOTFOUND, 0},
               {{dispatchOf(link.get()), text(L"k"), text(L"l")}, {1, 1}, DISP_E_PARAMNOTFOUND, 1},
               {{text(L"k")}, {1}, DISP_E_EXCEPTION, 99}}; // the item is left out
    for (const auto& [arguments, names, result, argument] : bad) {
        Invocation refused;
        invoke(links, {add, DISPATCH_METHOD, arguments, names}, refused);
        EXPECT_EQ(refused.result, result);
        EXPECT_EQ(refused.argument, argument);
    }
}

TEST_F(Calls, ReachTheDefaultMemberAndTheWalkByTheirReservedIds)
{
    Invocation second;
    invoke(links, {.arguments = {number(2)}}, second);
    EXPECT_EQ(titleOf(V_DISPATCH(&second.answer)), "second");
    Invocation third;
    invoke(events, {.id = idOf(events, L"Links"), .arguments = {text(L"third")}}, third);
    EXPECT_EQ(third.result, DISP_E_EXCEPTION) << "a method's result is no property to be indexed";

    Invocation got;
    invoke(links, {.id = DISPID_NEWENUM}, got);
    ASSERT_EQ(V_VT(&got.answer), VT_UNKNOWN);
    const auto walk = ComPtr<IUnknown>(V_UNKNOWN(&got.answer)).as<IEnumVARIANT>(IID_IEnumVARIANT);
    const auto next = [&](IEnumVARIANT* from) {
        Variant item;
        ULONG count = 9;
        const HRESULT result = from->Next(1, &item, &count);
        EXPECT_EQ(count, result == S_OK ? 1U : 0U);
        return result == S_OK ? titleOf(V_DISPATCH(&item)) : "end";
    };
    EXPECT_EQ(next(walk.get()), "first");
    ComPtr<IEnumVARIANT> copy;
    ASSERT_EQ(walk->Clone(copy.out()), S_OK);
    EXPECT_EQ(walk->Skip(1), S_OK);
    EXPECT_EQ(next(walk.get()), "third");
    EXPECT_EQ(next(walk.get()), "end");
    EXPECT_EQ(walk->Skip(1), S_FALSE);
    EXPECT_EQ(next(copy.get()), "second");
    ASSERT_EQ(walk->Reset(), S_OK);
    Variant items[5];
    ULONG count = 0;
    EXPECT_EQ(walk->Next(5, items, &count), S_FALSE);
    EXPECT_EQ(count, 3U);
    EXPECT_EQ(walk->Next(1, nullptr, nullptr), E_INVALIDARG);
    EXPECT_EQ(walk->Next(2, items, nullptr), E_INVALIDARG);
    EXPECT_EQ(walk->Clone(nullptr), E_POINTER);
}

TEST_F(Calls, KeepTheIdentityOfObjectsOfBothSides)
{
    Invocation once, again;
    invoke(links, {.arguments = {text(L"first")}}, once);
    invoke(links, {.arguments = {number(1)}}, again);
    EXPECT_EQ(V_DISPATCH(&once.answer), V_DISPATCH(&again.answer));
    const ComPtr<IDispatch> link(V_DISPATCH(&once.answer));
    EXPECT_EQ(link.as<IUnknown>(IID_IUnknown).get(),
              link.as<ISupportErrorInfo>(IID_ISupportErrorInfo).as<IUnknown>(IID_IUnknown).get());

    const int before = HostDouble::alive;
    {
        const auto mine = hostDouble({}, {});
        add(ComPtr<IDispatch>(mine.get()), L"mine");
        Invocation back;
        invoke(links, {.arguments = {text(L"mine")}}, back);
        EXPECT_EQ(V_DISPATCH(&back.answer), mine.get()) << "a host's object is never wrapped";
    }
    EXPECT_EQ(HostDouble::alive, before + 1) << "the collection holds it";
    Invocation removed;
    invoke(links, {.id = idOf(links, L"Remove"), .arguments = {text(L"mine")}}, removed);
    EXPECT_EQ(HostDouble::alive, before);
}

TEST_F(Calls, ThatMakeNoSenseAreRefusedWithTheReason)
{
    const DISPID add = idOf(links, L"Add");
    VARIANT some[] = {number(1), number(2)};
    VARIANT record;
    V_VT(&record) = VT_RECORD;
    VARIANT itself;
    itself = reference(VT_VARIANT, &itself);
    VARIANT wrong[] = {record, itself, reference<BSTR>(VT_BSTR, nullptr)};
    DISPID keyId = 1;
    const struct {
        const char* what;
        DISPID id;
        WORD flags;
        DISPPARAMS parameters;
        HRESULT result;
    } cases[] = {
        {"unknown member", 999, DISPATCH_METHOD, {}, DISP_E_MEMBERNOTFOUND},
        {"no kind of call", add, 0, {}, E_INVALIDARG},
        {"nothing to assign", add, DISPATCH_PROPERTYPUT, {}, DISP_E_PARAMNOTOPTIONAL},
        {"no arguments behind the count",
         add,
         DISPATCH_METHOD,
         {nullptr, nullptr, 2, 0},
         E_INVALIDARG},
        {"no names behind the count", add, DISPATCH_METHOD, {some, nullptr, 2, 1}, E_INVALIDARG},
        {"more names than arguments",
         add,
         DISPATCH_METHOD,
         {some, &keyId, 0, 1},
         DISP_E_BADPARAMCOUNT},
        {"an absurd count",
         add,
         DISPATCH_METHOD,
         {some, nullptr, 0xFFFFFFFF, 0},
         DISP_E_BADPARAMCOUNT},
        {"a record", add, DISPATCH_METHOD, {&wrong[0], nullptr, 1, 0}, DISP_E_TYPEMISMATCH},
        {"a variant that holds itself",
         add,
         DISPATCH_METHOD,
         {&wrong[1], nullptr, 1, 0},
         DISP_E_TYPEMISMATCH},
        {"a reference to nothing",
         add,
         DISPATCH_METHOD,
         {&wrong[2], nullptr, 1, 0},
         DISP_E_TYPEMISMATCH},
    };
    for (const auto& [what, id, flags, parameters, result] : cases) {
        SCOPED_TRACE(what);
        DISPPARAMS given = parameters;
        UINT argument = 99;
        SetErrorInfo(0, nullptr);
        EXPECT_EQ(links->Invoke(id, IID_NULL, 0, flags, &given, nullptr, nullptr, &argument),
                  result);
        EXPECT_EQ(argument == 0, result == DISP_E_TYPEMISMATCH || result == E_INVALIDARG ||
                                     result == DISP_E_BADPARAMCOUNT ||
                                     result == DISP_E_PARAMNOTOPTIONAL);
        ComPtr<IErrorInfo> told;
        Bstr description;
        ASSERT_EQ(GetErrorInfo(0, told.out()), S_OK);
        told->GetDescription(description.out());
        EXPECT_FALSE(utf8(description.get()).empty());
    }
    EXPECT_EQ(links->Invoke(add, IID_NULL, 0, DISPATCH_METHOD, nullptr, nullptr, nullptr, nullptr),
              E_INVALIDARG);
    DISPPARAMS none{};
    EXPECT_EQ(links->Invoke(add, IID_IUnknown, 0, 1, &none, nullptr, nullptr, nullptr),
              DISP_E_UNKNOWNINTERFACE);
    EXPECT_EQ(links->Invoke(add, IID_NULL, 0, 1, &none, nullptr, nullptr, nullptr),
              DISP_E_EXCEPTION)
        << "a caller that takes no EXCEPINFO gets none";
    EXPECT_EQ(links->QueryInterface(IID_IDispatch, nullptr), E_POINTER);
    EXPECT_EQ(links->GetTypeInfoCount(nullptr), E_POINTER);
    EXPECT_EQ(links->GetTypeInfo(0, 0, nullptr), E_POINTER);
    ComPtr<ITypeInfo> info;
    EXPECT_EQ(links->GetTypeInfo(1, 0, info.out()), DISP_E_BADINDEX);
}

TEST_F(Calls, TellTheFailuresOfMembers)
{
    const struct {
        const wchar_t* member;
        WORD flags;
        std::vector<VARIANT> arguments;
        int number;
        const char* description;
    } cases[] = {
        {L"Item",
         DISPATCH_PROPERTYGET,
         {number(99)},
         9,
         "Subscript out of range (position 99 of 3)"},
        {L"Item", DISPATCH_PROPERTYGET, {text(L"none")}, 5, "no item has the key none"},
        {L"Item",
         DISPATCH_PROPERTYGET,
         {number(1), number(2)},
         450,
         "Wrong number of arguments (Collection.Item)"},
        {L"Item",
         DISPATCH_PROPERTYGET,
         {missing()},
         449,
         "Argument not optional (Index of Collection.Item)"},
        {L"Count",
         DISPATCH_PROPERTYPUT,
         {number(1)},
         383,
         "Property is read-only (Collection.Count)"},
        {L"Add",
         DISPATCH_METHOD,
         {number(1), text(L"first")},
         457,
         "This key is already associated with an element of this collection (first)"},
    };
    for (const auto& [member, flags, arguments, number, description] : cases) {
        SCOPED_TRACE(number);
        Invocation failed;
        invoke(links, {idOf(links, member), flags, arguments}, failed);
        EXPECT_EQ(failed.result, DISP_E_EXCEPTION);
        EXPECT_EQ(static_cast<DWORD>(failed.info.scode), 0x800A0000U + static_cast<DWORD>(number));
        EXPECT_EQ(utf8(failed.info.bstrSource), "QMEvents");
        EXPECT_NE(failed.description().find(description), std::string::npos)
            << failed.description();
    }
}

TEST_F(Calls, AreTypedByTheLibraryInTheFile)
{
    ComPtr<ITypeInfo> info;
    ASSERT_EQ(links->GetTypeInfo(0, 0, info.out()), S_OK);
    DISPID id = 0;
    LPOLESTR name = const_cast<wchar_t*>(L"Item");
    EXPECT_EQ(info->GetIDsOfNames(&name, 1, &id), S_OK);
    EXPECT_EQ(id, idOf(links, L"Item"));
    ComPtr<ITypeInfo> classInfo;
    const auto provider = events.as<IProvideClassInfo>(IID_IProvideClassInfo);
    ASSERT_EQ(provider->GetClassInfo(classInfo.out()), S_OK);
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(classInfo->GetTypeAttr(&attributes), S_OK);
    EXPECT_EQ(attributes->typekind, TKIND_COCLASS);
    classInfo->ReleaseTypeAttr(attributes);
}

TEST(Results, GoBackIntoVariablesOfTheirType)
{
    ScriptedHost host;
    host.answer("WHERE Id = <2:12>", qmevents::testing::eventRow(12, {{"Name", "Gala"}}));
    const auto store = exported(host.store());
    const DISPID judge = idOf(store, L"IsValidEventAction");
    BSTR reason = SysAllocString(L"old");
    IDispatch* event = nullptr;
    const auto ask = [&](LONG eventId, VARIANT message, VARIANT record) {
        Invocation outcome;
        invoke(store, {.id = judge, .arguments = {number(eventId), number(4), message, record}},
               outcome);
        EXPECT_EQ(outcome.result, S_OK) << outcome.description();
        return V_BOOL(&outcome.answer) != VARIANT_FALSE;
    };
    EXPECT_FALSE(ask(99, reference(VT_BSTR, &reason), reference(VT_DISPATCH, &event)));
    EXPECT_EQ(utf8(reason), "The request to Delete the event is no longer valid.</br></br>The "
                            "event no longer exists.");
    EXPECT_TRUE(ask(12, reference(VT_BSTR, &reason), reference(VT_DISPATCH, &event)));
    ASSERT_TRUE(event);
    EXPECT_EQ(toText(get(imported(event), "Name")), "Gala");

    Variant variable; // as scripts pass theirs
    EXPECT_TRUE(ask(12, missing(), reference(VT_VARIANT, &variable)));
    EXPECT_EQ(V_VT(&variable), VT_DISPATCH);
    short number = 7;
    Invocation unfit;
    invoke(store,
           {.id = judge,
            .arguments = {testing::number(99), testing::number(4), reference(VT_I2, &number)}},
           unfit);
    EXPECT_EQ(unfit.result, DISP_E_TYPEMISMATCH) << "the reason is no number";
    EXPECT_EQ(unfit.argument, 0U);
    EXPECT_EQ(number, 7);
    event->Release();
    SysFreeString(reason);
}

// The adaptors of this program, so that its memory can run out.
TEST(Memory, ThatRunsOutIsAResultAndNoCrash)
{
    const auto teller = puppet("Teller");
    teller->holds("Words", "many words");
    teller->on("Fail", [](std::span<Value>) -> Value { throw Error(1, "source", "text"); });
    const auto object = exported(teller);
    const auto listener = hostDouble({{L"Hear", 1}}, [](auto&&...) { return S_OK; });
    const Ref<Object> hearer = imported(listener.get());
    hearer->memberId("Hear");
    const DISPID words = idOf(object, L"Words");
    const DISPID fail = idOf(object, L"Fail");

    allocateText = [](const OLECHAR*, UINT) -> BSTR { return nullptr; };
    Invocation outcome;
    invoke(object, {.id = words}, outcome);
    int number = 0;
    Value spoken[] = {"words"};
    try {
        hearer->invoke(1, CallKind::method, spoken);
    } catch (const Error& error) {
        number = error.number();
    }
    Invocation failed;
    invoke(object, {.id = fail}, failed);
    allocateText = SysAllocStringLen;
    EXPECT_EQ(outcome.result, E_OUTOFMEMORY);
    EXPECT_EQ(V_VT(&outcome.answer), VT_EMPTY);
    EXPECT_EQ(number, 7);
    EXPECT_EQ(failed.result, DISP_E_EXCEPTION) << "the failure is worth more than its text";
}

} // namespace
} // namespace qmevents::com::testing
