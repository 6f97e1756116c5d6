#include "com/imported_object.h"

#include "automation/error.h"
#include "com/bridge.h"
#include "com/errors.h"
#include "com/exported_object.h"
#include "com/imported_walk.h"
#include "com/outgoing_arguments.h"
#include "com/text.h"
#include "com/variant.h"

namespace qmevents::com {
namespace {

constexpr WORD anyRead = DISPATCH_METHOD | DISPATCH_PROPERTYGET;

// Scripts do not tell a method from a property, and neither do members that hosts write in them.
// Only a plain property is read as such, as some engines call whatever is invoked as both.
WORD flagsOf(CallKind kind, std::size_t argumentCount)
{
    switch (kind) {
    case CallKind::method:
        return anyRead;
    case CallKind::get:
        return argumentCount == 0 ? DISPATCH_PROPERTYGET : anyRead;
    case CallKind::put:
        return DISPATCH_PROPERTYPUT;
    case CallKind::putReference:
        return DISPATCH_PROPERTYPUTREF;
    }
    return DISPATCH_METHOD;
}

bool reads(CallKind kind) { return kind == CallKind::method || kind == CallKind::get; }

std::string typeNameOf(IDispatch& dispatch)
{
    ComPtr<ITypeInfo> info;
    Bstr name;
    if (FAILED(dispatch.GetTypeInfo(0, LOCALE_USER_DEFAULT, info.out())) || !info) return {};
    if (FAILED(info->GetDocumentation(MEMBERID_NIL, name.out(), nullptr, nullptr, nullptr))) {
        return {};
    }
    std::string text = utf8(name.get());
    // Script engines give all their objects one type, which names none of them.
    if (text == "JScriptTypeInfo" || text == "VBScriptTypeInfo") return {};
    // Interfaces of script-like components carry a mark before the class's name.
    if (text.starts_with('_')) text.erase(0, 1);
    return text;
}

// What an object that keeps error objects has left for this thread.
std::string leftDescription(const ComPtr<IDispatch>& dispatch)
{
    const auto support = dispatch.as<ISupportErrorInfo>(IID_ISupportErrorInfo);
    ComPtr<IErrorInfo> error;
    if (!support || support->InterfaceSupportsErrorInfo(IID_IDispatch) != S_OK ||
        GetErrorInfo(0, error.out()) != S_OK) {
        return {};
    }
    Bstr description;
    error->GetDescription(description.out());
    return utf8(description.get());
}

} // namespace

ImportedObject::ImportedObject(ComPtr<IDispatch> dispatch, ComPtr<IUnknown> identity,
                               std::string label)
    : apartment_(Apartment::current()), dispatch_(std::move(dispatch)),
      identity_(std::move(identity)), name_(std::move(label))
{
    apartment_->importedObjects.emplace(identity_.get(), this);
}

ImportedObject::~ImportedObject()
{
    if (apartment_->isCurrent()) {
        apartment_->importedObjects.erase(identity_.get());
    } else {
        dispatch_.detach();
        identity_.detach();
        extended_.detach();
    }
}

std::string_view ImportedObject::className() const
{
    if (!isNamed_) {
        isNamed_ = true;
        if (std::string name = typeNameOf(*dispatch_.get()); !name.empty()) name_ = std::move(name);
        if (name_.empty()) name_ = "Object";
    }
    return name_;
}

HRESULT ImportedObject::lookUp(std::string_view name, DISPID& id) const
{
    const Bstr text(name);
    if (!extended_) {
        LPOLESTR pointer = text.get();
        const HRESULT result =
            dispatch_->GetIDsOfNames(IID_NULL, &pointer, 1, LOCALE_USER_DEFAULT, &id);
        if (result != E_NOTIMPL) return result;
        extended_ = dispatch_.as<IDispatchEx>(__uuidof(IDispatchEx));
        if (!extended_) return result;
    }
    return extended_->GetDispID(text.get(), fdexNameCaseInsensitive, &id);
}

HRESULT ImportedObject::callHost(DISPID id, WORD flags, DISPPARAMS& parameters, VARIANT* result,
                                 EXCEPINFO* info, UINT* argument) const
{
    if (extended_) {
        return extended_->InvokeEx(id, LOCALE_USER_DEFAULT, flags, &parameters, result, info,
                                   nullptr);
    }
    return dispatch_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, result, info,
                             argument);
}

