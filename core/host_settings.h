#pragma once

#include <string>

#include "core/host_part.h"

namespace qmevents {

/// `App.Modules.Quillmere.Settings`.
class Settings : public HostPart {
public:
    using HostPart::HostPart;
    Ref<Object> newCategory() const { return toObject(call("GetNewCategory")); }
};

/// An entry among the settings: what the user sees, the script line that opens it, and the right
/// that it needs.
struct SettingEntry {
    const char *key, *name, *description, *script, *right;
};

/// Payload of the event that asks for the entries.
class SettingCategories : public HostPart {
public:
    using HostPart::HostPart;
    /// Fills `category`, a new one of the host's, and adds it.
    void add(const Ref<Object>& category, const SettingEntry& entry) const
    {
        qmevents::put(category, "Key", entry.key);
        qmevents::put(category, "Name", entry.name);
        qmevents::put(category, "Description", entry.description);
        qmevents::put(category, "Script", entry.script);
        qmevents::put(category, "Operation", entry.right);
        call("Add", category, entry.key);
    }
};

} // namespace qmevents
