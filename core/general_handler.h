#pragma once

#include "core/host_event.h"

namespace qmevents {

/// Answers sign-in, the context menu of an interaction, and the widgets of the home page.
class GeneralHandler : public EventAnswerer {
public:
    static constexpr std::string_view ClassName = "GeneralHandler";
    const Members& members() const override;
    void EventHandler(const Ref<Object>& hostEvent) override;
};

} // namespace qmevents
