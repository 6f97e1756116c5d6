#pragma once

#include <string>
#include <vector>

#include "host/app/session_context.h"

namespace refhost {

/// Asks the user, with what the modules have to say about it, then deletes the donors with what the
/// modules keep about them: all of it or nothing. False when the user declines, or when a module
/// has told the user why it could not. Error 70 without the right to delete.
bool deleteDonors(const SharedContext& context, const std::vector<std::int32_t>& donors);

} // namespace refhost
