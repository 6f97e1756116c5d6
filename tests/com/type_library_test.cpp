// The type library says of every class what its member table says.

#include <set>

#include "core/root_objects.h"
#include "tests/com/client.h"

namespace qmevents::com::testing {
namespace {

ComPtr<ITypeLib> typeLibrary()
{
    ComPtr<ITypeInfo> info;
    ComPtr<ITypeLib> library;
    UINT index = 0;
    const auto events = create("QMEvents.Events");
    if (!events || FAILED(events->GetTypeInfo(0, LOCALE_NEUTRAL, info.out()))) return {};
    info->GetContainingTypeLib(library.out(), &index);
    return library;
}

std::string taken(BSTR text)
{
    const std::string result = text ? utf8(text) : "";
    SysFreeString(text);
    return result;
}

ComPtr<ITypeInfo> typeNamed(ITypeLib* library, const std::string& name)
{
    ComPtr<ITypeInfo> info;
    for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
        BSTR candidate = nullptr;
        library->GetDocumentation(static_cast<INT>(i), &candidate, nullptr, nullptr, nullptr);
        if (taken(candidate) == name) library->GetTypeInfo(i, info.out());
    }
    return info;
}

// One function of a dispatch interface as text: "3 get Name(Index, [Other]) - what it is".
std::string shown(ITypeInfo* info, UINT index)
{
    FUNCDESC* function = nullptr;
    if (FAILED(info->GetFuncDesc(index, &function))) return "unreadable";
    BSTR names[32] = {};
    UINT count = 0;
    info->GetNames(function->memid, names, 32, &count);
    BSTR help = nullptr;
    info->GetDocumentation(function->memid, nullptr, &help, nullptr, nullptr);
    const bool assigns = (function->invkind & (INVOKE_PROPERTYPUT | INVOKE_PROPERTYPUTREF)) != 0;
    std::string text = std::to_string(function->memid) +
                       (function->invkind == INVOKE_FUNC          ? " call "
                        : function->invkind == INVOKE_PROPERTYGET ? " get "
                                                                  : " put ") +
                       taken(names[0]) + "(";
    const int parameters = function->cParams - (assigns ? 1 : 0);
    for (int i = 0; i < parameters; ++i) {
        const auto& parameter = function->lprgelemdescParam[i];
        const bool optional = (parameter.paramdesc.wParamFlags & PARAMFLAG_FOPT) != 0;
        const bool byReference = (parameter.paramdesc.wParamFlags & PARAMFLAG_FOUT) != 0;
        text += (i == 0 ? "" : ", ") + std::string(optional ? "[" : "") +
                (byReference ? "ByRef " : "") + taken(names[i + 1]) + (optional ? "]" : "");
    }
    if (assigns && count == static_cast<UINT>(parameters) + 2) SysFreeString(names[parameters + 1]);
    info->ReleaseFuncDesc(function);
    return text + ") - " + taken(help);
}

std::string shown(const Member& member, const char* access)
{
    std::string text = std::to_string(member.id) + access + member.name + "(";
    for (const auto& parameter : member.parameters) {
        text += (&parameter == member.parameters.data() ? "" : ", ") +
                std::string(parameter.optional ? "[" : "") +
                (parameter.byReference ? "ByRef " : "") + parameter.name +
                (parameter.optional ? "]" : "");
    }
    return text + ") - " + member.documentation;
}

// Slot by slot; what can be assigned a value and an object has a slot for each.
std::vector<std::string> slotsOf(const Members& members)
{
    std::vector<std::string> slots;
    for (const auto& member : members.all()) {
        slots.push_back(shown(member, member.isMethod ? " call " : " get "));
        const bool takesObjects = member.type.tag == MemberType::Tag::object ||
                                  member.type.tag == MemberType::Tag::variant;
        if (member.isMethod || !member.put || member.storeOnly) continue;
        slots.push_back(shown(member, " put "));
        if (takesObjects) slots.push_back(shown(member, " put "));
    }
    return slots;
}

TEST(TypeLibrary, DescribesEveryClassSlotBySlot)
{
    const auto library = typeLibrary();
    ASSERT_TRUE(library);
    ASSERT_GT(publicClasses().size(), 50U);
    for (const Members* members : publicClasses()) {
        SCOPED_TRACE(members->className());
        EXPECT_TRUE(typeNamed(library.get(), members->className())) << "the class itself";
        const auto info = typeNamed(library.get(), "_" + members->className());
        ASSERT_TRUE(info);
        TYPEATTR* attributes = nullptr;
        ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
        EXPECT_EQ(attributes->typekind, TKIND_DISPATCH);
        const UINT count = attributes->cFuncs;
        info->ReleaseTypeAttr(attributes);
        std::vector<std::string> described;
        for (UINT i = 0; i < count; ++i) described.push_back(shown(info.get(), i));
        EXPECT_EQ(described, slotsOf(*members));
    }
}

TEST(TypeLibrary, NamesTheComponentAndItsEnumerations)
{
    const auto library = typeLibrary();
    ASSERT_TRUE(library);
    BSTR name = nullptr;
    library->GetDocumentation(-1, &name, nullptr, nullptr, nullptr);
    EXPECT_EQ(taken(name), "QMEvents");
    for (const auto& enumeration : publicEnumerations()) {
        SCOPED_TRACE(enumeration.name);
        const auto info = typeNamed(library.get(), std::string(enumeration.name));
        ASSERT_TRUE(info);
        for (UINT i = 0; i < enumeration.values.size(); ++i) {
            VARDESC* value = nullptr;
            ASSERT_EQ(info->GetVarDesc(i, &value), S_OK);
            BSTR valueName = nullptr;
            UINT count = 0;
            info->GetNames(value->memid, &valueName, 1, &count);
            EXPECT_EQ(taken(valueName), enumeration.values[i].first);
            EXPECT_EQ(V_I4(value->lpvarValue), enumeration.values[i].second);
            info->ReleaseVarDesc(value);
        }
    }
}

TEST(TypeLibrary, GivesEveryInterfaceAnIdOfItsOwn)
{
    const auto library = typeLibrary();
    ASSERT_TRUE(library);
    std::set<std::string> ids;
    const UINT count = library->GetTypeInfoCount();
    for (UINT i = 0; i < count; ++i) {
        ComPtr<ITypeInfo> info;
        TYPEATTR* attributes = nullptr;
        ASSERT_EQ(library->GetTypeInfo(i, info.out()), S_OK);
        ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
        wchar_t text[64] = {};
        StringFromGUID2(attributes->guid, text, 64);
        ids.insert(utf8(std::wstring_view(text)));
        info->ReleaseTypeAttr(attributes);
    }
    EXPECT_EQ(ids.size(), count);
}

} // namespace
} // namespace qmevents::com::testing
