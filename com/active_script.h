#pragma once

#include "automation/object.h"

namespace qmevents::com {

/// A script engine of the system, by the language that it is given: what the schema installer runs
/// its scriptlets with.
Ref<Object> newActiveScript();

} // namespace qmevents::com
