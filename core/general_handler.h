#pragma once

#include "core/host_event.h"

namespace qmevents {

/// Answers sign-in, sign-out and the context menu of an interaction.
class GeneralHandler : public EventAnswerer {
public:
    static constexpr std::string_view ClassName = "GeneralHandler";
    const Members& members() const override;
    void EventHandler(const Ref<Object>& hostEvent) override;
};

} // namespace qmevents
