#pragma once

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "automation/error.h"
#include "automation/object.h"
#include "automation/text.h"

namespace qmevents::testing {

/// A late-bound object whose members are given one by one.
class Puppet : public Object {
public:
    using Act = std::function<Value(std::span<Value>)>;

    explicit Puppet(std::string name) : name_(std::move(name)) {}

    /// A member that runs `act` whenever it is called or read.
    Puppet& on(const std::string& member, Act act)
    {
        slot(member).get = std::move(act);
        return *this;
    }
    /// A member that is assigned through `act`; the new value comes last.
    Puppet& onPut(const std::string& member, Act act)
    {
        slot(member).put = std::move(act);
        return *this;
    }
    /// A member that holds a value, read and written.
    Puppet& holds(const std::string& member, Value value)
    {
        auto& place = slot(member);
        place.get = [&place](std::span<Value>) { return place.value; };
        place.put = [&place](std::span<Value> arguments) {
            place.value = arguments.back();
            return Value();
        };
        place.value = std::move(value);
        return *this;
    }

    std::string_view className() const override { return name_; }
    MemberId memberId(std::string_view member) const override
    {
        const auto found = ids_.find(text::lowerAscii(member));
        return found == ids_.end() ? unknownMember : found->second;
    }
    Value invoke(MemberId id, CallKind kind, std::span<Value> arguments) override
    {
        if (id < 1) throw Error::with(ErrorNumber::noSuchMember, name_);
        auto& place = places_[static_cast<std::size_t>(id) - 1];
        const bool assigns = kind == CallKind::put || kind == CallKind::putReference;
        const Act& act = assigns ? place->put : place->get;
        if (!act) throw Error::with(ErrorNumber::noSuchMember, name_);
        return act(arguments);
    }

private:
    struct Place {
        Value value;
        Act get, put;
    };
    Place& slot(const std::string& member)
    {
        const auto [found, isNew] = ids_.emplace(text::lowerAscii(member), 0);
        if (isNew) {
            places_.push_back(std::make_unique<Place>());
            found->second = static_cast<MemberId>(places_.size());
        }
        return *places_[static_cast<std::size_t>(found->second) - 1];
    }

    std::string name_;
    std::map<std::string, MemberId> ids_;
    std::vector<std::unique_ptr<Place>> places_;
};

inline Ref<Puppet> puppet(const std::string& name) { return makeRef<Puppet>(name); }

} // namespace qmevents::testing
