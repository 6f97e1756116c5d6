// Removing a donor whom the host deletes from all events.
#include "core/reporting.h"
#include "store/events_manage.h"
#include "store/list_manage.h"
#include "store/refusals.h"

namespace qmevents {

bool EventsManage::DeleteDonorFromEvents(std::int32_t DonorId, bool DeleteDonations)
{
    return reported([&] {
        if (!isGivenTo(DonorId >= 1, "DeleteDonorFromEvents", "donor id")) return false;
        const auto lists = listManage();
        const auto coordinator = refCast<cEventCoordinator>(lists->GetNewItem("eventcoordinator"));
        coordinator->FKdonorId = DonorId;
        if (!lists->DeleteEventCoordinator(coordinator)) return false;

        // Nothing stands in the history of a donor who goes away, and no event is locked. The first
        // failure, which has been shown, ends it; a later call goes on with what is left.
        const auto participations = GetEventParticipants({}, DonorId);
        if (!participations) return false;
        bool removed = true;
        participations->each([&](const auto& one) {
            removed = removed && DeleteEventParticipant(one->FKEventId, one->Id(), false, false);
        });
        if (!removed) return false;
        const auto reservations = GetEventReservations({}, DonorId);
        if (!reservations) return false;
        reservations->each([&](const auto& one) {
            removed = removed && DeleteEventReservation(one->FKEventId, one->Id(), false, false,
                                                        DeleteDonations);
        });
        return removed;
    });
}

} // namespace qmevents
