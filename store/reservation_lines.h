#pragma once

#include "model/event_reservation.h"

namespace qmevents {

/// Writes the lines of a reservation that has its key and whose event is locked: new lines are
/// inserted, dirty ones rewritten, those taken out of the collection deleted. False when that
/// failed and has been reported.
bool saveLines(cEventReservation& reservation);

/// Whether the rules hold for all lines of a reservation; if not, the first broken one has been
/// shown.
bool linesAreValid(const cEventReservationActivities& lines);

} // namespace qmevents
