#pragma once

#include <string>

#include "automation/collection.h"
#include "host/app/session_context.h"

namespace refhost {

class Donor;

/// Which donors are wanted.
class DonorCriteria : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "DonorCriteria";
    const Members& members() const override;

    /// Words that must all stand in name, e-mail address, telephone number, address, city or postal
    /// code; each means itself.
    std::string SearchString;
    std::string CustomWhere;   ///< A further condition in SQL.
    std::string CustomOrderBy; ///< What stands after ORDER BY; empty for last name, first name.
    std::int32_t MaxRows = 0;  ///< Largest number of donors; 0 for all.
};

/// The donors (Donor) that satisfy the criteria; those marked deleted are gone.
Ref<qmevents::Collection> findDonors(const SharedContext& context, const DonorCriteria& criteria);

/// Writes a donor, a new one as a new row whose key it then has. What is wrong with it has been
/// shown to the user when the answer is False. Error 70 without the right to change records.
bool saveDonor(const SharedContext& context, Donor& donor);

} // namespace refhost
