#pragma once

#include "model/event.h"
#include "store/table.h"

namespace qmevents {

/// The table of events, `events_event_info`.
const Table<cEvent>& eventTable();

} // namespace qmevents
