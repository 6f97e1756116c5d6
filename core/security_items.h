#pragma once

#include "automation/value.h"

namespace qmevents {

/// Whether the signed-in user may use `item`, a page, dialog, button, task or menu entry: a text,
/// or an object with a `Key`. A page may be given with its address, a dialog with its folder. An
/// item that the add-in does not know is allowed: the host guards its own.
bool isItemAllowed(const Value& item);

} // namespace qmevents
