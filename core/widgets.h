#pragma once

#include "core/host_event.h"

namespace qmevents {

// The home page's widgets, as the host asks for them. Who may not see the events, or lacks the
// widget's own right, gets nothing to see.

/// While the home page asks which widgets there are, registers the events' four; else draws the one
/// that it names.
void showWidgets(const HostEvent& event);
/// Offers what the user may set about a widget.
void offerWidgetOptions(const HostEvent& event);
/// Keeps what the user has set, all of it or, when a value is refused, nothing.
void keepWidgetOptions(const HostEvent& event);

} // namespace qmevents
