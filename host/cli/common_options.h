#pragma once

#include <memory>
#include <optional>
#include <string>

#include "automation/date.h"
#include "host/cli/command_line.h"
#include "host/document/database.h"
#include "host/document/dialect.h"

namespace refhost {

/// "sqlserver" or "jet" into `dialect`.
Option dialectOption(Dialect& dialect);
/// A file's name into `file`.
Option databaseOption(std::string& file, std::string_view help);

/// A moment into `now`, at which the clock stops.
Option clockOption(std::optional<qmevents::Date>& now);

/// The text of `name`, "-" being the input. Throws Error (53) when it cannot be read.
std::string readText(const std::string& name, const Streams& streams);
/// The database in `file`, or a fresh private one in memory when that is empty.
std::shared_ptr<Database> openDatabase(const std::string& file);

/// The folder of the add-in (data/, cache/, pages/) that holds the present folder or, failing
/// that, this program; the present one when neither does.
std::string findAddIn();

} // namespace refhost