MemberId ImportedObject::memberId(std::string_view name) const
{
    if (const auto known = ids_.find(name); known != ids_.end()) return known->second;
    DISPID id = DISPID_UNKNOWN;
    const HRESULT result = lookUp(name, id);
    // A name that the object lacks may be given to it later, so only found ones are kept.
    if (result == DISP_E_UNKNOWNNAME || result == DISP_E_MEMBERNOTFOUND) return unknownMember;
    if (FAILED(result)) {
        ReceivedException none;
        throw errorOf(result, none, std::string(className()), std::string(name),
                      leftDescription(dispatch_));
    }
    if (id != DISPID_UNKNOWN) ids_.emplace(name, id);
    return id;
}

std::string_view ImportedObject::memberName(MemberId member) const
{
    for (const auto& [name, id] : ids_) {
        if (id == member) return name;
    }
    return member == defaultMember ? "default member" : "member";
}

Value ImportedObject::invoke(MemberId member, CallKind kind, std::span<Value> arguments)
{
    const Ref<Object> stays(this); // whatever the host does during the call
    if (member == enumeratorMember && reads(kind) && arguments.empty()) return enumerate();
    try {
        OutgoingArguments outgoing(arguments, kind);
        Variant result;
        ReceivedException info;
        UINT argument = 0;
        const auto call = [&](WORD flags) {
            return callHost(member, flags, outgoing.parameters(), reads(kind) ? &result : nullptr,
                            &info, &argument);
        };
        HRESULT outcome = call(flagsOf(kind, arguments.size()));
        if (outcome == DISP_E_MEMBERNOTFOUND && kind == CallKind::putReference) {
            outcome = call(DISPATCH_PROPERTYPUT);
        }
        if (outcome == DISP_E_MEMBERNOTFOUND && kind == CallKind::get) outcome = call(anyRead);
        if (FAILED(outcome)) {
            const bool told = outcome != DISP_E_EXCEPTION;
            throw errorOf(outcome, info, std::string(className()), std::string(memberName(member)),
                          told ? leftDescription(dispatch_) : std::string());
        }
        outgoing.takeResults();
        return fromVariant(result, memberName(member));
    } catch (const std::bad_alloc&) {
        throw Error(ErrorNumber::outOfMemory);
    }
}

Ref<Enumerator> ImportedObject::enumerate()
{
    Variant result;
    DISPPARAMS none{};
    const HRESULT outcome = callHost(DISPID_NEWENUM, anyRead, none, &result, nullptr, nullptr);
    const bool isObject = V_VT(&result) == VT_UNKNOWN || V_VT(&result) == VT_DISPATCH;
    if (SUCCEEDED(outcome) && isObject) {
        auto walk = ComPtr<IUnknown>(V_UNKNOWN(&result)).as<IEnumVARIANT>(IID_IEnumVARIANT);
        if (walk) return makeRef<ImportedWalk>(std::move(walk), std::string(className()));
    }
    throw Error::with(ErrorNumber::notACollection, className());
}

Ref<Object> imported(IDispatch* dispatch, std::string_view label)
{
    if (!dispatch) return {};
    const auto& apartment = Apartment::current();
    const auto ours = apartment->exportedPointers.find(dispatch);
    if (ours != apartment->exportedPointers.end()) return ours->second->object();

    const ComPtr<IDispatch> held(dispatch);
    auto identity = held.as<IUnknown>(IID_IUnknown);
    if (!identity) throw Error::with(ErrorNumber::typeMismatch, "the object has no identity");
    const auto known = apartment->importedObjects.find(identity.get());
    if (known != apartment->importedObjects.end()) return Ref<Object>(known->second);
    return makeRef<ImportedObject>(held, std::move(identity), std::string(label));
}

} // namespace qmevents::com
