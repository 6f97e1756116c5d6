#pragma once

#include <filesystem>

#include "host/document/sql_session.h"

namespace refhost::demo {

/// Writes the session's database into `file` in one go, so that what was deleted or moved on the
/// way leaves no trace in it. A file that is there is replaced once the new one is complete; when
/// anything fails it stays as it was, and nothing else is left beside it.
void saveDatabase(SqlSession& sql, const std::filesystem::path& file);

} // namespace refhost::demo
