#include "com/variant.h"

#include <new>

#include "automation/error.h"
#include "com/bridge.h"
#include "com/text.h"
#include "com/typed_memory.h"

namespace qmevents::com {
namespace {

// Fills a VARIANT by the kind of the value that it is given.
struct Fill {
    Variant& target;

    void operator()(std::monostate) const {}
    void operator()(Null) const { V_VT(&target) = VT_NULL; }
    void operator()(Missing) const
    {
        V_VT(&target) = VT_ERROR;
        V_ERROR(&target) = DISP_E_PARAMNOTFOUND;
    }
    void operator()(bool value) const
    {
        V_VT(&target) = VT_BOOL;
        V_BOOL(&target) = value ? VARIANT_TRUE : VARIANT_FALSE;
    }
    void operator()(std::int16_t value) const
    {
        V_VT(&target) = VT_I2;
        V_I2(&target) = value;
    }
    void operator()(std::int32_t value) const
    {
        V_VT(&target) = VT_I4;
        V_I4(&target) = value;
    }
    void operator()(double value) const
    {
        V_VT(&target) = VT_R8;
        V_R8(&target) = value;
    }
    void operator()(Currency value) const
    {
        V_VT(&target) = VT_CY;
        V_CY(&target).int64 = value.scaled();
    }
    void operator()(Date value) const
    {
        V_VT(&target) = VT_DATE;
        V_DATE(&target) = value.serial();
    }
    void operator()(const std::string& value) const
    {
        V_BSTR(&target) = Bstr(value).detach();
        V_VT(&target) = VT_BSTR;
    }
    void operator()(const Ref<Object>& value) const
    {
        if (auto walk = refCast<Enumerator>(value)) {
            V_UNKNOWN(&target) = exportedWalk(std::move(walk), {}).detach();
            V_VT(&target) = VT_UNKNOWN;
        } else {
            V_DISPATCH(&target) = exported(value).detach();
            V_VT(&target) = VT_DISPATCH;
        }
    }
    // Scripts understand no other arrays than those of variants.
    void operator()(const std::shared_ptr<Array>& value) const
    {
        V_ARRAY(&target) = toSafeArray(value ? *value : Array(), VT_VARIANT);
        V_VT(&target) = VT_ARRAY | VT_VARIANT;
    }
};

struct Same {
    bool operator()(Date a, Date b) const { return a.serial() == b.serial(); }
    template <typename T>
    bool operator()(const T& a, const T& b) const
    {
        if constexpr (std::is_empty_v<T>)
            return true;
        else
            return a == b;
    }
    template <typename T, typename U>
    bool operator()(const T&, const U&) const
    {
        return false;
    }
};

} // namespace

Variant toVariant(const Value& value)
{
    Variant result;
    std::visit(Fill{result}, value.storage());
    return result;
}

Value fromVariant(const VARIANT& variant, std::string_view label)
{
    return readVariant(variant, label, 0);
}

Value readVariant(const VARIANT& variant, std::string_view label, int depth)
{
    if (depth > deepestNesting) throwNotCarried("it is nested without end");
    const VARTYPE type = V_VT(&variant);
    const bool byReference = (type & VT_BYREF) != 0;
    if (byReference && !V_BYREF(&variant)) throwNotCarried("it refers to nothing");
    const auto plain = static_cast<VARTYPE>(type & ~(VT_BYREF | VT_ARRAY));
    if (type & VT_ARRAY) {
        SAFEARRAY* const array = byReference ? *V_ARRAYREF(&variant) : V_ARRAY(&variant);
        return fromSafeArray(array, plain, depth);
    }
    if (byReference) return readAt(plain, V_BYREF(&variant), label, depth);
    if (plain == VT_EMPTY) return {};
    if (plain == VT_NULL) return Null{};
    if (plain == VT_VARIANT) throwNotCarried("a variant holds another only by reference");
    if (plain == VT_DECIMAL) return readAt(plain, &V_DECIMAL(&variant), label, depth);
    return readAt(plain, &V_I8(&variant), label, depth);
}

void assignReference(const VARIANT& target, const Value& value)
{
    const VARTYPE type = V_VT(&target);
    if (!(type & VT_BYREF) || !V_BYREF(&target)) throwNotCarried("it is no variable");
    const auto plain = static_cast<VARTYPE>(type & ~(VT_BYREF | VT_ARRAY));
    if (!(type & VT_ARRAY)) return writeAt(plain, V_BYREF(&target), value);

    if (!value.is(ValueKind::array)) throwNotCarried("the variable holds an array");
    SAFEARRAY** const variable = V_ARRAYREF(&target);
    SAFEARRAY* const fresh = toSafeArray(value.array() ? *value.array() : Array(), plain);
    // An array that someone is reading cannot be replaced.
    if (const HRESULT result = *variable ? SafeArrayDestroy(*variable) : S_OK; FAILED(result)) {
        SafeArrayDestroy(fresh);
        throw Error(10, "QMEvents", "The array is locked by its owner");
    }
    *variable = fresh;
}

bool sameValue(const Value& a, const Value& b)
{
    return std::visit(Same{}, a.storage(), b.storage());
}

} // namespace qmevents::com
