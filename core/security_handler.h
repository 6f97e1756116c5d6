#pragma once

#include "core/host_event.h"

namespace qmevents {

/// Answers the security zones event with the add-in's zone and its rights.
class SecurityHandler : public EventAnswerer {
public:
    static constexpr std::string_view ClassName = "SecurityHandler";
    const Members& members() const override;
    void EventHandler(const Ref<Object>& Ev) override;
};

} // namespace qmevents
