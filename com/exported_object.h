#pragma once

#include "automation/members.h"
#include "com/apartment.h"

namespace qmevents::com {

/// One of our objects as the host sees it.
///
/// Results of by-reference arguments go back into the caller's variables when the call succeeds,
/// converted to their types. A caller's mistakes are HRESULTs with the argument's place; failures
/// of members are DISP_E_EXCEPTION.
class ExportedObject final : public IDispatch,
                             public ISupportErrorInfo,
                             public IProvideClassInfo,
                             public ApartmentObject {
public:
    explicit ExportedObject(Ref<Object> object);
    ~ExportedObject() override;

    const Ref<Object>& object() const { return object_; }

    STDMETHODIMP QueryInterface(REFIID id, void** result) override;
    STDMETHODIMP_(ULONG) AddRef() override { return addReference(); }
    STDMETHODIMP_(ULONG) Release() override { return release(); }

    STDMETHODIMP GetTypeInfoCount(UINT* count) override;
    STDMETHODIMP GetTypeInfo(UINT index, LCID, ITypeInfo** info) override;
    STDMETHODIMP GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID,
                               DISPID* ids) override;
    STDMETHODIMP Invoke(DISPID id, REFIID reserved, LCID, WORD flags, DISPPARAMS* parameters,
                        VARIANT* result, EXCEPINFO* info, UINT* argument) override;

    STDMETHODIMP InterfaceSupportsErrorInfo(REFIID id) override;
    STDMETHODIMP GetClassInfo(ITypeInfo** info) override;

private:
    // The member table's line for `id`; null for objects without a table, too.
    const Member* member(DISPID id) const;
    HRESULT lookUp(LPOLESTR* names, UINT count, DISPID* ids) const;

    Ref<Object> object_;
    const DescribedObject* described_;
    bool takesApp_;
};

} // namespace qmevents::com
