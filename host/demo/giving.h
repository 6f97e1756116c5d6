#pragma once

#include <vector>

#include "host/demo/codes.h"
#include "host/demo/event_children.h"

namespace refhost::demo {

/// Writes gifts and pledges with their payments over the four years before `today`: `count` that
/// donors give of themselves, and those to the events and their reservations. Gives their number.
int makeGifts(RowWriter& rows, const Urn& urn, const Codes& codes,
              const std::vector<MadeEvent>& events, Random random, int count, qmevents::Date today);

} // namespace refhost::demo
