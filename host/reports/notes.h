#pragma once

#include <string>
#include <vector>

#include "host/reports/answers.h"

namespace refhost::reporting {

/// What the filters say, in words: "Event date: 1/1/2026 to 12/31/2026".
std::vector<std::string> notesOf(const Layout& layout, const Answers& answers);

} // namespace refhost::reporting
