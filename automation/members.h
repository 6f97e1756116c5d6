#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "automation/object.h"
#include "automation/text.h"

namespace qmevents {

/// The declared type of a property, argument or result.
struct MemberType {
    enum class Tag {
        none,    ///< A method without a result.
        variant, ///< Any value.
        boolean,
        int16,
        int32,
        real,
        currency,
        date,
        text,
        object,      ///< Of the class `name`, or of any class when that is empty.
        enumeration, ///< A 32-bit integer with the names of the enumeration `name`.
    };
    Tag tag = Tag::variant;
    std::string name;
};

/// One argument of a member.
struct Parameter {
    std::string name;
    bool optional = false;
    bool byReference = false;
    Value defaultValue; ///< What an omitted optional argument counts as; Missing for "not given".
    MemberType type;
};

/// What an assignment does to the record's dirty mark.
enum class Marking { none, marksDirty, leavesClean };

/// One public member of a class, with all that a late-bound caller, a type library and a reference
/// page need of it.
struct Member {
    std::string name;
    MemberId id = unknownMember; ///< Its slot, counted from 1, or one of the reserved ids.
    std::string documentation;
    MemberType type;
    std::vector<Parameter> parameters;
    bool isMethod = false;
    bool storeOnly = false; ///< Readable by all, written by the store alone.
    bool hidden = false;    ///< Left out of the reference (enumerators).
    Marking marking = Marking::none;

    /// Reads or calls. The span has exactly one value per parameter.
    std::function<Value(Object&, std::span<Value>)> get;
    /// Assigns; the new value follows the parameters. Empty for what cannot be assigned.
    std::function<void(Object&, std::span<Value>)> put;
};

/// The public face of one class: everything that can be reached late-bound, in slot order. Built
/// once per class by `describe<T>` (automation/describe.h).
class Members {
public:
    Members(std::string className, std::string documentation)
        : className_(std::move(className)), documentation_(std::move(documentation))
    {
    }

    const std::string& className() const { return className_; }
    const std::string& documentation() const { return documentation_; }
    std::span<const Member> all() const { return members_; }

    MemberId id(std::string_view name) const;
    /// The member with this id, or null.
    const Member* find(MemberId id) const;
    const Member* find(std::string_view name) const { return find(id(name)); }

    /// Invokes a member of `self`, filling in omitted optional arguments. Errors: 438 for an
    /// unknown member, 449 and 450 for the wrong number of arguments, 383 for assigning what is
    /// read-only, 70 for assigning what only the store writes; conversion errors name the argument.
    Value invoke(Object& self, MemberId id, CallKind kind, std::span<Value> arguments) const;

    Member& add(Member member);
    /// The member added last is what a bare `object` or `object(index)` means.
    void makeLastDefault();
    /// The member added last gives the walk over a collection.
    void makeLastEnumerator();
    Member& last() { return members_.back(); }

private:
    MemberId slotCount() const { return static_cast<MemberId>(members_.size()); }
    void giveLast(MemberId id);

    std::string className_;
    std::string documentation_;
    std::vector<Member> members_; // in slot order: slot n stands at n - 1
    std::unordered_map<std::string, MemberId, text::NameHash, text::NameEqual> ids_;
    MemberId default_ = unknownMember;    // its slot
    MemberId enumerator_ = unknownMember; // its slot
};

/// An object whose late-bound face is its class's member table.
class DescribedObject : public Object {
public:
    virtual const Members& members() const = 0;

    std::string_view className() const override { return members().className(); }
    MemberId memberId(std::string_view name) const override { return members().id(name); }
    Value invoke(MemberId member, CallKind kind, std::span<Value> arguments) override
    {
        return members().invoke(*this, member, kind, arguments);
    }
};

} // namespace qmevents
