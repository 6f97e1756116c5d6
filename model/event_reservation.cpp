#include "model/event_reservation.h"

#include <map>

#include "automation/error.h"
#include "core/host.h"
#include "core/record_reader.h"
#include "model/event_source.h"

namespace qmevents {
namespace {

constexpr const char* giftAmount = "DonationAmount";

Currency sumOfRecords(const Ref<Object>& recordSet)
{
    Currency sum;
    RecordReader gifts(recordSet);
    if (gifts.atEnd()) return sum;
    const auto amount = gifts.column(giftAmount);
    for (; !gifts.atEnd(); gifts.next()) sum += amount.valueOr(Currency());
    call(recordSet, "MoveFirst"); // for whoever reads the payments next
    return sum;
}

Currency sumOfGifts(Object& gifts)
{
    Currency sum;
    Value gift;
    for (const auto walk = gifts.enumerate(); walk->next(gift);) {
        const Value amount = get(toObject(gift), giftAmount);
        if (!amount.isNull()) sum += toCurrency(amount);
    }
    return sum;
}

} // namespace

const Members& cEventReservation::members() const
{
    using C = cEventReservation;
    static const Members table =
        describe<C>("A donor's order of activities at an event.")
            .with(entityFlags<C>)
            .stored("FKEventId", &C::FKEventId, leavesClean, "Key of the event.")
            .stored("EventName", &C::EventName, leavesClean, "The event's name, for lists.")
            .stored("EventFKStatusId", &C::EventFKStatusId, leavesClean,
                    "The event's status, for lists.")
            .stored("FKdonorId", &C::FKdonorId, marksDirty, "Donor who reserved.")
            .stored("ReservationDate", &C::ReservationDate, marksDirty, "Day of the reservation.")
            .stored("Description", &C::Description, marksDirty, "Description.")
            .stored("AmountPaid", &C::AmountPaid, marksDirty,
                    "Paid on the reservation itself, outside the donation module.")
            .readOnly("ActivitiesLoaded", &C::ActivitiesLoaded,
                      "Whether Activities has been fetched.")
            .readOnly("Activities", &C::Activities, "The lines, fetched on the first read.")
            .readOnly("Payments", &C::Payments,
                      "The host's donations linked to the reservation, latest first.")
            .readOnly("DonationPaymentsAmount", &C::DonationPaymentsAmount,
                      "Sum of the linked donations.")
            .readOnly("TotalPaid", &C::TotalPaid, "AmountPaid and the linked donations together.")
            .with(auditFields<C>)
            .method("ResetPayments", &C::ResetPayments, "Has the payments read again.");
    return table;
}

const Members& cEventReservations::members() const
{
    using C = cEventReservations;
    static const Members table =
        describe<C>("Reservations.")
            .with(collectionMembers<C>)
            .with(joinsNames<C>)
            .readOnly("TotalExpected", &C::TotalExpected, "Sum of the lines' amounts.")
            .readOnly("TotalPaid", &C::TotalPaid, "Sum of AmountPaid, donations left out.")
            .readOnly("TotalSponsorship", &C::TotalSponsorship,
                      "Sum of the amounts of sponsorship lines.")
            .readOnly("TotalActivities", &C::TotalActivities,
                      "Number of distinct activities reserved.");
    return table;
}

Ref<cEventReservationActivities> cEventReservation::Activities()
{
    if (!activities_) {
        activities_ = EventSource::ofRoot().GetEventReservationActivities(Id(), {});
    }
    return activities_;
}

cEventReservationActivities& cEventReservation::lines()
{
    if (!Activities()) {
        throw Error::with(ErrorNumber::objectNotSet, "the reservation's activities were not read");
    }
    return *activities_;
}

Ref<Object> cEventReservation::Payments()
{
    if (payments_) return payments_;
    // Gifts that belong to no reservation have the key 0, so it must not be asked for.
    if (Id() == 0) return makeRef<Collection>();
    payments_ = host().modules().donation().donationsWhere(
        "FKReservationId = " + literal(Id(), Kind::number), "ActualDate DESC");
    return payments_;
}

Currency cEventReservation::DonationPaymentsAmount()
{
    const auto payments = Payments();
    if (!payments) return {};
    // Hosts answer with the gifts, or with the record set in which they found them.
    const bool areRecords = payments->memberId("EOF") != unknownMember;
    return areRecords ? sumOfRecords(payments) : sumOfGifts(*payments);
}

Currency cEventReservation::TotalPaid() { return AmountPaid.get() + DonationPaymentsAmount(); }

std::string cEventReservation::displayName() const
{
    return Description->empty() ? EventName : Description.get();
}

void cEventReservations::fetchLines() const
{
    const auto isMissing = [this](const cEventReservation& one) {
        return one.FKEventId == eventId_ && !one.ActivitiesLoaded() && !one.IsNew();
    };
    if (eventId_ == 0 || countIf(isMissing) < 2) return;
    std::map<std::int32_t, Ref<cEventReservationActivities>> byReservation;
    EventSource::ofRoot().findLinesOfReservations(eventId_)->each(
        [&](const Ref<cEventReservationActivity>& line) {
            auto& lines = byReservation[line->FKReservationId];
            if (!lines) lines = makeRef<cEventReservationActivities>();
            lines->add(line);
        });
    each([&](const Ref<cEventReservation>& one) {
        if (!isMissing(*one)) return;
        auto& lines = byReservation[one->Id()];
        one->activities_ = lines ? lines : makeRef<cEventReservationActivities>();
    });
}

Currency cEventReservations::TotalExpected() const
{
    fetchLines();
    return sum([](cEventReservation& one) { return one.lines().TotalExpected(); });
}

Currency cEventReservations::TotalSponsorship() const
{
    fetchLines();
    return sum([](cEventReservation& one) { return one.lines().TotalSponsorship(); });
}

Currency cEventReservations::TotalPaid() const
{
    return sum([](const cEventReservation& one) { return one.AmountPaid.get(); });
}

std::int32_t cEventReservations::TotalActivities() const
{
    fetchLines();
    std::set<std::int32_t> activityIds;
    each([&](const auto& one) { one->lines().gatherActivities(activityIds); });
    return static_cast<std::int32_t>(activityIds.size());
}

} // namespace qmevents
