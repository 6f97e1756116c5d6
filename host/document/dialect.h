#pragma once

#include <string_view>

namespace refhost {

/// The engine whose SQL a session speaks. Both run on the same database.
enum class Dialect { sqlServer, jet };

inline std::string_view dialectName(Dialect dialect)
{
    return dialect == Dialect::sqlServer ? "SQL Server" : "Jet";
}

} // namespace refhost
