#pragma once

#include <optional>

#include "model/entity.h"
#include "model/event_reservation_activity.h"
#include "model/stored_fields.h"
#include "model/typed_collection.h"

namespace qmevents {

/// How the units of an activity are counted.
namespace activityQuantity {
constexpr std::int16_t limited = 0; ///< No more can be reserved than there are.
constexpr std::int16_t counted = 1;
} // namespace activityQuantity

/// One thing that can be reserved at an event: a ticket, a table, a sponsorship. Its audit fields
/// mark it dirty too, unlike those of all other records.
class cEventActivity : public Entity {
public:
    static constexpr std::string_view ClassName = "cEventActivity";
    const Members& members() const override;

    Tracked<std::int32_t> FKEventId{*this};
    Tracked<std::string> Name{*this};
    Tracked<std::string> Description{*this};
    Tracked<Currency> ListPrice{*this};
    Tracked<Currency> Cost{*this};
    Tracked<std::int32_t> QuantityAvailable{*this};
    Tracked<bool> Sponsorship{*this};
    Tracked<std::int16_t> QuantityType{*this}; ///< 0 counted and limited, 1 only counted.
    Tracked<std::int32_t> FKFundId{*this};
    Tracked<std::int32_t> FKCampaignId{*this};
    Tracked<std::int32_t> FKAppealId{*this};
    Tracked<std::int32_t> CreateUser{*this};
    Tracked<Date> CreateDate{*this};
    Tracked<std::int32_t> LastUpdateUser{*this};
    Tracked<Date> LastUpdateDate{*this};

    /// What is asked of whoever reserves the activity (cEventActivityReservationField), in order.
    Ref<Collection> ReservationFields() const { return fields_.get(); }
    void setReservationFields(const Ref<Collection>& fields);
    std::string ReservationFieldSummary() const; ///< The fields' names, joined with ", ".

    /// The reservation lines that use the activity, fetched on the first read. Nothing after a
    /// failure, which has been reported.
    Ref<cEventReservationActivities> Reservations();
    bool ReservationsLoaded() const { return static_cast<bool>(reservations_); }
    /// Units reserved, without those of the line `reservationActivityId`, or else without those of
    /// the reservation `reservationId`. Error 91 when the lines cannot be read.
    std::int32_t QuantityInUse(const std::optional<std::int32_t>& reservationActivityId = {},
                               const std::optional<std::int32_t>& reservationId = {});

    std::string displayName() const { return Name; }

private:
    friend class StoreAccess;
    StoredFields fields_;
    Ref<cEventReservationActivities> reservations_;
};

/// Activities under their keys.
class cEventActivities : public TypedCollection<cEventActivity> {
public:
    static constexpr std::string_view ClassName = "cEventActivities";
    const Members& members() const override;

    Currency PotentialRevenue() const; ///< Sum of list price times quantity available.
};

} // namespace qmevents
