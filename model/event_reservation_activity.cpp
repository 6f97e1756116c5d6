#include "model/event_reservation_activity.h"

#include <utility>

#include "automation/error.h"
#include "model/event_activity.h"
#include "model/event_source.h"
#include "model/reservation_fields.h"

namespace qmevents {
namespace {

Ref<Collection> copyOf(const LateCollection& values)
{
    auto copies = makeRef<Collection>();
    values.each<cEventReservationActivityField>([&](const auto& value) {
        auto copy = makeRef<cEventReservationActivityField>();
        copy->FieldType = value->FieldType;
        copy->Name = value->Name;
        copy->Value = value->Value;
        appendValue(*copies, copy);
    });
    return copies;
}

} // namespace

const Members& cEventReservationActivity::members() const
{
    using C = cEventReservationActivity;
    static const Members table =
        describe<C>("One line of a reservation: an activity, its price and quantity.")
            .with(entityMarks<C>)
            .property("Id", &C::Id, &C::setId, "Key of the line.", leavesClean)
            .stored("FKReservationId", &C::FKReservationId, leavesClean, "Key of the reservation.")
            .stored("FKdonorId", &C::FKdonorId, leavesClean, "Donor who reserved.")
            .stored("DonorName", &C::DonorName, leavesClean, "That donor's display name.")
            .stored("DonorExists", &C::DonorExists, leavesClean,
                    "Whether the host still has that donor.")
            .stored("FKActivityId", &C::FKActivityId, leavesClean, "Key of the activity.")
            .property("ActivityName", &C::ActivityName, &C::setActivityName, "The activity's name.",
                      leavesClean)
            .stored("Price", &C::Price, leavesClean, "Price of one unit as agreed.")
            .stored("Quantity", &C::Quantity, leavesClean, "Units reserved.")
            .property("ReservationFieldValues", &C::ReservationFieldValues,
                      &C::setReservationFieldValues,
                      "What was entered for the activity's fields: "
                      "cEventReservationActivityField objects.",
                      marksDirty)
            .stored("Notes", &C::Notes, marksDirty, "Free notes.")
            .property("Sponsorship", &C::Sponsorship, &C::setSponsorship,
                      "Whether the activity is a sponsorship.", leavesClean)
            .with(auditFields<C>)
            .method("CopyFrom", &C::CopyFrom, {arg("Master")},
                    "Makes this line a copy of Master, key and values included.");
    return table;
}

const Members& cEventReservationActivities::members() const
{
    using C = cEventReservationActivities;
    static const Members table =
        describe<C>("Lines of reservations.")
            .with(collectionMembers<C>)
            .with(joinsNames<C>)
            .readOnly("TotalExpected", &C::TotalExpected, "Sum of price times quantity.")
            .readOnly("TotalSponsorship", &C::TotalSponsorship,
                      "Sum of price times quantity over the lines of sponsorships.");
    return table;
}

const cEventReservationActivity::KnownActivity& cEventReservationActivity::activity() const
{
    if (!activity_ || activity_->id != FKActivityId) {
        const auto found =
            FKActivityId == 0 ? nullptr : EventSource::ofRoot().findActivity(FKActivityId);
        activity_ = found ? KnownActivity{FKActivityId, found->Name, found->Sponsorship}
                          : KnownActivity{FKActivityId, {}, false};
    }
    return *activity_;
}

std::string cEventReservationActivity::ActivityName() const
{
    return activityName_.empty() ? activity().name : activityName_;
}

bool cEventReservationActivity::Sponsorship() const
{
    return sponsorship_ ? *sponsorship_ : activity().sponsorship;
}

void cEventReservationActivity::setReservationFieldValues(const Ref<Collection>& values)
{
    values_.set(values);
    markDirty();
}

void cEventReservationActivity::CopyFrom(const Ref<cEventReservationActivity>& Master)
{
    if (!Master) throw Error::with(ErrorNumber::objectNotSet, "CopyFrom needs a line");
    if (Master.get() == this) return;
    const cEventReservationActivity& master = *Master;
    setId(master.Id());
    static_cast<AuditFields&>(*this) = master;
    FKReservationId = master.FKReservationId;
    FKdonorId = master.FKdonorId;
    DonorName = master.DonorName;
    DonorExists = master.DonorExists;
    FKActivityId = master.FKActivityId;
    activityName_ = master.activityName_;
    sponsorship_ = master.sponsorship_;
    activity_ = master.activity_;
    Price = master.Price;
    Quantity = master.Quantity;
    Notes = master.Notes.get();
    values_.copyFrom(master.values_, copyOf);
    markDirty();
}

Currency cEventReservationActivities::TotalExpected() const
{
    return sum([](const cEventReservationActivity& line) { return line.amount(); });
}

Currency cEventReservationActivities::TotalSponsorship() const
{
    return sum([](const cEventReservationActivity& line) {
        return line.Sponsorship() ? line.amount() : Currency();
    });
}

void cEventReservationActivities::gatherActivities(std::set<std::int32_t>& activityIds) const
{
    each([&](const auto& line) { activityIds.insert(line->FKActivityId); });
}

std::int32_t cEventReservationActivities::checkedCount(std::int64_t count)
{
    if (!std::in_range<std::int32_t>(count)) throw Error(ErrorNumber::overflow);
    return static_cast<std::int32_t>(count);
}

} // namespace qmevents
