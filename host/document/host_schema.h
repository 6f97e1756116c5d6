#pragma once

#include <memory>

#include "host/document/database.h"

namespace refhost {

/// Creates the host's own tables where they are absent: donors, gifts and their lists, actions,
/// mailing lists, users, rights, preferences and settings. Tables that exist are left as they are.
void createHostTables(const std::shared_ptr<Database>& database);

} // namespace refhost
