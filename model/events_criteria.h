#pragma once

#include "automation/members.h"

namespace qmevents {

/// The filters of an event search. Every field is Empty at first, which means no filter.
class cEventsCriteria : public DescribedObject {
public:
    static constexpr std::string_view ClassName = "cEventsCriteria";
    const Members& members() const override;

    Value EventId;
    Value FKLocationId;
    Value FKCategoryId;
    Value FKStatusId;
    Value FKCoordinatorId;
    Value FKFundId;
    Value FKCampaignId;
    Value FKAppealId;
    Value SearchString;
    Value IncludeDeleted;
    Value CustomWhere;
    Value CustomOrderBy;
    Value MaxRows;
};

} // namespace qmevents
