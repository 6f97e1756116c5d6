#pragma once

#include "core/host_event.h"

namespace qmevents {

/// Answers the donor details page and donor deletion. It has nothing to add yet.
class DonorHandler : public EventAnswerer {
public:
    static constexpr std::string_view ClassName = "DonorHandler";
    const Members& members() const override;
    void EventHandler(const Ref<Object>&) override {}
};

} // namespace qmevents
