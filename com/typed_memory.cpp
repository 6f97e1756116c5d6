#include "com/typed_memory.h"

#include <cmath>
#include <limits>
#include <new>

#include "automation/conversions.h"
#include "automation/error.h"
#include "com/bridge.h"
#include "com/text.h"
#include "com/variant.h"

namespace qmevents::com {
namespace {

template <typename T>
const T& at(const void* where)
{
    return *static_cast<const T*>(where);
}

// An integer of any width in the narrowest kind of ours that holds it.
template <typename T>
Value integer(T value)
{
    if constexpr (sizeof(T) < sizeof(std::int16_t) || std::is_same_v<T, std::int16_t>) {
        return static_cast<std::int16_t>(value);
    } else {
        const bool fits = std::in_range<std::int32_t>(value);
        return fits ? Value(static_cast<std::int32_t>(value)) : Value(static_cast<double>(value));
    }
}

// Amounts arrive as decimals where a database keeps them so: exact ones stay exact.
Value decimal(DECIMAL value)
{
    CY amount{};
    DECIMAL again{};
    if (SUCCEEDED(VarCyFromDec(&value, &amount)) && SUCCEEDED(VarDecFromCy(amount, &again)) &&
        VarDecCmp(&value, &again) == static_cast<HRESULT>(VARCMP_EQ)) {
        return Currency::fromScaled(amount.int64);
    }
    double real = 0;
    checkConversion(VarR8FromDec(&value, &real));
    return real;
}

Value unknown(IUnknown* object, std::string_view label)
{
    if (!object) return Value::nothing();
    const auto dispatch = ComPtr<IUnknown>(object).as<IDispatch>(IID_IDispatch);
    if (!dispatch) throwNotCarried("the object cannot be called by name");
    return imported(dispatch.get(), label);
}

template <typename T>
T narrowed(const Value& value)
{
    const std::int32_t number = toInt32(value);
    if (!std::in_range<T>(number)) throw Error(ErrorNumber::overflow);
    return static_cast<T>(number);
}

template <typename T>
void assign(void* where, T value)
{
    *static_cast<T*>(where) = value;
}

template <typename T>
void assignBy(HRESULT(WINAPI* convert)(double, T*), void* where, const Value& value)
{
    T converted{};
    checkConversion(convert(toDouble(value), &converted));
    assign(where, converted);
}

template <typename T>
void assignObject(void* where, ComPtr<T> object)
{
    auto& variable = *static_cast<T**>(where);
    // Released last: that may run anything.
    const auto old = ComPtr<T>::adopt(variable);
    variable = object.detach();
}

void assignDecimal(void* where, const Value& value)
{
    DECIMAL converted{};
    if (value.is(ValueKind::currency)) {
        CY amount{};
        amount.int64 = value.as<Currency>().scaled();
        checkConversion(VarDecFromCy(amount, &converted));
    } else {
        checkConversion(VarDecFromR8(toDouble(value), &converted));
    }
    assign(where, converted);
}

void assignVariant(VARIANT& variable, const Value& value)
{
    if (V_VT(&variable) & VT_BYREF) return assignReference(variable, value);
    Variant fresh = toVariant(value);
    std::swap(static_cast<VARIANT&>(fresh), variable);
}

} // namespace

void throwNotCarried(std::string_view why) { throw Error::with(ErrorNumber::typeMismatch, why); }

void checkConversion(HRESULT result)
{
    if (result == E_OUTOFMEMORY) throw std::bad_alloc();
    if (result == DISP_E_OVERFLOW) throw Error(ErrorNumber::overflow);
    if (FAILED(result)) throw Error(ErrorNumber::typeMismatch);
}

Value readAt(VARTYPE type, const void* where, std::string_view label, int depth)
{
    switch (type) {
    case VT_I1:
        return integer(at<signed char>(where));
    case VT_UI1:
        return integer(at<unsigned char>(where));
    case VT_I2:
        return at<std::int16_t>(where);
    case VT_UI2:
        return integer(at<std::uint16_t>(where));
    case VT_I4:
    case VT_INT:
        return at<std::int32_t>(where);
    case VT_UI4:
    case VT_UINT:
        return integer(at<std::uint32_t>(where));
    case VT_I8:
        return integer(at<std::int64_t>(where));
    case VT_UI8:
        return integer(at<std::uint64_t>(where));
    case VT_R4:
        return static_cast<double>(at<float>(where));
    case VT_R8:
        return at<double>(where);
    case VT_CY:
        return Currency::fromScaled(at<CY>(where).int64);
    case VT_DATE:
        return Date::fromSerial(at<double>(where));
    case VT_BOOL:
        return at<VARIANT_BOOL>(where) != VARIANT_FALSE;
    case VT_BSTR:
        return utf8(at<BSTR>(where));
    case VT_DECIMAL:
        return decimal(at<DECIMAL>(where));
    case VT_DISPATCH:
        return imported(at<IDispatch*>(where), label);
    case VT_UNKNOWN:
        return unknown(at<IUnknown*>(where), label);
    case VT_VARIANT:
        return readVariant(at<VARIANT>(where), label, depth + 1);
    case VT_ERROR:
        if (at<SCODE>(where) == DISP_E_PARAMNOTFOUND) return Missing{};
        throwNotCarried("an error value stands for no value");
    default:
        throwNotCarried("values of variant type " + std::to_string(type) + " cannot be carried");
    }
}

void writeAt(VARTYPE type, void* where, const Value& value)
{
    switch (type) {
    case VT_I1:
        return assign(where, narrowed<signed char>(value));
    case VT_UI1:
        return assign(where, narrowed<unsigned char>(value));
    case VT_I2:
        return assign(where, toInt16(value));
    case VT_UI2:
        return assign(where, narrowed<std::uint16_t>(value));
    case VT_I4:
    case VT_INT:
        return assign(where, toInt32(value));
    case VT_UI4:
    case VT_UINT:
        return assignBy<ULONG>(VarUI4FromR8, where, value);
    case VT_I8:
        return assignBy<LONG64>(VarI8FromR8, where, value);
    case VT_UI8:
        return assignBy<ULONG64>(VarUI8FromR8, where, value);
    case VT_R4:
        return assignBy<FLOAT>(VarR4FromR8, where, value);
    case VT_R8:
        return assign(where, toDouble(value));
    case VT_CY:
        return assign(where, toCurrency(value).scaled());
    case VT_DATE:
        return assign(where, toDate(value).serial());
    case VT_BOOL:
        return assign<VARIANT_BOOL>(where, toBool(value) ? VARIANT_TRUE : VARIANT_FALSE);
    case VT_BSTR: {
        Bstr fresh(toText(value));
        SysFreeString(std::exchange(*static_cast<BSTR*>(where), fresh.detach()));
        return;
    }
    case VT_DECIMAL:
        return assignDecimal(where, value);
    case VT_DISPATCH:
        return assignObject(where, exported(toObject(value)));
    case VT_UNKNOWN:
        return assignObject(where, exported(toObject(value)).template as<IUnknown>(IID_IUnknown));
    case VT_VARIANT:
        return assignVariant(*static_cast<VARIANT*>(where), value);
    case VT_ERROR:
        if (!value.isMissing()) throwNotCarried("the variable holds an error value");
        return assign(where, static_cast<SCODE>(DISP_E_PARAMNOTFOUND));
    default:
        throwNotCarried("variables of variant type " + std::to_string(type) + " cannot be set");
    }
}

} // namespace qmevents::com
