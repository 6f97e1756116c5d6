#pragma once

#include <span>
#include <string>

namespace refhost {

/// `quillmere serve --db FILE [--port 8080] [--bind 127.0.0.1] [--pages DIR]
/// [--dialect sqlserver|jet] [--addin PATH] [--now "yyyy-mm-dd hh:nn:ss"]`: answers browsers until
/// SIGINT or SIGTERM. Gives the exit code: 0, 1 for a failure, 2 for arguments that make no sense.
int serveCommand(std::span<const std::string> args);

} // namespace refhost
