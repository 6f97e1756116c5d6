#pragma once

#include <string>
#include <vector>

#include "automation/date.h"
#include "host/demo/random.h"
#include "host/demo/row_writer.h"

namespace refhost::demo {

struct Donor {
    enum class Kind { person, household, organisation };

    std::int32_t id = 0;
    Kind kind = Kind::person;
    qmevents::Date since; ///< Nothing happens with the donor before.
    int generosity = 1;   ///< How often the donor gives and comes, against others: 1 to 9.
};

/// Writes `count` donors who became known in the ten years before `today`, the oldest first.
std::vector<Donor> makeDonors(RowWriter& rows, Random random, int count, qmevents::Date today);

} // namespace refhost::demo
