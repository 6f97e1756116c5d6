#include "model/event_activity.h"

#include "automation/error.h"
#include "model/event_source.h"
#include "model/reservation_fields.h"

namespace qmevents {
namespace {

using C = cEventActivity;

void describeStored(Describe<C>& table)
{
    table.stored("FKEventId", &C::FKEventId, marksDirty, "Key of the event.")
        .stored("Name", &C::Name, marksDirty, "Activity name.")
        .stored("Description", &C::Description, marksDirty, "Description.")
        .stored("ListPrice", &C::ListPrice, marksDirty, "Price of one unit.")
        .stored("Cost", &C::Cost, marksDirty, "What one unit costs the organisation.")
        .stored("QuantityAvailable", &C::QuantityAvailable, marksDirty, "Units on offer.")
        .readOnly("QuantityInUse", &C::QuantityInUse,
                  {optional("ReservationActivityId"), optional("ReservationId")},
                  "Units reserved, without those of the line or else the reservation named.")
        .stored("Sponsorship", &C::Sponsorship, marksDirty, "A sponsorship, not a ticket or item.")
        .stored("QuantityType", &C::QuantityType, marksDirty,
                "0: units are counted and limited; 1: only counted.")
        .stored("FKFundId", &C::FKFundId, marksDirty,
                "Fund that payments for the activity default to, 0 for none.")
        .stored("FKCampaignId", &C::FKCampaignId, marksDirty, "Campaign, 0 for none.")
        .stored("FKAppealId", &C::FKAppealId, marksDirty, "Appeal, 0 for none.");
}

void describeFieldsAndReservations(Describe<C>& table)
{
    table
        .property("ReservationFields", &C::ReservationFields, &C::setReservationFields,
                  "What is asked of whoever reserves: cEventActivityReservationField objects.",
                  marksDirty)
        .readOnly("ReservationFieldSummary", &C::ReservationFieldSummary,
                  "The names of the reservation fields, joined.")
        .readOnly("ReservationsLoaded", &C::ReservationsLoaded,
                  "Whether Reservations has been fetched.")
        .readOnly("Reservations", &C::Reservations,
                  "The reservation lines that use it, fetched on the first read.");
}

void describeAudit(Describe<C>& table)
{
    table.stored("CreateUser", &C::CreateUser, marksDirty, "Host user who created the record.")
        .stored("CreateDate", &C::CreateDate, marksDirty, "When it was created.")
        .stored("LastUpdateUser", &C::LastUpdateUser, marksDirty, "User of the last update.")
        .stored("LastUpdateDate", &C::LastUpdateDate, marksDirty, "When it was last updated.");
}

} // namespace

const Members& cEventActivity::members() const
{
    static const Members table = describe<C>("One thing that can be reserved at an event.")
                                     .with(entityFlags<C>)
                                     .with(describeStored)
                                     .with(describeFieldsAndReservations)
                                     .with(describeAudit);
    return table;
}

const Members& cEventActivities::members() const
{
    static const Members table =
        describe<cEventActivities>("Activities of events.")
            .with(collectionMembers<cEventActivities>)
            .with(joinsNames<cEventActivities>)
            .readOnly("PotentialRevenue", &cEventActivities::PotentialRevenue,
                      "Sum of list price times quantity available.");
    return table;
}

void cEventActivity::setReservationFields(const Ref<Collection>& fields)
{
    fields_.set(fields);
    markDirty();
}

std::string cEventActivity::ReservationFieldSummary() const
{
    std::string summary;
    bool first = true;
    fields_.each<cEventActivityReservationField>([&](const auto& field) {
        if (!first) summary += ", ";
        first = false;
        summary += field->Name;
    });
    return summary;
}

Ref<cEventReservationActivities> cEventActivity::Reservations()
{
    if (!reservations_) {
        reservations_ = EventSource::ofRoot().GetEventActivityReservations(Id(), {});
    }
    return reservations_;
}

std::int32_t cEventActivity::QuantityInUse(const std::optional<std::int32_t>& reservationActivityId,
                                           const std::optional<std::int32_t>& reservationId)
{
    const auto lines = Reservations();
    if (!lines) {
        // A guess would let an activity be reserved more often than there are units.
        throw Error::with(ErrorNumber::objectNotSet, "the activity's reservations were not read");
    }
    return lines->units([&](const cEventReservationActivity& line) {
        return reservationActivityId ? line.Id() != *reservationActivityId
                                     : line.FKReservationId != reservationId;
    });
}

Currency cEventActivities::PotentialRevenue() const
{
    return sum([](const cEventActivity& activity) {
        return activity.ListPrice.get() * activity.QuantityAvailable;
    });
}

} // namespace qmevents
