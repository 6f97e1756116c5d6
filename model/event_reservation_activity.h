#pragma once

#include <optional>
#include <set>

#include "model/entity.h"
#include "model/stored_fields.h"
#include "model/typed_collection.h"

namespace qmevents {

/// One line of a reservation: an activity with the price and the quantity agreed. Most of its
/// properties leave it clean; whoever edits a line assigns its notes to have it saved.
class cEventReservationActivity : public Entity, public AuditFields {
public:
    static constexpr std::string_view ClassName = "cEventReservationActivity";
    const Members& members() const override;

    /// Anyone may assign the key, which leaves the line clean: a new line takes the temporary key
    /// of its collection.
    void setId(std::int32_t id) { assignId(id); }

    std::int32_t FKReservationId = 0;
    std::int32_t FKdonorId = 0; ///< The donor who reserved.
    std::string DonorName;
    bool DonorExists = false;
    std::int32_t FKActivityId = 0;
    Currency Price;
    std::int32_t Quantity = 0;
    Tracked<std::string> Notes{*this};

    /// The activity's name: the one assigned, or else that of the activity in the store, empty
    /// when it is gone. A failed read is thrown, here and in `Sponsorship`.
    std::string ActivityName() const;
    void setActivityName(const std::string& name) { activityName_ = name; }
    /// Whether the activity is a sponsorship: the value assigned, or else that of the activity in
    /// the store.
    bool Sponsorship() const;
    void setSponsorship(bool sponsorship) { sponsorship_ = sponsorship; }

    /// What was entered for the activity's fields (cEventReservationActivityField).
    Ref<Collection> ReservationFieldValues() const { return values_.get(); }
    void setReservationFieldValues(const Ref<Collection>& values);

    Currency amount() const { return Price * Quantity; }
    /// Makes this line a copy of `Master`, key and values included; the copy has values of its
    /// own.
    void CopyFrom(const Ref<cEventReservationActivity>& Master);

    std::string displayName() const { return ActivityName(); }

private:
    friend class StoreAccess;
    // What a line needs to know of its activity, read once.
    struct KnownActivity {
        std::int32_t id;
        std::string name;
        bool sponsorship;
    };
    const KnownActivity& activity() const;

    std::string activityName_;
    std::optional<bool> sponsorship_;
    mutable std::optional<KnownActivity> activity_;
    StoredFields values_;
};

/// Reservation lines under their keys.
class cEventReservationActivities : public TypedCollection<cEventReservationActivity> {
public:
    static constexpr std::string_view ClassName = "cEventReservationActivities";
    const Members& members() const override;

    Currency TotalExpected() const;    ///< Sum of price times quantity.
    Currency TotalSponsorship() const; ///< The same over the lines of sponsorships.

    /// Sum of the quantities of the lines for which `counts` is true; error 6 beyond the range.
    template <typename Counts>
    std::int32_t units(Counts counts) const
    {
        std::int64_t total = 0;
        each([&](const auto& line) { total += counts(*line) ? line->Quantity : 0; });
        return checkedCount(total);
    }
    /// Adds the keys of the activities that the lines are about.
    void gatherActivities(std::set<std::int32_t>& activityIds) const;

private:
    static std::int32_t checkedCount(std::int64_t count);
};

} // namespace qmevents
