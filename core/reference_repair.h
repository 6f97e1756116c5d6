#pragma once

namespace qmevents {

/// Clears what in the events refers to donors, funds, campaigns, appeals and assignees that the
/// host has deleted without the add-in's knowledge: as if each had been deleted with it. Looks
/// first, and only where there is something shows the progress dialog and repairs all of it in one
/// transaction. A failure is shown and, like a cancelled dialog, leaves everything as it was.
/// Needs no right: whoever signs in first finds the data in order.
void repairReferences();

} // namespace qmevents
