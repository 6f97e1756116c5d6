#pragma once

#include <string>
#include <vector>

namespace qmevents {

/// Deletes through the host's donation module the gifts whose keys the queries give, each once: a
/// gift may be linked to an event and to one of its reservations.
void deleteDonationsOf(const std::vector<std::string>& queries);

} // namespace qmevents
