#pragma once

#include "core/host_event.h"

namespace qmevents {

/// Answers the settings with the add-in's entry. When the host deletes a fund, campaign, gift
/// source or assignee, clears what refers to it in events, activities and tasks: everything or
/// nothing, and a failure reaches the host.
class SettingHandler : public EventAnswerer {
public:
    static constexpr std::string_view ClassName = "SettingHandler";
    const Members& members() const override;
    void EventHandler(const Ref<Object>& Ev) override;
};

} // namespace qmevents
