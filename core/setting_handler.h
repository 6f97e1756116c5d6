#pragma once

#include "core/host_event.h"

namespace qmevents {

/// Answers settings and attribute events. It has nothing to add yet.
class SettingHandler : public EventAnswerer {
public:
    static constexpr std::string_view ClassName = "SettingHandler";
    const Members& members() const override;
    void EventHandler(const Ref<Object>&) override {}
};

} // namespace qmevents
