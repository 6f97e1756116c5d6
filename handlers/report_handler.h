#pragma once

#include "core/host_event.h"

namespace qmevents {

/// Answers the host's requests for reports. It has nothing to add yet.
class ReportHandler : public EventAnswerer {
public:
    static constexpr std::string_view ClassName = "ReportHandler";
    const Members& members() const override;
    void EventHandler(const Ref<Object>&) override {}
};

} // namespace qmevents
