#pragma once

#include "core/host_event.h"

namespace qmevents {

// The classes that answer the host's feature events. They accept their events and have nothing to
// add to them yet.

/// Answers the donor details page and donor deletion.
class DonorHandler : public EventAnswerer {
public:
    static constexpr std::string_view ClassName = "DonorHandler";
    const Members& members() const override;
    void EventHandler(const Ref<Object>&) override {}
};

/// Answers the host's requests for reports.
class ReportHandler : public EventAnswerer {
public:
    static constexpr std::string_view ClassName = "ReportHandler";
    const Members& members() const override;
    void EventHandler(const Ref<Object>&) override {}
};

/// Answers the smart lists.
class SmartListHandler : public EventAnswerer {
public:
    static constexpr std::string_view ClassName = "SmartListHandler";
    const Members& members() const override;
    void EventHandler(const Ref<Object>&) override {}
};

/// Answers mailings' requests for fields.
class MailingHandler : public EventAnswerer {
public:
    static constexpr std::string_view ClassName = "MailingHandler";
    const Members& members() const override;
    void EventHandler(const Ref<Object>&) override {}
};

} // namespace qmevents
