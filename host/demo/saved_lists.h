#pragma once

#include "automation/object.h"

namespace refhost::demo {

/// Saves the lists that an event team would keep; `app` is a session's.
void saveLists(const qmevents::Ref<qmevents::Object>& app);

} // namespace refhost::demo
