#pragma once

#include "core/host_event.h"

namespace qmevents {

/// Answers the smart lists. It has nothing to add yet.
class SmartListHandler : public EventAnswerer {
public:
    static constexpr std::string_view ClassName = "SmartListHandler";
    const Members& members() const override;
    void EventHandler(const Ref<Object>&) override {}
};

} // namespace qmevents
