#pragma once

#include <array>

#include "model/entity.h"
#include "model/event_figures.h"
#include "model/event_source.h"
#include "model/typed_collection.h"

namespace qmevents {

/// Whether an event is open; it lives in memory only.
enum class EventStates : std::int32_t { stateOpenEvent = 1, stateClosedEvent = 8 };
template <>
struct EnumerationName<EventStates> {
    static constexpr const char* value = "EventStates";
};

/// One event. Figures, statistics and what belongs to the event are fetched on first use and kept
/// as long as the object lives.
class cEvent : public Entity, public AuditFields {
public:
    static constexpr std::string_view ClassName = "cEvent";
    const Members& members() const override;

    Tracked<std::string> Name{*this};
    Tracked<std::string> Description{*this};
    Tracked<std::int32_t> FKLocationId{*this};
    Tracked<Date> StartDateTime{*this};
    Tracked<Date> EndDateTime{*this};
    Tracked<Date> RSVPDateTime{*this};
    Tracked<std::int32_t> MaxCapacity{*this};
    Tracked<std::int32_t> MinCapacity{*this};
    Tracked<std::int32_t> FKCategoryId{*this};
    Tracked<std::int32_t> FKStatusId{*this};
    Tracked<std::int32_t> FKCoordinatorId{*this};
    Tracked<Currency> RevenueGoal{*this};
    Tracked<std::int32_t> AttendanceGoal{*this};
    Tracked<std::int32_t> FKFundId{*this};
    Tracked<std::int32_t> FKCampaignId{*this};
    Tracked<std::int32_t> FKAppealId{*this};
    Tracked<std::string> Notes{*this};

    /// Always open (1) for a new event, whatever was assigned.
    std::int32_t State() const;
    void setState(std::int32_t state) { state_ = state; }
    std::string StateString() const; ///< "Open", "Closed" or nothing.

    // The parts of the three date-times. A date part is Empty on the zero date; at midnight, which
    // means "no time entered", the time part is Empty and hour, minute and half of the day are
    // blank.
    Value StartDate() const;
    Value StartTime() const;
    std::string StartHour() const; ///< "01" to "12".
    std::string StartMinute() const;
    std::string StartAMPM() const;
    Value EndDate() const;
    Value EndTime() const;
    std::string EndHour() const;
    std::string EndMinute() const;
    std::string EndAMPM() const;
    Value RSVPDate() const;
    Value RSVPTime() const;
    std::string RSVPHour() const;
    std::string RSVPMinute() const;
    std::string RSVPAMPM() const;

    /// The children of one kind, fetched on the first read; `reload` fetches them again.
    Ref<Object> children(EventChild child, bool reload = false);
    bool childrenLoaded(EventChild child) const;

    /// The totals of the view; assigning False to `AggregatesLoaded` has them read again.
    const EventFigures& figures();
    bool AggregatesLoaded() const { return figuresLoaded_; }
    void setAggregatesLoaded(bool loaded) { figuresLoaded_ = loaded; }
    const DonationStatistics& donations();

private:
    std::int32_t state_ = 0;
    bool figuresLoaded_ = false;
    std::unique_ptr<EventFigures> figures_;
    std::unique_ptr<DonationStatistics> donations_;
    std::unique_ptr<std::array<Ref<Object>, eventChildren>> children_;
};

/// Events under their keys.
class cEvents : public TypedCollection<cEvent> {
public:
    static constexpr std::string_view ClassName = "cEvents";
    const Members& members() const override;
};

} // namespace qmevents
