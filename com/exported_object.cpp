#include "com/exported_object.h"

#include <memory>
#include <optional>

#include "com/bridge.h"
#include "com/errors.h"
#include "com/imported_object.h"
#include "com/incoming_arguments.h"
#include "com/text.h"
#include "com/type_library.h"
#include "com/variant.h"

namespace qmevents::com {
namespace {

// The index of the argument called `name`, by which the caller will refer to it.
std::optional<DISPID> argumentId(const Member& member, std::string_view name)
{
    for (std::size_t i = 0; i < member.parameters.size(); ++i) {
        if (text::sameName(member.parameters[i].name, name)) return static_cast<DISPID>(i);
    }
    return std::nullopt;
}

bool asksForWalk(DISPID id, CallKind kind)
{
    return id == DISPID_NEWENUM && (kind == CallKind::get || kind == CallKind::method);
}

} // namespace

ExportedObject::ExportedObject(Ref<Object> object)
    : object_(std::move(object)), described_(dynamic_cast<const DescribedObject*>(object_.get())),
      takesApp_(described_ && described_->members().find("OnInitialize"))
{
    const auto entry = apartment().exportedObjects.emplace(object_.get(), this).first;
    try {
        apartment().exportedPointers.emplace(static_cast<IDispatch*>(this), this);
    } catch (...) {
        // Without memory there is no wrapper, and so no trace of one.
        apartment().exportedObjects.erase(entry);
        throw;
    }
    if (takesApp_) apartment().rootAppeared();
}

ExportedObject::~ExportedObject()
{
    apartment().exportedObjects.erase(object_.get());
    apartment().exportedPointers.erase(static_cast<IDispatch*>(this));
    if (takesApp_) apartment().rootVanished();
}

const Member* ExportedObject::member(DISPID id) const
{
    return described_ ? described_->members().find(id) : nullptr;
}

STDMETHODIMP ExportedObject::QueryInterface(REFIID id, void** result)
{
    if (!result) return E_POINTER;
    *result = nullptr;
    if (IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, IID_IDispatch)) {
        *result = static_cast<IDispatch*>(this);
    } else if (IsEqualIID(id, IID_ISupportErrorInfo)) {
        *result = static_cast<ISupportErrorInfo*>(this);
    } else if (IsEqualIID(id, IID_IProvideClassInfo)) {
        *result = static_cast<IProvideClassInfo*>(this);
    } else {
        return E_NOINTERFACE;
    }
    addReference();
    return S_OK;
}

STDMETHODIMP ExportedObject::GetTypeInfoCount(UINT* count)
{
    if (!count) return E_POINTER;
    ComPtr<ITypeInfo> info;
    *count = SUCCEEDED(GetTypeInfo(0, LOCALE_NEUTRAL, info.out())) ? 1 : 0;
    return S_OK;
}

STDMETHODIMP ExportedObject::GetTypeInfo(UINT index, LCID, ITypeInfo** info)
{
    if (!info) return E_POINTER;
    *info = nullptr;
    if (index != 0) return DISP_E_BADINDEX;
    return typeInfoOf(object_->className(), info);
}

STDMETHODIMP ExportedObject::GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID,
                                           DISPID* ids)
{
    if (!apartment().isCurrent()) return refusedOnThisThread();
    if (!IsEqualIID(reserved, IID_NULL)) return DISP_E_UNKNOWNINTERFACE;
    if (!names || !ids || count == 0) return E_INVALIDARG;
    const IncomingCall call(*this);
    return guarded(nullptr, nullptr, [&] { return lookUp(names, count, ids); });
}

// The first name is the member's, the others are those of its arguments.
HRESULT ExportedObject::lookUp(LPOLESTR* names, UINT count, DISPID* ids) const
{
    for (UINT i = 0; i < count; ++i) {
        if (!names[i]) return E_INVALIDARG;
        ids[i] = DISPID_UNKNOWN;
    }
    ids[0] = object_->memberId(utf8(std::wstring_view(names[0])));
    const Member* const found = ids[0] == DISPID_UNKNOWN ? nullptr : member(ids[0]);
    bool complete = ids[0] != DISPID_UNKNOWN;
    for (UINT i = 1; i < count; ++i) {
        const auto id =
            found ? argumentId(*found, utf8(std::wstring_view(names[i]))) : std::nullopt;
        ids[i] = id.value_or(DISPID_UNKNOWN);
        complete = complete && id;
    }
    return complete ? S_OK : DISP_E_UNKNOWNNAME;
}

STDMETHODIMP ExportedObject::Invoke(DISPID id, REFIID reserved, LCID, WORD flags,
                                    DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* info,
                                    UINT* argument)
{
    if (result) VariantInit(result);
    if (!apartment().isCurrent()) return refusedOnThisThread();
    if (!IsEqualIID(reserved, IID_NULL)) return DISP_E_UNKNOWNINTERFACE;
    const IncomingCall call(*this);
    return guarded(info, argument, [&] {
        const Member* const called = member(id);
        if (described_ && !called) {
            return refused(DISP_E_MEMBERNOTFOUND, "Object doesn't support this property or method");
        }
        IncomingArguments arguments(parameters, flags, called);
        if (asksForWalk(id, arguments.kind())) {
            auto walk = exportedWalk(object_->enumerate(), object_);
            if (result) {
                V_UNKNOWN(result) = walk.detach();
                V_VT(result) = VT_UNKNOWN;
            }
            return S_OK;
        }
        Variant answer = toVariant(object_->invoke(id, arguments.kind(), arguments.values()));
        arguments.writeBack();
        if (result) *result = answer.detach();
        return S_OK;
    });
}

STDMETHODIMP ExportedObject::InterfaceSupportsErrorInfo(REFIID id)
{
    return IsEqualIID(id, IID_IDispatch) ? S_OK : S_FALSE;
}

STDMETHODIMP ExportedObject::GetClassInfo(ITypeInfo** info)
{
    if (!info) return E_POINTER;
    *info = nullptr;
    return classInfoOf(object_->className(), info);
}

ComPtr<IDispatch> exported(const Ref<Object>& object)
{
    if (!object) return {};
    if (const auto theirs = refCast<ImportedObject>(object)) return theirs->dispatch();
    const auto& known = Apartment::current()->exportedObjects;
    if (const auto found = known.find(object.get()); found != known.end()) {
        return ComPtr<IDispatch>(found->second);
    }
    return ComPtr<IDispatch>(std::make_unique<ExportedObject>(object).release());
}

} // namespace qmevents::com
