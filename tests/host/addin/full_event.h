#pragma once

#include <stdexcept>

#include "tests/host/addin/whole_host.h"

namespace refhost {

/// The keys of an event with something of everything.
struct FullEvent {
    std::int32_t event = 0, activity = 0, participant = 0, reservation = 0, line = 0, expense = 0,
                 task = 0;
};

/// Its rows in each table.
inline constexpr std::pair<const char*, int> rowsOfAFullEvent[] = {
    {"events_event_activities", 1},
    {"events_event_participants", 2},
    {"events_event_participants_groups", 2},
    {"events_event_reservations", 1},
    {"events_event_expenses", 1},
    {"events_event_tasks", 1},
    {"donor_gifts", 1}};

/// Enters records of events through the add-in's objects, for the donors 1 and 2.
class EventFiller {
public:
    explicit EventFiller(const WholeHost& host) : host_(host) {}

    /// Makes the donors and an invitation group.
    void prepare() const
    {
        for (const char* name : {"Lee, Kim", "Ode, Ann"}) {
            host_.execute("INSERT INTO donor_donors (display) VALUES ('" + std::string(name) +
                          "')");
        }
        const auto group = toObject(call(host_.lists(), "GetNewItem", "eventinvitationgroup"));
        put(group, "Name", "Press");
        call(host_.lists(), "UpdateEventInvitationGroup", group);
    }
    /// Throws when anything of it is not saved.
    FullEvent fill() const
    {
        FullEvent made;
        const auto event = newEvent();
        made.event = saved("UpdateEvent", event);
        made.activity = saved("UpdateEventActivity", newActivity(made.event));
        for (const int donor : {1, 2}) {
            made.participant = saved("UpdateEventParticipant", newParticipant(made.event, donor));
        }
        const auto reservation = newReservation(made.event, made.activity);
        made.reservation = saved("UpdateEventReservation", reservation);
        made.line = idOf(toObject(call(getObject(reservation, "Activities"), "Item", 1)));
        made.expense = saved("UpdateEventExpense", newExpense(made.event));
        made.task = saved("UpdateEventTask", newTask(made.event));
        for (const char* link : {"FKEventId", "FKReservationId"}) {
            const bool toEvent = link == std::string("FKEventId");
            host_.execute("INSERT INTO donor_gifts (donorId, deleted, " + std::string(link) +
                          ") VALUES (1, 0, " +
                          std::to_string(toEvent ? made.event : made.reservation) + ")");
        }
        put(event, "Notes", "complete");
        saved("UpdateEvent", event);
        return made;
    }

    Ref<Object> newEvent() const
    {
        return with("GetNewEvent", 0,
                    {{"Name", "Gala"}, {"StartDateTime", qmevents::Date::of(2026, 12, 1, 18)}});
    }
    Ref<Object> newActivity(std::int32_t event) const
    {
        return with("GetNewEventActivity", event, {{"Name", "Seat"}, {"QuantityAvailable", 100}});
    }
    Ref<Object> newParticipant(std::int32_t event, std::int32_t donor) const
    {
        const auto one = toObject(call(host_.store(), "GetNewEventParticipant", event, donor));
        call(one, "AddInvitationGroup", 1, "Press");
        return one;
    }
    Ref<Object> newReservation(std::int32_t event, std::int32_t activity) const
    {
        const auto reservation =
            with("GetNewEventReservation", event,
                 {{"FKdonorId", 1}, {"ReservationDate", qmevents::Date::of(2026, 11, 21)}});
        const auto line = toObject(call(host_.store(), "GetNewEventReservationActivity"));
        put(line, "FKActivityId", activity);
        put(line, "Quantity", 1);
        call(getObject(reservation, "Activities"), "Add", line, 0);
        return reservation;
    }
    Ref<Object> newExpense(std::int32_t event) const
    {
        return with("GetNewEventExpense", event,
                    {{"Description", "Flowers"},
                     {"Amount", 5},
                     {"ExpenseDate", qmevents::Date::of(2026, 11, 21)}});
    }
    Ref<Object> newTask(std::int32_t event) const
    {
        return with("GetNewEventTask", event,
                    {{"Name", "Call"}, {"DueDateTime", qmevents::Date::of(2026, 11, 21)}});
    }

private:
    static std::int32_t idOf(const Ref<Object>& record)
    {
        return qmevents::toInt32(get(record, "Id"));
    }
    Ref<Object> with(const char* operation, std::int32_t event,
                     const std::vector<std::pair<const char*, Value>>& cells) const
    {
        const auto record = toObject(event == 0 ? call(host_.store(), operation)
                                                : call(host_.store(), operation, event));
        for (const auto& [name, value] : cells) put(record, name, value);
        return record;
    }
    std::int32_t saved(const char* operation, const Ref<Object>& record) const
    {
        if (!qmevents::toBool(call(host_.store(), operation, record))) {
            throw std::runtime_error(operation);
        }
        return idOf(record);
    }

    const WholeHost& host_;
};

} // namespace refhost
