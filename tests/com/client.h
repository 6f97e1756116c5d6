#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "automation/object.h"
#include "com/bridge.h"
#include "com/errors.h"
#include "com/text.h"
#include "com/variant.h"

// What the tests of the component share: they are its host, from the outside of COM.
namespace qmevents::com::testing {

/// A new object of a registered class; null when COM refuses.
ComPtr<IDispatch> create(std::string_view progId);
/// The same as the tests of the add-in know objects.
Ref<Object> createByCom(std::string_view progId);

/// Whether the component has been loaded and would let itself be unloaded now.
bool canUnload();

/// One call as a host makes it. Arguments are given in their natural order.
struct Invocation {
    HRESULT result = E_FAIL;
    Variant answer;
    ReceivedException info;
    UINT argument = 99;

    std::string description() const { return utf8(info.bstrDescription); }
};
struct Call {
    DISPID id = DISPID_VALUE;
    WORD flags = DISPATCH_METHOD | DISPATCH_PROPERTYGET;
    std::vector<VARIANT> arguments = {};
    std::vector<DISPID> names = {}; ///< Those of the last arguments.
};
void invoke(const ComPtr<IDispatch>& object, const Call& call, Invocation& outcome);
DISPID idOf(const ComPtr<IDispatch>& object, const wchar_t* name);

/// Plain VARIANTs; texts are freed when the program ends.
VARIANT number(LONG value);
VARIANT text(const wchar_t* value);
VARIANT dispatchOf(IDispatch* value);
VARIANT missing();
template <typename T>
VARIANT reference(VARTYPE type, T* variable)
{
    VARIANT result;
    V_VT(&result) = static_cast<VARTYPE>(VT_BYREF | type);
    V_BYREF(&result) = variable;
    return result;
}

/// A host's object, written by hand: members by name, and one function that answers all calls.
class HostDouble final : public IDispatch {
public:
    using Answer = std::function<HRESULT(DISPID id, WORD flags, DISPPARAMS& parameters,
                                         VARIANT* result, EXCEPINFO* info, UINT* argument)>;

    HostDouble(std::map<std::wstring, DISPID> members, Answer answer)
        : members_(std::move(members)), answer_(std::move(answer))
    {
        ++alive;
    }
    STDMETHODIMP QueryInterface(REFIID id, void** result) override;
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override;
    STDMETHODIMP GetTypeInfoCount(UINT* count) override;
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override;
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                        VARIANT* result, EXCEPINFO* info, UINT* argument) override;

    int lookups = 0;
    static inline int alive = 0;

private:
    ~HostDouble() { --alive; }

    std::map<std::wstring, DISPID> members_;
    Answer answer_;
    ULONG references_ = 0;
};

/// A double that the test keeps.
ComPtr<HostDouble> hostDouble(std::map<std::wstring, DISPID> members, HostDouble::Answer answer);

} // namespace qmevents::com::testing
