#include "store/reservation_check.h"

#include <algorithm>

#include "core/record_reader.h"
#include "core/reporting.h"
#include "store/child_tables.h"
#include "store/refusals.h"

namespace qmevents {

ReservationCheck::ReservationCheck(const cEventReservationActivities& lines)
{
    lines.each([this](const auto& line) { takeIn(line); });
    lines.eachDeleted([this](const auto& line) { superseded_.insert(line->Id()); });
}

void ReservationCheck::takeIn(const Ref<cEventReservationActivity>& line)
{
    if (!isWritten(*line)) return;
    written_.push_back(line);
    if (!line->IsNew()) superseded_.insert(line->Id());
}

ReservationCheck::Demand& ReservationCheck::demandFor(std::int32_t activityId)
{
    const auto [place, isNew] = demands_.try_emplace(activityId);
    Demand& demand = place->second;
    if (!isNew) return demand;
    demand.activity = findActivity(activityId);
    if (!demand.activity || demand.activity->QuantityType != activityQuantity::limited) {
        return demand;
    }
    // A well-sold activity has thousands of lines, so no records are made of them.
    RecordReader lines("SELECT eera.Id, eera.Quantity "
                       "FROM events_event_reservations_activities eera "
                       "INNER JOIN events_event_reservations eer "
                       "ON eera.FKReservationId = eer.id WHERE FKActivityId=" +
                       literal(activityId, Kind::key));
    if (!lines.atEnd()) {
        const auto id = lines.column("Id");
        const auto quantity = lines.column("Quantity");
        for (; !lines.atEnd(); lines.next()) {
            const auto line = toInt32(id.value());
            const auto units = quantity.valueOr<std::int32_t>(0);
            demand.entered[line] = units;
            if (!superseded_.contains(line)) demand.units += units;
        }
    }
    for (const auto& line : written_) {
        if (line->FKActivityId == activityId) demand.units += line->Quantity;
    }
    return demand;
}

bool ReservationCheck::holdsFor(const cEventReservationActivity& line)
{
    const Demand& demand = demandFor(line.FKActivityId);
    if (!demand.activity) {
        refuse(std::string("The event activity no longer exists.") + lineBreak +
               deletedByAnotherUser);
        return false;
    }
    const auto stored = demand.entered.find(line.Id());
    const bool unchanged =
        !isWritten(line) && stored != demand.entered.end() && stored->second == line.Quantity;
    if (demand.activity->QuantityType == activityQuantity::limited && !unchanged) {
        const std::int64_t own = isWritten(line)                  ? line.Quantity
                                 : stored != demand.entered.end() ? stored->second
                                                                  : 0;
        const std::int64_t remaining =
            std::max<std::int64_t>(0, demand.activity->QuantityAvailable - (demand.units - own));
        if (line.Quantity > remaining) {
            refuse("The quantity entered exceeds the maximum remaining available for the "
                   "activity (" +
                   std::to_string(remaining) + ").");
            return false;
        }
    }
    if (line.Quantity < 1) {
        refuse("The event reservation activity quantity is required.");
        return false;
    }
    return true;
}

} // namespace qmevents
