#pragma once

#include <cstdint>
#include <string>

#include "core/host_part.h"

namespace qmevents {

/// A report as the host lists it.
class Report : public HostPart {
public:
    using HostPart::HostPart;
    void setKey(const std::string& key) const { put("Key", key); }
    void setName(const std::string& name) const { put("Name", name); }
    void setDescription(const std::string& description) const { put("Description", description); }
    void setIcon(const std::string& path) const { put("Iconimage", path); }
    /// The folder in which the layout lies.
    void setFolder(const std::string& path) const { put("Path", path); }
    /// A line that the host runs instead of opening the layout.
    void setScript(const std::string& line) const { put("Script", line); }
    /// The right that a user needs for the report.
    void setOperation(const std::string& right) const { put("Operation", right); }
    /// Makes the report one about a list of records of this type.
    void setListOf(const std::string& entityType) const
    {
        put("IsEntitySmartList", true);
        put("EntityType", entityType);
    }
};

/// `App.Modules.Quillmere.Reports`.
class Reports : public HostPart {
public:
    using HostPart::HostPart;
    Report newReport() const { return Report(toObject(call("GetNewReport"))); }
    void addCategory(const std::string& key, const std::string& name,
                     const std::string& description) const
    {
        const auto category = toObject(call("GetNewCategory"));
        qmevents::put(category, "Key", key);
        qmevents::put(category, "Name", name);
        qmevents::put(category, "Description", description);
        qmevents::call(part("Categories"), "Add", category, key);
    }
    /// What a category lists.
    Ref<Object> reportsOf(const std::string& categoryKey) const
    {
        return getObject(part("Categories", categoryKey), "Reports");
    }
    /// The address at which the host shows the report `key` of the folder for one record.
    std::string address(const std::string& folder, const std::string& key, std::int32_t id) const
    {
        return toText(call("GetReportTaskString", folder, key, id));
    }
};

/// Adds a report to a list of the host's.
inline void addReport(const Ref<Object>& list, const Report& report, const std::string& key)
{
    call(list, "Add", report.object(), key);
}

} // namespace qmevents
