#pragma once

#include <string>
#include <utility>

#include "model/entity.h"
#include "model/event_activity.h"
#include "model/event_participant.h"
#include "model/event_reservation.h"
#include "model/lookup_items.h"

namespace qmevents {

/// The store's door to records: loads fields without marking them and sets the flags that nobody
/// else may write.
class StoreAccess {
public:
    /// Writes a field silently, as loading does.
    template <typename T>
    static void load(Tracked<T>& field, T value)
    {
        field.value_ = std::move(value);
    }
    template <typename T>
    static void load(T& field, T value)
    {
        field = std::move(value);
    }

    static void setId(Entity& entity, std::int32_t id) { entity.id_ = id; }
    /// A record that has not been stored yet.
    static void markNew(Entity& entity)
    {
        entity.isNew_ = true;
        entity.isDirty_ = false;
    }
    /// A record whose row has been inserted under `id`; what belongs to it may still be unwritten.
    static void markInserted(Entity& entity, std::int32_t id)
    {
        entity.id_ = id;
        entity.isNew_ = false;
        entity.isDirty_ = true;
    }
    /// A record as it stands in the database: after loading or saving.
    static void markStored(Entity& entity)
    {
        entity.isNew_ = false;
        entity.isDirty_ = false;
    }
    /// Whether a record that has been inserted has still to be told of.
    static bool& isUntold(Entity& entity) { return entity.isUntold_; }
    static void loadDisplay(cEventCoordinator& coordinator, std::string display)
    {
        coordinator.display_.set(std::move(display));
    }
    static void loadName(cEventParticipant& participant, std::string name)
    {
        participant.name_.set(std::move(name));
    }

    /// The fields of an activity, or the values of a line, which stand in a document.
    static StoredFields& fields(cEventActivity& activity) { return activity.fields_; }
    static StoredFields& fields(cEventReservationActivity& line) { return line.values_; }
    static const StoredFields& fields(const cEventActivity& activity) { return activity.fields_; }
    static const StoredFields& fields(const cEventReservationActivity& line)
    {
        return line.values_;
    }
    /// What a line knows of its activity without asking: nothing else than its key at first.
    static auto& knownActivity(cEventReservationActivity& line)
    {
        using Known = cEventReservationActivity::KnownActivity;
        if (!line.activity_) line.activity_ = Known{line.FKActivityId, {}, false};
        return *line.activity_;
    }
    /// Tells the collection that it holds the reservations of this one event.
    static void setEvent(cEventReservations& reservations, std::int32_t eventId)
    {
        reservations.eventId_ = eventId;
    }
};

} // namespace qmevents
