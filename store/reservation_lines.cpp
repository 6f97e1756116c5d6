// Reservation lines: columns, rules, messages, and how they are saved and deleted. They are saved
// with their reservation; a line can also be saved on its own.
#include "store/reservation_lines.h"

#include "store/child_story.h"
#include "store/child_tables.h"
#include "store/events_manage.h"
#include "store/field_column.h"
#include "store/reservation_check.h"
#include "store/reservation_field_xml.h"

namespace qmevents {
namespace {
using C = cEventReservationActivity;
}

const Table<cEventReservationActivity>& reservationActivityTable()
{
    static const auto table =
        audited<C>("events_event_reservations_activities",
                   {
                       column("FKReservationId", Kind::key, &C::FKReservationId),
                       column("FKActivityId", Kind::key, &C::FKActivityId),
                       column("Quantity", Kind::number, &C::Quantity),
                       column("Price", Kind::number, &C::Price),
                       column("Notes", Kind::text, &C::Notes),
                       fieldColumn<C>(readReservationFieldValues, writeReservationFieldValues),
                   });
    return table;
}

namespace {

// The name of the key is misspelt on purpose.
constexpr ChildNames names{
    .updateMethod = "UpdateEventReservationActivity",
    .thing = "event reservation activity",
    .idName = "reservationativityid",
    .cascade = [](const std::string& id) {
        return std::vector{"DELETE FROM events_event_reservations_activities WHERE Id = " + id};
    }};

bool isLine(const Ref<C>& line)
{
    return isGivenTo(bool(line), names.updateMethod, std::string(names.thing) + " class");
}

bool hasActivity(const C& line)
{
    return isGivenTo(line.FKActivityId >= 1, names.updateMethod, "activity id");
}

bool hasReservation(const C& line)
{
    if (line.FKReservationId >= 1) return true;
    refuse("A valid reservation id is required.");
    return false;
}

bool isObject(const Ref<C>& line)
{
    if (line) return true;
    refuse("The Validate method requires a valid event reservation activity object");
    return false;
}

// Whether the rules hold; if not, the first broken one has been shown. What cannot be stored is
// thrown here, where the line's text is put together, before its reservation is written.
bool isValid(const Ref<C>& line, ReservationCheck& check)
{
    if (!isObject(line) || !check.holdsFor(*line)) return false;
    if (isWritten(*line)) static_cast<void>(reservationActivityTable().insertText(*line));
    return true;
}

void writeLine(C& line)
{
    writeRow(reservationActivityTable(), line);
    StoreAccess::markStored(line);
}

// Calls `visit` with each item as a line, with nothing for whatever else was put there by hand,
// until it answers false.
template <typename Visit>
bool allOf(const Collection& items, Visit visit)
{
    for (std::size_t i = 1; i <= items.size(); ++i) {
        const Value& item = items.at(i);
        if (!visit(item.isObject() ? refCast<C>(item.object()) : Ref<C>())) return false;
    }
    return true;
}

} // namespace

bool linesAreValid(const cEventReservationActivities& lines)
{
    ReservationCheck check(lines);
    return allOf(*lines.Items(), [&](const Ref<C>& line) { return isValid(line, check); });
}

bool saveLines(cEventReservation& reservation)
{
    const auto lines = reservation.Activities();
    if (!isGivenTo(bool(lines), "UpdateEventReservationActivities",
                   "event reservation activities class")) {
        return false;
    }
    const bool written = allOf(*lines->Items(), [&](const Ref<C>& line) {
        if (!isLine(line)) return false;
        line->FKReservationId = reservation.Id();
        if (!isWritten(*line)) return true;
        if (!hasActivity(*line)) return false;
        writeLine(*line);
        return true;
    });
    return written && allOf(*lines->DeletedItems(), [](const Ref<C>& line) {
               if (!isLine(line)) return false;
               if (line->IsNew()) return true; // was never stored
               if (!canBeDeleted(names, line->Id())) return false;
               runCascade(names, line->Id());
               return true;
           });
}

Ref<cEventReservationActivity> EventsManage::GetNewEventReservationActivity()
{
    auto line = makeRef<C>();
    StoreAccess::markNew(*line);
    return line;
}

Ref<cEventReservationActivityField> EventsManage::GetNewEventReservationActivityField()
{
    return makeRef<cEventReservationActivityField>();
}

bool EventsManage::UpdateEventReservationActivity(
    const Ref<cEventReservationActivity>& EventReservationActivity, bool Validate)
{
    return reported([&] {
        const auto& line = EventReservationActivity;
        if (!mayUpdateEvents() || !isLine(line) || !hasActivity(*line) || !hasReservation(*line)) {
            return false;
        }
        const auto reservation = findReservation(line->FKReservationId);
        const std::int32_t eventId = reservation ? reservation->FKEventId : 0;
        const RecordLock lock = lockEvent(eventId);
        if (Validate && !ValidateEventReservationActivity(line)) return false;
        if (!eventStillExists(eventId)) return false;
        writeLine(*line);
        return true;
    });
}

bool EventsManage::ValidateEventReservationActivity(
    const Ref<cEventReservationActivity>& EventReservationActivity)
{
    return reported([&] {
        if (!isObject(EventReservationActivity)) return false;
        ReservationCheck check(EventReservationActivity);
        return isValid(EventReservationActivity, check);
    });
}

bool EventsManage::DeleteEventReservationActivity(std::int32_t EventId,
                                                  std::int32_t EventReservationActivityId)
{
    return deleteChild(names, EventId, EventReservationActivityId);
}

} // namespace qmevents
