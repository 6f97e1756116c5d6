#pragma once

#include "core/host_event.h"

namespace qmevents {

/// Answers mailings' requests for fields, and for their values. A mailing that the events started
/// is known again by a reference that the host keeps with its list of donors.
class MailingHandler : public EventAnswerer {
public:
    static constexpr std::string_view ClassName = "MailingHandler";
    const Members& members() const override;
    void EventHandler(const Ref<Object>& hostEvent) override;
};

} // namespace qmevents
