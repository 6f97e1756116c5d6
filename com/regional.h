#pragma once

#include "automation/locale.h"

namespace qmevents::com {

/// How the present Windows user writes dates and amounts, as the system's regional settings say;
/// what these leave out keeps its usual form.
Locale userLocale();

} // namespace qmevents::com
