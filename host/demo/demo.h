#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>

#include "automation/date.h"
#include "host/document/dialect.h"

namespace refhost {

/// What a demonstration database is made from: the same options give the same bytes.
struct DemoOptions {
    std::filesystem::path database;
    Dialect dialect = Dialect::sqlServer;
    std::uint64_t seed = 1;
    std::string addInPath; ///< The folder that holds data/.
    bool replaces = false; ///< Whether a file that is there may be replaced.
    int donors = 7000;
    int gifts = 9000; ///< Given of themselves; those to events and reservations come on top.
    int crowd = 5000; ///< Participants of the largest event; 0 leaves it as it is in other years.
};

/// Makes the database small and quick to make: without the crowd, and with fewer donors.
void makeSmall(DemoOptions& options);

/// What was made.
struct DemoCounts {
    int donors = 0, gifts = 0, events = 0, reservations = 0;
};

/// The day as of which the demonstration is made. One that moved would make every file differ.
qmevents::Date demoDay();

/// Makes the database of an organisation that has run events for three years as of that day and
/// plans a fourth: donors, gifts, lists, users, and events saved through the add-in.
/// Throws Error; whatever fails, no half-made file stays and one that was there is untouched.
DemoCounts makeDemo(const DemoOptions& options);

/// `quillmere demo --db FILE [--dialect sqlserver|jet] [--seed N] [--small] [--addin PATH]
/// [--force]`. Gives the exit code: 0, 1 for a failure, 2 for arguments that make no sense. The
/// users are "anna" ("harbour lights", all rights), "ben" ("paper boats": may view and edit events,
/// view donations and send mailings) and "viewer" ("just looking": may only view events).
int demoCommand(std::span<const std::string> args);

} // namespace refhost
