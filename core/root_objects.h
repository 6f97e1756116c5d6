#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "automation/members.h"

namespace qmevents {

/// A new object of a public root class: "QMEvents.Workflow", "QMEvents.Events",
/// "QMEvents.Handler", "QMEvents.Security", "QMEvents.Utils", "QMEvents.DateTimeUtil",
/// "QMEvents.ApplicationLink" or "QMEvents.EntityKeyLock", without regard to case. Nothing for any
/// other name. `OnInitialize(App)` makes the first four usable.
Ref<Object> createRootObject(std::string_view progId);

/// Forgets this thread's App and root references, as unloading the component does. The host calls
/// it after it has dropped the objects it made.
void releaseAddIn();

/// A public enumeration: its name, and its values by name.
struct Enumeration {
    std::string_view name;
    std::vector<std::pair<std::string_view, std::int32_t>> values;
};
std::span<const Enumeration> publicEnumerations();

/// The member tables of every public class, for the object reference and the type library.
std::span<const Members* const> publicClasses();

} // namespace qmevents
