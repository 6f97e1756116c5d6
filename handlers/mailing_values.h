#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "automation/value.h"
#include "store/started_mailing.h"

namespace qmevents {

/// Takes one value of a field for a donor.
using MailingValueSink =
    std::function<void(std::int32_t donorId, const char* field, const Value& value)>;

/// Reads what a mailing merges for all of `donors`, in two or three statements however many they
/// are. What is blank is left out; amounts are for those who may see donations alone.
void readMailingValues(const StartedMailing& mailing, const std::vector<std::int32_t>& donors,
                       const MailingValueSink& sink);

} // namespace qmevents
