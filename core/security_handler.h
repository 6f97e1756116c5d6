#pragma once

#include "core/host_event.h"

namespace qmevents {

/// Answers the security zones event. It has nothing to add yet.
class SecurityHandler : public EventAnswerer {
public:
    static constexpr std::string_view ClassName = "SecurityHandler";
    const Members& members() const override;
    void EventHandler(const Ref<Object>&) override {}
};

} // namespace qmevents
