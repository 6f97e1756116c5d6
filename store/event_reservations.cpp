// Reservations: columns, rules, messages, and how they are saved and deleted.
#include "store/child_story.h"
#include "store/child_tables.h"
#include "store/donations.h"
#include "store/event_table.h"
#include "store/events_manage.h"
#include "store/history_note.h"
#include "store/reservation_lines.h"

namespace qmevents {
namespace {
using C = cEventReservation;
}

const Table<cEventReservation>& reservationTable()
{
    static const auto table = audited<C>(
        "events_event_reservations", {
                                         column("FKEventId", Kind::key, &C::FKEventId),
                                         column("FKDonorId", Kind::key, &C::FKdonorId),
                                         column("ReservationDate", Kind::date, &C::ReservationDate),
                                         column("Description", Kind::text, &C::Description),
                                         column("AmountPaid", Kind::number, &C::AmountPaid),
                                     });
    return table;
}

namespace {

constexpr Rule<C> rulesOfDonor[] = {
    {lacksEvent, eventRequired},
    {[](const C& one) { return one.FKdonorId < 1; }, "The reservation donor is required."},
    {[](const C& one) { return !host().modules().donor().donor(one.FKdonorId); },
     "The reservation donor no longer exists.\r\nIt may have been deleted by another user."},
    {[](const C& one) { return !one.ReservationDate->hasDate(); },
     "The reservation date is required."},
};

bool hasValidLines(C& reservation)
{
    const auto lines = reservation.Activities();
    if (!lines) return false; // told
    if (lines->Count() > 0) return linesAreValid(*lines);
    refuse("Reservation must include at least one activity.");
    return false;
}

void tell(const HistoryNote& note, const C& reservation)
{
    if (const auto event = findEvent(reservation.FKEventId)) {
        addHistoryNote(note, reservation.FKdonorId, *event, reservation.ReservationDate);
    }
}

const ChildStory<C>& story()
{
    static const ChildStory<C> story{
        {.updateMethod = "UpdateEventReservation",
         .thing = "event reservation",
         .idName = "reservationid",
         .cascade =
             [](const std::string& id) {
                 return std::vector{
                     "DELETE FROM events_event_reservations_activities WHERE FKReservationId = " +
                         id,
                     "DELETE FROM events_event_reservations WHERE Id = " + id};
             }},
        reservationTable,
        [](C& reservation) {
            return rulesHold(rulesOfDonor, reservation) && hasValidLines(reservation);
        },
        [](const C&) { return true; },
        [](C& reservation, bool) { return saveLines(reservation); },
        [](const C& reservation) { tell(reservationAdded, reservation); }};
    return story;
}

void releaseDonations(std::int32_t reservationId, bool deleteThem)
{
    const std::string id = std::to_string(reservationId);
    if (deleteThem) {
        deleteDonationsOf({"SELECT Id FROM donor_gifts WHERE FKReservationId= " + id});
    } else {
        host().document().execute("UPDATE donor_gifts SET FKReservationId = 0 "
                                  "WHERE FKReservationId=" +
                                  id);
    }
}

} // namespace

Ref<cEventReservation> EventsManage::GetNewEventReservation(std::int32_t EventId)
{
    return newChild<C>(EventId);
}

bool EventsManage::UpdateEventReservation(const Ref<cEventReservation>& EventReservation,
                                          bool Validate)
{
    return updateChild(story(), EventReservation, Validate);
}

bool EventsManage::ValidateEventReservation(const Ref<cEventReservation>& EventReservation)
{
    return validateChild(story(), EventReservation);
}

bool EventsManage::DeleteEventReservation(std::int32_t EventId, std::int32_t EventReservationId,
                                          bool AddDeleteInteraction, bool LockEvent,
                                          bool DeleteDonations)
{
    Ref<C> removed;
    return deleteChild(story(), EventId, EventReservationId,
                       {.lockEvent = LockEvent,
                        .before =
                            [&] {
                                if (AddDeleteInteraction) {
                                    removed = findReservation(EventReservationId);
                                }
                                releaseDonations(EventReservationId, DeleteDonations);
                            },
                        .after =
                            [&] {
                                if (removed) tell(reservationRemoved, *removed);
                            }});
}

} // namespace qmevents
