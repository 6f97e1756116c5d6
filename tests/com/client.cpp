#include "tests/com/client.h"

#include "com/guid.h"

namespace qmevents::com::testing {

ComPtr<IDispatch> create(std::string_view progId)
{
    CLSID classId{};
    ComPtr<IDispatch> object;
    if (FAILED(CLSIDFromProgID(wide(progId).c_str(), &classId))) return {};
    CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, object.outAny());
    return object;
}

Ref<Object> createByCom(std::string_view progId) { return imported(create(progId).get()); }

bool canUnload()
{
    const HMODULE module = GetModuleHandleW(L"QMEvents.dll");
    if (!module) return false;
    const auto ask = reinterpret_cast<void*>(GetProcAddress(module, "DllCanUnloadNow"));
    return reinterpret_cast<HRESULT(WINAPI*)()>(ask)() == S_OK;
}

void invoke(const ComPtr<IDispatch>& object, const Call& call, Invocation& outcome)
{
    std::vector<VARIANT> arguments(call.arguments.rbegin(), call.arguments.rend());
    std::vector<DISPID> names(call.names.rbegin(), call.names.rend());
    DISPPARAMS parameters{arguments.data(), names.data(), static_cast<UINT>(arguments.size()),
                          static_cast<UINT>(names.size())};
    outcome.result = object->Invoke(call.id, IID_NULL, LOCALE_NEUTRAL, call.flags, &parameters,
                                    &outcome.answer, &outcome.info, &outcome.argument);
}

DISPID idOf(const ComPtr<IDispatch>& object, const wchar_t* name)
{
    auto* text = const_cast<wchar_t*>(name);
    DISPID id = DISPID_UNKNOWN;
    object->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_NEUTRAL, &id);
    return id;
}

VARIANT number(LONG value)
{
    VARIANT result;
    V_VT(&result) = VT_I4;
    V_I4(&result) = value;
    return result;
}

VARIANT text(const wchar_t* value)
{
    static std::vector<Bstr> kept;
    kept.emplace_back(std::wstring_view(value));
    VARIANT result;
    V_VT(&result) = VT_BSTR;
    V_BSTR(&result) = kept.back().get();
    return result;
}

VARIANT dispatchOf(IDispatch* value)
{
    VARIANT result;
    V_VT(&result) = VT_DISPATCH;
    V_DISPATCH(&result) = value;
    return result;
}

VARIANT missing()
{
    VARIANT result;
    V_VT(&result) = VT_ERROR;
    V_ERROR(&result) = DISP_E_PARAMNOTFOUND;
    return result;
}

STDMETHODIMP HostDouble::QueryInterface(REFIID id, void** result)
{
    const bool known = IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, IID_IDispatch);
    *result = known ? this : nullptr;
    if (known) ++references_;
    return known ? S_OK : E_NOINTERFACE;
}

STDMETHODIMP_(ULONG) HostDouble::Release()
{
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
}

STDMETHODIMP HostDouble::GetTypeInfoCount(UINT* count)
{
    *count = 0;
    return S_OK;
}

STDMETHODIMP HostDouble::GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids)
{
    ++lookups;
    const auto found = members_.find(names[0]);
    ids[0] = found == members_.end() ? DISPID_UNKNOWN : found->second;
    return found == members_.end() ? DISP_E_UNKNOWNNAME : S_OK;
}

STDMETHODIMP HostDouble::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                VARIANT* result, EXCEPINFO* info, UINT* argument)
{
    return answer_(id, flags, *parameters, result, info, argument);
}

ComPtr<HostDouble> hostDouble(std::map<std::wstring, DISPID> members, HostDouble::Answer answer)
{
    return ComPtr<HostDouble>(new HostDouble(std::move(members), std::move(answer)));
}

} // namespace qmevents::com::testing
