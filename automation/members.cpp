#include "automation/members.h"

#include <array>

#include "automation/error.h"

namespace qmevents {
namespace {

std::string fullName(const Members& members, const Member& member)
{
    return members.className() + "." + member.name;
}

// `arguments` completed to one value per parameter (and the new value of a put behind them).
class CompleteArguments {
public:
    CompleteArguments(const Members& members, const Member& member, std::span<Value> given,
                      std::size_t newValues)
        : given_(given), complete_(given)
    {
        const std::size_t wanted = member.parameters.size() + newValues;
        if (given.size() > wanted || given.size() < newValues) {
            throw Error::with(ErrorNumber::wrongArgumentCount, fullName(members, member));
        }
        const std::size_t indices = given.size() - newValues;
        bool complete = given.size() == wanted;
        for (std::size_t i = 0; i < member.parameters.size(); ++i) {
            if (i < indices && !given[i].isMissing()) continue;
            if (!member.parameters[i].optional) {
                throw Error::with(ErrorNumber::argumentNotOptional,
                                  member.parameters[i].name + " of " + fullName(members, member));
            }
            complete = false;
        }
        if (complete) return;
        for (std::size_t i = 0; i < member.parameters.size(); ++i) {
            const bool isGiven = i < indices && !given[i].isMissing();
            own_.push_back(isGiven ? given[i] : member.parameters[i].defaultValue);
        }
        for (std::size_t i = indices; i < given.size(); ++i) own_.push_back(given[i]);
        complete_ = own_;
        indices_ = indices;
    }

    std::span<Value> all() { return complete_; }

    /// Hands by-reference results back to the caller's own values.
    void writeBack(const Member& member)
    {
        for (std::size_t i = 0; i < indices_; ++i) {
            if (member.parameters[i].byReference && !given_[i].isMissing()) given_[i] = own_[i];
        }
    }

private:
    std::span<Value> given_;
    std::span<Value> complete_;
    std::vector<Value> own_;
    std::size_t indices_ = 0;
};

} // namespace

MemberId Members::id(std::string_view name) const
{
    const auto found = ids_.find(name);
    return found == ids_.end() ? unknownMember : found->second;
}

const Member* Members::find(MemberId id) const
{
    const MemberId slot = id == defaultMember      ? default_
                          : id == enumeratorMember ? enumerator_
                                                   : id;
    return slot >= 1 && static_cast<std::size_t>(slot) <= members_.size()
               ? &members_[static_cast<std::size_t>(slot) - 1]
               : nullptr;
}

Member& Members::add(Member member)
{
    member.id = slotCount() + 1;
    ids_.emplace(member.name, member.id);
    return members_.emplace_back(std::move(member));
}

void Members::makeLastDefault()
{
    default_ = slotCount();
    giveLast(defaultMember);
}

void Members::makeLastEnumerator()
{
    enumerator_ = slotCount();
    giveLast(enumeratorMember);
    members_.back().hidden = true;
}

void Members::giveLast(MemberId id)
{
    members_.back().id = id;
    ids_[members_.back().name] = id;
}

Value Members::invoke(Object& self, MemberId id, CallKind kind, std::span<Value> arguments) const
{
    const Member* member = find(id);
    if (!member) {
        throw Error::with(ErrorNumber::noSuchMember,
                          className_ + (id == defaultMember ? " has no default member" : ""));
    }
    if (kind == CallKind::method || kind == CallKind::get) {
        // `object.Items(3)`: a property without parameters whose value is indexed at once.
        if (!member->isMethod && member->parameters.empty() && !arguments.empty() &&
            member->type.tag == MemberType::Tag::object) {
            const Value value = member->get(self, {});
            if (!toObject(value)) throw Error::with(ErrorNumber::objectNotSet, member->name);
            return toObject(value)->invoke(defaultMember, CallKind::get, arguments);
        }
        CompleteArguments complete(*this, *member, arguments, 0);
        Value result = member->get(self, complete.all());
        complete.writeBack(*member);
        return result;
    }
    if (member->storeOnly) {
        throw Error::with(ErrorNumber::permissionDenied,
                          fullName(*this, *member) + " is written by the store only");
    }
    if (!member->put) {
        throw Error::with(ErrorNumber::readOnlyProperty, fullName(*this, *member));
    }
    CompleteArguments complete(*this, *member, arguments, 1);
    member->put(self, complete.all());
    return {};
}

} // namespace qmevents
