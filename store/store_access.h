#pragma once

#include <string>
#include <utility>

#include "model/entity.h"
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
};

} // namespace qmevents
