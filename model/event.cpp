#include "model/event.h"

namespace qmevents {
namespace {

Value dateOrEmpty(Date moment) { return moment.hasDate() ? Value(moment.datePart()) : Value(); }
Value timeOrEmpty(Date moment) { return moment.hasTime() ? Value(moment.timePart()) : Value(); }

std::string twoDigits(int number) { return std::to_string(100 + number).substr(1); }

// Midnight means "no time entered", so these are blank rather than 12 AM.
std::string hourText(Date moment)
{
    if (!moment.hasTime()) return {};
    const int hour = moment.civil().hour;
    return twoDigits(hour > 12 ? hour - 12 : hour == 0 ? 12 : hour);
}
std::string minuteText(Date moment)
{
    return moment.hasTime() ? twoDigits(moment.civil().minute) : std::string();
}
std::string halfText(Date moment)
{
    if (!moment.hasTime()) return {};
    return moment.civil().hour > 11 ? "PM" : "AM";
}

} // namespace

std::int32_t cEvent::State() const
{
    return IsNew() ? static_cast<std::int32_t>(EventStates::stateOpenEvent) : state_;
}

std::string cEvent::StateString() const
{
    switch (static_cast<EventStates>(State())) {
    case EventStates::stateOpenEvent:
        return "Open";
    case EventStates::stateClosedEvent:
        return "Closed";
    }
    return {};
}

Value cEvent::StartDate() const { return dateOrEmpty(StartDateTime); }
Value cEvent::StartTime() const { return timeOrEmpty(StartDateTime); }
std::string cEvent::StartHour() const { return hourText(StartDateTime); }
std::string cEvent::StartMinute() const { return minuteText(StartDateTime); }
std::string cEvent::StartAMPM() const { return halfText(StartDateTime); }
Value cEvent::EndDate() const { return dateOrEmpty(EndDateTime); }
Value cEvent::EndTime() const { return timeOrEmpty(EndDateTime); }
std::string cEvent::EndHour() const { return hourText(EndDateTime); }
std::string cEvent::EndMinute() const { return minuteText(EndDateTime); }
std::string cEvent::EndAMPM() const { return halfText(EndDateTime); }
Value cEvent::RSVPDate() const { return dateOrEmpty(RSVPDateTime); }
Value cEvent::RSVPTime() const { return timeOrEmpty(RSVPDateTime); }
std::string cEvent::RSVPHour() const { return hourText(RSVPDateTime); }
std::string cEvent::RSVPMinute() const { return minuteText(RSVPDateTime); }
std::string cEvent::RSVPAMPM() const { return halfText(RSVPDateTime); }

bool cEvent::childrenLoaded(EventChild child) const
{
    return children_ && (*children_)[static_cast<std::size_t>(child)];
}

Ref<Object> cEvent::children(EventChild child, bool reload)
{
    if (!children_) children_ = std::make_unique<std::array<Ref<Object>, eventChildren>>();
    Ref<Object>& cached = (*children_)[static_cast<std::size_t>(child)];
    if (reload) cached = {};
    if (!cached) cached = EventSource::ofRoot().childrenOf(child, Id());
    return cached;
}

const EventFigures& cEvent::figures()
{
    if (!figuresLoaded_) {
        // Marked first, so that a failure is not met again at every read.
        figuresLoaded_ = true;
        figures_ = std::make_unique<EventFigures>();
        figures_->load(Id());
        figures_->NumberReservationActivities =
            EventSource::ofRoot().GetEventReservationActivitiesCount(Id());
    } else if (!figures_) {
        figures_ = std::make_unique<EventFigures>();
    }
    return *figures_;
}

const DonationStatistics& cEvent::donations()
{
    // Gifts to no event have the key 0, so it must not be asked for, nor that answer be kept.
    static const DonationStatistics none;
    if (Id() == 0) return none;
    if (!donations_) {
        donations_ = std::make_unique<DonationStatistics>();
        donations_->load(Id());
    }
    return *donations_;
}

} // namespace qmevents
