#pragma once

#include <string>

#include "automation/conversions.h"

namespace qmevents {

/// A text of the host's that need not be there: hosts answer Null or Empty for none.
inline std::string textOrNone(const Value& value)
{
    return value.isNull() ? std::string() : toText(value);
}

} // namespace qmevents
