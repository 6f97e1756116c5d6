#pragma once

#include <cstdint>
#include <optional>

namespace qmevents {

/// Whether one of several keys that could narrow a read is to be used. No stored record has the
/// key 0, so it counts as left out.
inline bool isGiven(const std::optional<std::int32_t>& key) { return key.value_or(0) != 0; }

} // namespace qmevents
