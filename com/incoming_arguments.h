#pragma once

#include <span>
#include <vector>

#include "automation/members.h"
#include "com/platform.h"

namespace qmevents::com {

/// What the caller of a member passed, in the order of the member's parameters. Throws CallRefused
/// for what makes no sense.
class IncomingArguments {
public:
    /// `member` is null for members of which only the id is known.
    IncomingArguments(const DISPPARAMS* parameters, WORD flags, const Member* member);

    CallKind kind() const { return kind_; }
    std::span<Value> values() { return values_; }
    /// Hands what the member has changed back to the caller's variables.
    void writeBack();

private:
    struct Variable {
        UINT place;           // in the caller's array
        std::size_t argument; // in values_
        Value before;
    };
    void checkShape() const;
    void takePositional();
    void takeNamed(UINT place, const Member* member);
    Value read(UINT place) const;

    const DISPPARAMS& parameters_;
    std::vector<Value> values_;
    std::vector<Variable> variables_;
    Value assigned_;
    UINT assignedPlace_ = 0;
    bool isAssigned_ = false;
    CallKind kind_ = CallKind::method;
};

} // namespace qmevents::com
