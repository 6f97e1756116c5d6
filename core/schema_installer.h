#pragma once

#include <string>

namespace qmevents {

/// Brings the database up to the schema version that this build requires, or refuses one that is
/// newer. Runs at every sign-in. The version that is installed stands in the document setting
/// "events-addin-init". False when the database cannot be worked with, which has been reported.
bool checkSchema();

/// Runs the install section (installed version 0) or the upgrade section of `requiredVersion` of
/// the schema file at `path`: tables, indexes, views, scripts. False when the file cannot be
/// parsed, which has been reported. A missing section is an Error with the source
/// "CreateSchema()"; a failing statement is the host's Error. A failing scriptlet is reported and
/// skipped.
bool createSchema(const std::string& path, const std::string& installedVersion,
                  const std::string& requiredVersion);

} // namespace qmevents
