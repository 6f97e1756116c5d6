#pragma once

#include <span>
#include <string>

#include "host/cli/command_line.h"

namespace refhost {

/// `quillmere run`: signs in without a screen, runs a script and prints what happened.
int runCommand(std::span<const std::string> arguments, const Streams& streams);
/// `quillmere sql`: runs statements of a dialect and prints their rows.
int sqlCommand(std::span<const std::string> arguments, const Streams& streams);
/// `quillmere report`: runs a report and prints its lines as comma-separated values.
int reportCommand(std::span<const std::string> arguments, const Streams& streams);

} // namespace refhost
