#pragma once

#include <cstdint>
#include <string_view>

#include "automation/date.h"
#include "host/document/dialect.h"

namespace refhost {

/// The part of a date that `code` names: "yyyy", "q", "m", "y" (day of the year), "d", "w" (weekday
/// from Sunday = 1), "ww" (week of the year), "h", "n", "s".
std::int64_t partOf(qmevents::Date date, std::string_view code);
/// `count` parts later. Months keep the day or take the month's last one.
qmevents::Date addParts(qmevents::Date date, std::string_view code, std::int64_t count);
/// How often the part changes between two dates.
std::int64_t countParts(qmevents::Date from, qmevents::Date to, std::string_view code,
                        Dialect dialect);

} // namespace refhost
