#pragma once

#include <utility>

#include "automation/object.h"

namespace qmevents {

/// Base of the typed wrappers over the host's objects. Each wrapper spells its members' names once;
/// an absent member is an error that names the object and the member.
class HostPart {
public:
    explicit HostPart(Ref<Object> object) : object_(std::move(object)) {}
    const Ref<Object>& object() const { return object_; }
    explicit operator bool() const { return static_cast<bool>(object_); }

protected:
    template <typename... A>
    Value call(std::string_view member, A&&... arguments) const
    {
        return qmevents::call(object_, member, std::forward<A>(arguments)...);
    }
    template <typename... A>
    Value get(std::string_view member, A&&... arguments) const
    {
        return qmevents::get(object_, member, std::forward<A>(arguments)...);
    }
    template <typename... A>
    Ref<Object> part(std::string_view member, A&&... arguments) const
    {
        return getObject(object_, member, std::forward<A>(arguments)...);
    }
    template <typename... A>
    void put(std::string_view member, A&&... arguments) const
    {
        qmevents::put(object_, member, std::forward<A>(arguments)...);
    }

private:
    Ref<Object> object_;
};

} // namespace qmevents
