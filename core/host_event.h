#pragma once

#include <array>
#include <optional>
#include <string>

#include "automation/describe.h"
#include "core/host_part.h"

namespace qmevents {

/// A named event of the host with its payload.
class HostEvent : public HostPart {
public:
    using HostPart::HostPart;
    std::string key() const { return toText(get("Key")); }
    /// The payload; its members depend on the event.
    Ref<Object> data() const { return part("Data"); }
    Value dataValue() const { return get("Data"); }
};

/// Base of the classes that answer host events, each for a group of keys.
class EventAnswerer : public DescribedObject {
public:
    virtual void EventHandler(const Ref<Object>& hostEvent) = 0;
};

/// The member table of an answering class that shows the host nothing else.
template <typename C>
Members answererMembers(const char* documentation)
{
    return describe<C>(documentation)
        .method("EventHandler", &C::EventHandler, {arg("Ev")}, "Answers a host event.");
}

/// The groups of host events, one answering class each.
enum class EventGroup { donor, report, smartList, mailing, setting, general, security };
constexpr std::size_t eventGroups = 7;

/// The group that answers the event `key`, compared exactly; nothing for an unknown key.
std::optional<EventGroup> eventGroupOf(std::string_view key);

} // namespace qmevents
