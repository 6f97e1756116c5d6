#pragma once

#include <span>
#include <vector>

#include "automation/object_base.h"
#include "com/variant.h"

namespace qmevents::com {

/// The arguments of a call to a host's object, as it takes them: the last first.
class OutgoingArguments {
public:
    OutgoingArguments(std::span<Value> values, CallKind kind);
    OutgoingArguments(const OutgoingArguments&) = delete;
    OutgoingArguments& operator=(const OutgoingArguments&) = delete;

    DISPPARAMS& parameters() { return parameters_; }
    /// Takes over what the host wrote into variables that it was passed by reference.
    void takeResults();

private:
    std::span<Value> values_;
    std::vector<Variant> contents_;
    std::vector<VARIANT> passed_; // a content, or a reference to one
    DISPID assigned_ = DISPID_PROPERTYPUT;
    DISPPARAMS parameters_{};
};

} // namespace qmevents::com
