// Values, variables and arrays on their way through the boundary.

#include "automation/conversions.h"
#include "tests/com/client.h"

namespace qmevents::com::testing {
namespace {

template <typename T>
Variant of(VARTYPE type, T content)
{
    Variant result;
    *reinterpret_cast<T*>(type == VT_DECIMAL ? static_cast<void*>(&result)
                                             : static_cast<void*>(&V_I8(&result))) = content;
    V_VT(&result) = type;
    return result;
}

DECIMAL decimalOf(const wchar_t* digits)
{
    DECIMAL result{};
    VarDecFromStr(const_cast<wchar_t*>(digits), LOCALE_INVARIANT, 0, &result);
    return result;
}

int errorOf(const std::function<void()>& act)
{
    try {
        act();
    } catch (const Error& error) {
        return error.number();
    }
    return 0;
}

// "type text" of a value.
std::string shown(const Value& value)
{
    const bool hasText = !value.isNull() && !value.isMissing() && !value.isObject();
    return typeName(value) + (hasText ? " " + toText(value) : "");
}

TEST(Values, OfEveryVariantTypeArriveInTheNarrowestKindThatHoldsThem)
{
    struct {
        Variant variant;
        const char* arrives;
    } const cases[] = {
        {Variant(), "Empty "},
        {of(VT_NULL, 0), "Null"},
        {of<SCODE>(VT_ERROR, DISP_E_PARAMNOTFOUND), "Error"},
        {of<signed char>(VT_I1, -5), "Integer -5"},
        {of<unsigned char>(VT_UI1, 250), "Integer 250"},
        {of<short>(VT_I2, -32768), "Integer -32768"},
        {of<unsigned short>(VT_UI2, 65535), "Long 65535"},
        {of<LONG>(VT_I4, -7), "Long -7"},
        {of<ULONG>(VT_UI4, 4000000000U), "Double 4000000000"},
        {of<INT>(VT_INT, 7), "Long 7"},
        {of<LONG64>(VT_I8, 12), "Long 12"},
        {of<LONG64>(VT_I8, -90071992547LL), "Double -90071992547"},
        {of<ULONG64>(VT_UI8, 5), "Long 5"},
        {of<float>(VT_R4, 0.5F), "Double 0.5"},
        {of<double>(VT_R8, 1e300), "Double 1E+300"},
        {of<LONG64>(VT_CY, 123456), "Currency 12.3456"},
        {of<double>(VT_DATE, 46088.75), "Date 3/7/2026 6:00:00 PM"},
        {of<short>(VT_BOOL, 1), "Boolean True"},
        {of<BSTR>(VT_BSTR, nullptr), "String "},
        {of(VT_DECIMAL, decimalOf(L"19.9500")), "Currency 19.95"},
        {of(VT_DECIMAL, decimalOf(L"0.00001")), "Double 1E-05"},
        {of<IDispatch*>(VT_DISPATCH, nullptr), "Nothing"},
        {of<IUnknown*>(VT_UNKNOWN, nullptr), "Nothing"},
    };
    for (const auto& [variant, arrives] : cases) {
        SCOPED_TRACE(V_VT(&variant));
        EXPECT_EQ(shown(fromVariant(variant)), arrives);
        VARIANT nested = reference(VT_VARIANT, const_cast<Variant*>(&variant));
        VARIANT twice = reference(VT_VARIANT, &nested);
        EXPECT_EQ(shown(fromVariant(twice)), arrives);
        if (V_VT(&variant) < VT_I2 || V_VT(&variant) == VT_DECIMAL) continue;
        EXPECT_EQ(
            shown(fromVariant(reference(V_VT(&variant), const_cast<LONGLONG*>(&V_I8(&variant))))),
            arrives);
    }
}

TEST(Values, ThatCannotBeCarriedAreRefused)
{
    VARIANT itself;
    itself = reference(VT_VARIANT, &itself);
    const std::pair<VARIANT, int> cases[] = {
        {of(VT_RECORD, 0).detach(), 13},
        {of(VT_VARIANT, 0).detach(), 13},
        {of(VT_VECTOR | VT_I4, 0).detach(), 13},
        {of<SCODE>(VT_ERROR, E_FAIL).detach(), 13},
        {reference<BSTR>(VT_BSTR, nullptr), 13},
        {reference<VARIANT>(VT_VARIANT, nullptr), 13},
        {itself, 13},
        {of<double>(VT_DATE, 1e9).detach(), 6},
        {reference<SAFEARRAY*>(VT_ARRAY | VT_I4, nullptr), 13}};
    for (const auto& [variant, number] : cases) {
        EXPECT_EQ(errorOf([&, v = variant] { fromVariant(v); }), number) << V_VT(&variant);
    }
}

TEST(Texts, KeepZerosAndEveryCharacterAndMendBrokenOnes)
{
    using namespace std::string_view_literals;
    const std::tuple<std::string_view, std::wstring_view, std::string_view> cases[] = {
        {""sv, L""sv, ""sv},
        {"a\0b"sv, L"a\0b"sv, "a\0b"sv},
        {"\xC3\x89lan \xE2\x82\xAC"sv, L"\u00C9lan \u20AC"sv, "\xC3\x89lan \xE2\x82\xAC"sv},
        {"\xF0\x9F\x8E\x89!"sv, L"\xD83C\xDF89!"sv, "\xF0\x9F\x8E\x89!"sv},
        {"x\xFFy"sv, L"x\xFFFDy"sv, "x\xEF\xBF\xBDy"sv},
    };
    for (const auto& [inside, outside, again] : cases) {
        const Variant variant = toVariant(Value(inside));
        EXPECT_EQ(std::wstring_view(V_BSTR(&variant), SysStringLen(V_BSTR(&variant))), outside);
        EXPECT_EQ(fromVariant(variant).text(), again);
    }
    EXPECT_EQ(utf8(L"a\xD83C"sv), "a\xEF\xBF\xBD") << "half a pair";
    EXPECT_EQ(utf8(L"\xDF89\xD83Cz"sv), "\xEF\xBF\xBD\xEF\xBF\xBDz");
}

TEST(Variables, TakeResultsInTheirOwnType)
{
    const auto assigned = [](VARTYPE type, auto start, const Value& value) {
        auto variable = start;
        assignReference(reference(type, &variable), value);
        return variable;
    };
    EXPECT_EQ(assigned(VT_I1, 'a', -3), static_cast<char>(-3));
    EXPECT_EQ(assigned(VT_UI1, static_cast<unsigned char>(0), "200"), 200);
    EXPECT_EQ(assigned(VT_I2, static_cast<short>(0), 2.5), 2);
    EXPECT_EQ(assigned(VT_I4, 0L, true), -1);
    EXPECT_EQ(assigned(VT_UI4, 0UL, 4e9), 4000000000U);
    EXPECT_EQ(assigned(VT_I8, LONG64{0}, 9e15), 9000000000000000);
    EXPECT_EQ(assigned(VT_R4, 0.0F, 0.5), 0.5F);
    EXPECT_EQ(assigned(VT_R8, 0.0, "1.25"), 1.25);
    EXPECT_EQ(assigned(VT_CY, CY{}, 12.5).int64, 125000);
    EXPECT_EQ(assigned(VT_DATE, 0.0, Date::of(2026, 3, 7)), 46088);
    EXPECT_EQ(assigned(VT_BOOL, VARIANT_FALSE, 7), VARIANT_TRUE);

    BSTR text = SysAllocString(L"old");
    assignReference(reference(VT_BSTR, &text), 42);
    EXPECT_STREQ(text, L"42");
    for (const Value& unfit : {Value(Null{}), Value(std::make_shared<Array>())}) {
        EXPECT_NE(errorOf([&] { assignReference(reference(VT_BSTR, &text), unfit); }), 0);
        EXPECT_STREQ(text, L"42") << "a failure leaves the variable as it was";
    }
    Variant outer;
    V_VT(&outer) = VT_BYREF | VT_BSTR;
    V_BSTRREF(&outer) = &text;
    assignReference(reference(VT_VARIANT, &outer), "through two references");
    EXPECT_STREQ(text, L"through two references");
    SysFreeString(text);

    short narrow = 5;
    EXPECT_EQ(errorOf([&] { assignReference(reference(VT_I2, &narrow), 70000); }), 6);
    EXPECT_EQ(errorOf([&] { assignReference(reference(VT_I2, &narrow), "five"); }), 13);
    EXPECT_EQ(narrow, 5);

    const auto mine = hostDouble({}, {});
    IDispatch* object = mine.get();
    object->AddRef();
    assignReference(reference(VT_DISPATCH, &object), Value::nothing());
    EXPECT_EQ(object, nullptr);
    assignReference(reference(VT_DISPATCH, &object), imported(mine.get()));
    EXPECT_EQ(object, mine.get());
    object->Release();
}

TEST(Arrays, KeepTheirBoundsAndTheOrderOfTheirIndices)
{
    auto array = std::make_shared<Array>();
    array->dimensions = {{1, 2}, {-1, 3}};
    for (const char* item : {"1,-1", "1,0", "1,1", "2,-1", "2,0", "2,1"}) {
        array->items.emplace_back(item);
    }
    const Variant variant = toVariant(Value(array));
    ASSERT_EQ(V_VT(&variant), VT_ARRAY | VT_VARIANT);
    LONG indices[] = {2, 0};
    Variant item;
    ASSERT_EQ(SafeArrayGetElement(V_ARRAY(&variant), indices, &item), S_OK);
    EXPECT_STREQ(V_BSTR(&item), L"2,0");

    const Value back = fromVariant(variant);
    ASSERT_EQ(back.array()->dimensions.size(), 2U);
    EXPECT_EQ(back.array()->dimensions[1].lower, -1);
    EXPECT_EQ(back.array()->items[4].text(), "2,0");

    EXPECT_TRUE(fromVariant(toVariant(Value(std::make_shared<Array>()))).array()->items.empty());
    SAFEARRAY* never = nullptr;
    EXPECT_TRUE(fromVariant(reference(VT_ARRAY | VT_I4, &never)).array()->items.empty());
    array->items.pop_back();
    EXPECT_EQ(errorOf([&] { toVariant(Value(array)); }), 51);
}

TEST(Arrays, OfTypedElementsAreReadAndReplaced)
{
    const VARTYPE types[] = {VT_UI1, VT_I2, VT_I4, VT_R8, VT_CY, VT_BSTR, VT_DECIMAL, VT_VARIANT};
    for (const VARTYPE type : types) {
        SCOPED_TRACE(type);
        SAFEARRAY* variable = SafeArrayCreateVector(type, 0, 0);
        const VARIANT argument = reference(VT_ARRAY | type, &variable);
        assignReference(argument, Array::list({1, "2", 3.0}, 5));
        const Value read = fromVariant(argument);
        EXPECT_EQ(read.array()->dimensions[0].lower, 5);
        EXPECT_EQ(toInt32(read.array()->items.at(1)), 2);

        SafeArrayLock(variable);
        EXPECT_EQ(errorOf([&] { assignReference(argument, Array::list({})); }), 10);
        SafeArrayUnlock(variable);
        SafeArrayDestroy(variable);
    }
}

} // namespace
} // namespace qmevents::com::testing
