#include "model/events_criteria.h"

#include "automation/describe.h"

namespace qmevents {

const Members& cEventsCriteria::members() const
{
    using C = cEventsCriteria;
    static const Members table =
        describe<C>("The filters of an event search; an empty field is no filter.")
            .property("EventId", &C::EventId, "Only this event.")
            .property("FKLocationId", &C::FKLocationId, "Only events at this location.")
            .property("FKCategoryId", &C::FKCategoryId, "Only this category.")
            .property("FKStatusId", &C::FKStatusId, "Only this status.")
            .property("FKCoordinatorId", &C::FKCoordinatorId, "Only this coordinator.")
            .property("FKFundId", &C::FKFundId, "Only events with this fund.")
            .property("FKCampaignId", &C::FKCampaignId, "Only this campaign.")
            .property("FKAppealId", &C::FKAppealId, "Only this appeal.")
            .property("SearchString", &C::SearchString,
                      "Text that the name must hold; each blank stands for any text.")
            .property("IncludeDeleted", &C::IncludeDeleted,
                      "Also deleted events; a deleted event leaves no row, so it adds none.")
            .property("CustomWhere", &C::CustomWhere, "A further SQL condition.")
            .property("CustomOrderBy", &C::CustomOrderBy, "SQL ordering.")
            .property("MaxRows", &C::MaxRows, "Largest number of rows.");
    return table;
}

} // namespace qmevents
