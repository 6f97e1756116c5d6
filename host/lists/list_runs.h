#pragma once

#include <string>
#include <vector>

#include "host/app/session_context.h"

namespace refhost {

/// Keeps the keys of the records that a list held, under a number, in a table that statements of
/// either dialect can read: they stay the same whatever happens to the records. Those of the days
/// before are dropped. Gives what may follow "SELECT Id FROM " in a statement.
std::string keepRecords(const SharedContext& context, const std::vector<std::int32_t>& keys);

/// Forgets what `source`, a result of keepRecords, stands for.
void forgetRecords(const SharedContext& context, const std::string& source);

} // namespace refhost
