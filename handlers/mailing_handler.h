#pragma once

#include "core/host_event.h"

namespace qmevents {

/// Answers mailings' requests for fields. It has nothing to add yet.
class MailingHandler : public EventAnswerer {
public:
    static constexpr std::string_view ClassName = "MailingHandler";
    const Members& members() const override;
    void EventHandler(const Ref<Object>&) override {}
};

} // namespace qmevents
