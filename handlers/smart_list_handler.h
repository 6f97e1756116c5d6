#pragma once

#include "core/host_event.h"

namespace qmevents {

/// Answers the smart lists: brings the event fields into lists of donors and gifts, and offers the
/// columns that show them.
class SmartListHandler : public EventAnswerer {
public:
    static constexpr std::string_view ClassName = "SmartListHandler";
    const Members& members() const override;
    void EventHandler(const Ref<Object>& Ev) override;
};

} // namespace qmevents
