#pragma once

#include "com/platform.h"

namespace qmevents::com {

/// The factory of the creatable class `classId`, as DllGetClassObject hands it out. Factories may
/// be used from any thread; what they make belongs to the thread that asked.
HRESULT classFactory(REFCLSID classId, REFIID id, void** result);

} // namespace qmevents::com
