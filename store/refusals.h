#pragma once

#include <cstdint>
#include <string>

namespace qmevents {

/// Whether the user may change events; if not, the user has been told.
bool mayUpdateEvents();
/// Whether the user may delete events; if not, the user has been told.
bool mayDeleteEvents();

/// "The selected ... no longer exists.", a line break, "It may have been deleted by another user."
std::string noLongerExists(const std::string& item);

/// Whether fund, campaign and appeal, where not 0, stand in the host's code lists; if not, the
/// first that is missing has been shown.
bool codesExist(std::int32_t fundId, std::int32_t campaignId, std::int32_t appealId);

} // namespace qmevents
