#pragma once

#include <string_view>

#include "host/document/dialect.h"

namespace refhost {

/// Whether `word` must stand in brackets when it is a name.
bool isReserved(Dialect dialect, std::string_view word);

} // namespace refhost
