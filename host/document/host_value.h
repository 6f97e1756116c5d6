#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace refhost {

/// A value as the embedded engine stores it: what the host binds to its own SQL and reads from it.
using HostValue = std::variant<std::nullptr_t, std::int64_t, double, std::string>;
using HostRow = std::vector<HostValue>;

} // namespace refhost
