#pragma once

#include <cstdint>
#include <string>

#include "core/host_part.h"

namespace qmevents {

/// `App.Security`: the signed-in user and what that user may do.
class HostSecurity : public HostPart {
public:
    using HostPart::HostPart;
    bool isAllowed(const std::string& right) const { return toBool(call("IsAllowed", right)); }
    std::int32_t currentUserId() const { return toInt32(qmevents::get(part("CurrentUser"), "Id")); }
    std::string currentUserName() const
    {
        return toText(qmevents::get(part("CurrentUser"), "Name"));
    }
    std::string userName(std::int32_t id) const
    {
        const auto user = toObject(qmevents::call(part("Users"), "FromId", id));
        return user ? toText(qmevents::get(user, "Name")) : std::string();
    }
};

} // namespace qmevents
