#pragma once

#include <string>

#include "automation/collection.h"
#include "host/app/session_context.h"

namespace refhost {

/// A right that users can be given.
class SecurityRight : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "SecurityRight";
    const Members& members() const override;

    std::string Key; ///< Its name, such as "events/edit".
    std::string Name, Description;
};

/// The rights of one part of the system.
class SecurityZone : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "SecurityZone";
    const Members& members() const override;

    std::string Key, Name, Description;
    Ref<qmevents::Collection> Rights = qmevents::makeRef<qmevents::Collection>();
    Ref<SecurityRight> GetNewRight() const { return qmevents::makeRef<SecurityRight>(); }
};

/// Payload of "security-zones-load": where modules add their zones.
class SecurityZones : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "SecurityZones";
    const Members& members() const override;

    Ref<qmevents::Collection> Zones = qmevents::makeRef<qmevents::Collection>();
    Ref<SecurityZone> GetNewZone() const { return qmevents::makeRef<SecurityZone>(); }
    Ref<SecurityRight> GetNewRight() const { return qmevents::makeRef<SecurityRight>(); }
    void addHostZones() const;
    /// The name of the right as its zone writes it; empty when no zone has it.
    std::string spelled(const std::string& right) const;
};

} // namespace refhost
