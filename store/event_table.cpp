#include "store/event_table.h"

#include "store/audit.h"

namespace qmevents {

const Table<cEvent>& eventTable()
{
    static const auto table = audited<cEvent>(
        "events_event_info", {
                                 column("Name", Kind::text, &cEvent::Name),
                                 column("Description", Kind::text, &cEvent::Description),
                                 column("FKLocationId", Kind::number, &cEvent::FKLocationId),
                                 column("StartDateTime", Kind::date, &cEvent::StartDateTime),
                                 column("EndDateTime", Kind::date, &cEvent::EndDateTime),
                                 column("RSVPDateTime", Kind::date, &cEvent::RSVPDateTime),
                                 column("MaxCapacity", Kind::number, &cEvent::MaxCapacity),
                                 column("MinCapacity", Kind::number, &cEvent::MinCapacity),
                                 column("FKCategoryId", Kind::number, &cEvent::FKCategoryId),
                                 column("FKStatusId", Kind::number, &cEvent::FKStatusId),
                                 column("FKCoordinatorId", Kind::number, &cEvent::FKCoordinatorId),
                                 column("RevenueGoal", Kind::number, &cEvent::RevenueGoal),
                                 column("AttendanceGoal", Kind::number, &cEvent::AttendanceGoal),
                                 column("FKFundId", Kind::key, &cEvent::FKFundId),
                                 column("FKCampaignId", Kind::key, &cEvent::FKCampaignId),
                                 column("FKAppealId", Kind::key, &cEvent::FKAppealId),
                                 column("Notes", Kind::text, &cEvent::Notes),
                             });
    return table;
}

} // namespace qmevents
