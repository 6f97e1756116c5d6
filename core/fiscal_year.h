#pragma once

#include <string>

#include "automation/value.h"

namespace qmevents {

/// The first day of the fiscal year that holds today, given the month and day on which fiscal years
/// start. What is no valid month and day counts as 1 January.
Date fiscalYearStart(const Value& startMonth, const Value& startDay);

/// `text` with "{CURRENTFISCALYEARSTART}", "{CURRENTFISCALYEAREND}", "{PREVIOUSFISCALYEARSTART}"
/// and
/// "{PREVIOUSFISCALYEAREND}" replaced by date literals of the open database. A year ends with its
/// last second.
std::string withFiscalYears(const std::string& text, const Value& startMonth,
                            const Value& startDay);

} // namespace qmevents
