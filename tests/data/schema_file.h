#pragma once

#include <string>
#include <vector>

#include "host/document/dialect.h"

namespace refhost::test {

/// The statements of `section` ("install" or "upgrade") of a version, as the installer runs them.
std::vector<std::string> schemaStatements(Dialect dialect, int version, const std::string& section);

/// The names of the scriptlets that the section runs.
std::vector<std::string> sectionScripts(Dialect dialect, int version, const std::string& section);
std::string scriptlet(Dialect dialect, int version, const std::string& name);

} // namespace refhost::test
