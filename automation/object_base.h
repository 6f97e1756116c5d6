#pragma once

#include <span>
#include <string_view>

#include "automation/ref.h"

namespace qmevents {

class Value;
class Enumerator;

/// How a member is invoked.
enum class CallKind {
    method, ///< Call a method, or read a property: scripts do not tell them apart.
    get,
    put,
    putReference, ///< `Set object.Member = other`.
};

/// Number of a member within its class.
using MemberId = int;
constexpr MemberId unknownMember = -1;
constexpr MemberId defaultMember = 0; ///< What `object(index)` or a bare `object` reads.
constexpr MemberId enumeratorMember = -4;

/// The late-bound face of everything that the host and the add-in show each other.
class Object : public Counted {
public:
    virtual std::string_view className() const = 0;
    /// The id of the member called `name` without regard to case, or unknownMember.
    virtual MemberId memberId(std::string_view name) const = 0;
    /// Invokes a member. For puts the new value is the last argument. What the member writes into
    /// an argument is its by-reference result. Errors are thrown as Error.
    virtual Value invoke(MemberId member, CallKind kind, std::span<Value> arguments) = 0;
    /// Walks the members of a collection; 451 when this object is none.
    virtual Ref<Enumerator> enumerate();
};

} // namespace qmevents
