#pragma once

#include <cstdint>
#include <string>

#include "automation/conversions.h"
#include "core/host_part.h"

namespace qmevents {

/// Payload of the events around a deletion: of one record, of a list of donors, or of an attribute.
class DeletionData : public HostPart {
public:
    using HostPart::HostPart;
    /// The record that is deleted, when it is one.
    std::int32_t entityId() const { return toInt32(get("EntityId")); }
    /// "donors", or the table of an attribute.
    std::string entityType() const { return toText(get("EntityType")); }
    Value deleteType() const { return get("DeleteType"); }
    /// Of a list: what follows "SELECT Id FROM ".
    std::string userdata() const { return toText(get("Userdata")); }
    /// Adds what the user should know before confirming.
    void addConfirmationMessage(const std::string& text) const
    {
        call("AddConfirmationMessage", text);
    }
};

} // namespace qmevents
