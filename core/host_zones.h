#pragma once

#include <string>

#include "core/host_part.h"

namespace qmevents {

/// A zone of the host's security: rights that are given out together.
class SecurityZone : public HostPart {
public:
    using HostPart::HostPart;
    void addRight(const std::string& key, const std::string& name,
                  const std::string& description) const
    {
        const auto right = toObject(call("GetNewRight"));
        qmevents::put(right, "Key", key);
        qmevents::put(right, "Name", name);
        qmevents::put(right, "Description", description);
        qmevents::call(part("Rights"), "Add", right, key);
    }
};

/// Payload of the event that asks for the zones.
class SecurityZones : public HostPart {
public:
    using HostPart::HostPart;
    SecurityZone addZone(const std::string& key, const std::string& name,
                         const std::string& description) const
    {
        const auto zone = toObject(call("GetNewZone"));
        qmevents::put(zone, "Key", key);
        qmevents::put(zone, "Name", name);
        qmevents::put(zone, "Description", description);
        qmevents::call(part("Zones"), "Add", zone, key);
        return SecurityZone(zone);
    }
};

} // namespace qmevents
