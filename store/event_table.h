#pragma once

#include "model/event.h"
#include "store/table.h"

namespace qmevents {

/// The table of events, `events_event_info`.
const Table<cEvent>& eventTable();
/// The event, or nothing. A failure is thrown, where the store's own read reports it.
Ref<cEvent> findEvent(std::int32_t id);

} // namespace qmevents
