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

/// Answers the settings and attribute events. It has nothing to add yet.
class SettingHandler : public EventAnswerer {
public:
    static constexpr std::string_view ClassName = "SettingHandler";
    const Members& members() const override;
    void EventHandler(const Ref<Object>&) override {}
};

/// Answers the security zones event. It has nothing to add yet.
class SecurityHandler : public EventAnswerer {
public:
    static constexpr std::string_view ClassName = "SecurityHandler";
    const Members& members() const override;
    void EventHandler(const Ref<Object>&) override {}
};

} // namespace qmevents
