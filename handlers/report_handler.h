#pragma once

#include "core/host_event.h"

namespace qmevents {

/// Answers the host's requests for reports: the add-in's category, its reports, and those of them
/// that work on a list of records.
class ReportHandler : public EventAnswerer {
public:
    static constexpr std::string_view ClassName = "ReportHandler";
    const Members& members() const override;
    void EventHandler(const Ref<Object>& Ev) override;
};

} // namespace qmevents
