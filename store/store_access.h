#pragma once

#include <string>
#include <utility>

#include "model/entity.h"
#include "model/event_activity.h"
#include "model/event_participant.h"
#include "model/event_reservation_activity.h"
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
    /// A record as it stands in the database: after loading or saving.
    static void markStored(Entity& entity)
    {
        entity.isNew_ = false;
        entity.isDirty_ = false;
    }
    static void loadDisplay(cEventCoordinator& coordinator, std::string display)
    {
        coordinator.display_ = std::move(display);
    }
    static void loadName(cEventParticipant& participant, std::string name)
    {
        participant.name_ = std::move(name);
    }

    /// The fields of an activity, or the values of a line, with the document that they came from.
    static void loadFields(cEventActivity& activity, Ref<Collection> fields, std::string document)
    {
        activity.fields_.set(std::move(fields));
        activity.storedFields_ = std::move(document);
    }
    static void loadFields(cEventReservationActivity& line, Ref<Collection> values,
                           std::string document)
    {
        line.values_.set(std::move(values));
        line.storedValues_ = std::move(document);
    }
    /// The document as it was loaded.
    static const std::string& storedFields(const cEventActivity& activity)
    {
        return activity.storedFields_;
    }
    static const std::string& storedFields(const cEventReservationActivity& line)
    {
        return line.storedValues_;
    }
};

} // namespace qmevents
