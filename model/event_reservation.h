#pragma once

#include "model/entity.h"
#include "model/event_reservation_activity.h"
#include "model/typed_collection.h"

namespace qmevents {

/// A donor's order of activities at an event. What was paid on it directly stands in the
/// reservation; gifts linked to it in the host's donation module are counted beside that.
class cEventReservation : public Entity, public AuditFields {
public:
    static constexpr std::string_view ClassName = "cEventReservation";
    const Members& members() const override;

    std::int32_t FKEventId = 0;
    std::string EventName;            ///< Filled for lists.
    std::int32_t EventFKStatusId = 0; ///< Filled for lists.
    Tracked<std::int32_t> FKdonorId{*this};
    Tracked<Date> ReservationDate{*this};
    Tracked<std::string> Description{*this};
    Tracked<Currency> AmountPaid{*this}; ///< Paid outside the donation module.

    /// The lines, fetched on the first read. Nothing after a failure, which has been reported.
    Ref<cEventReservationActivities> Activities();
    bool ActivitiesLoaded() const { return static_cast<bool>(activities_); }
    /// The lines; error 91 when they cannot be read.
    cEventReservationActivities& lines();

    /// The host's donations linked to the reservation, kept until `ResetPayments`. A reservation
    /// that has no key yet has none.
    Ref<Object> Payments();
    void ResetPayments() { payments_ = {}; }
    Currency DonationPaymentsAmount(); ///< Sum of `DonationAmount` over the payments.
    Currency TotalPaid();              ///< `AmountPaid` and the donations together.

    /// The description, or the event's name when there is none.
    std::string displayName() const;

private:
    friend class StoreAccess;
    friend class cEventReservations;
    Ref<cEventReservationActivities> activities_;
    Ref<Object> payments_;
};

/// Reservations under their keys.
class cEventReservations : public TypedCollection<cEventReservation> {
public:
    static constexpr std::string_view ClassName = "cEventReservations";
    const Members& members() const override;

    Currency TotalExpected() const;
    Currency TotalSponsorship() const;
    Currency TotalPaid() const; ///< Sum of `AmountPaid`; donations are left out on purpose.
    std::int32_t TotalActivities() const; ///< Number of distinct activities reserved.

private:
    friend class StoreAccess;
    // Fetches the lines of all reservations of an event at once where several are missing.
    void fetchLines() const;

    std::int32_t eventId_ = 0; // whose reservations were read; 0 when not those of one event
};

} // namespace qmevents
