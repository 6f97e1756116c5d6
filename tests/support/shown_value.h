#pragma once

#include <string>

#include "automation/value.h"

namespace qmevents::testing {

/// A value as the logs of tests show it.
std::string shown(const Value& value);

} // namespace qmevents::testing
