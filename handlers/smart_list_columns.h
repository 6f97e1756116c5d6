#pragma once

#include "core/host_smart_lists.h"

namespace qmevents {

/// Adds the event columns of the list's type ("donors", "donations" or "pledges"), all hidden until
/// the user shows them. Those that show money need the right "donations/view".
void addEventColumns(const SmartListColumns& list);

} // namespace qmevents
