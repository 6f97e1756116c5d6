#pragma once

#include <string>

#include "core/root_objects.h"

namespace qmevents::testing {

/// How tests reach the add-in: inside their own program, or as a host does across a boundary. The
/// cases that run either way use the add-in by name alone.
struct Transport {
    Ref<Object> (*makeRoot)(std::string_view progId) = createRootObject;
    /// Unloads the add-in of this thread, once its objects are dropped.
    void (*release)() = releaseAddIn;
    /// A moment that the add-in wrote. Beyond a boundary it has a clock of its own, which no test
    /// pins; its present comes back as the test's.
    Date (*written)(Date) = [](Date moment) { return moment; };
};

inline Transport transport;

} // namespace qmevents::testing
