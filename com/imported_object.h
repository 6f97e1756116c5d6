#pragma once

#include <memory>
#include <string>
#include <unordered_map>

#include "automation/object.h"
#include "automation/text.h"
#include "com/apartment.h"

namespace qmevents::com {

/// A host's object as the add-in sees it. Member ids are asked for once per name and kept for as
/// long as the object is held.
///
/// Arguments of methods are passed as variants by reference, as scripts pass their variables, so
/// that results come back; but objects, and everything that is passed to a property, go by value,
/// as typed members of hosts expect them. What is assigned by reference is assigned by value where
/// the host knows no other way.
///
/// Objects of script engines may answer to IDispatchEx alone; that is found out at the first name.
class ImportedObject final : public Object {
public:
    ImportedObject(ComPtr<IDispatch> dispatch, ComPtr<IUnknown> identity, std::string label);
    ~ImportedObject() override;

    const ComPtr<IDispatch>& dispatch() const { return dispatch_; }

    /// The name of the object's type, or else the label that it was given.
    std::string_view className() const override;
    MemberId memberId(std::string_view name) const override;
    Value invoke(MemberId member, CallKind kind, std::span<Value> arguments) override;
    Ref<Enumerator> enumerate() override;

private:
    std::string_view memberName(MemberId member) const;
    HRESULT lookUp(std::string_view name, DISPID& id) const;
    HRESULT callHost(DISPID id, WORD flags, DISPPARAMS& parameters, VARIANT* result,
                     EXCEPINFO* info, UINT* argument) const;

    std::shared_ptr<Apartment> apartment_;
    ComPtr<IDispatch> dispatch_;
    ComPtr<IUnknown> identity_;
    mutable ComPtr<IDispatchEx> extended_; // when it is the only way
    mutable std::string name_;
    mutable bool isNamed_ = false;
    mutable std::unordered_map<std::string, MemberId, text::NameHash, text::NameEqual> ids_;
};

} // namespace qmevents::com
