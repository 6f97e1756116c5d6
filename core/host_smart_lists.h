#pragma once

#include <cstdint>
#include <string>

#include "core/host_part.h"

namespace qmevents {

/// `App.Modules.Quillmere.Smartlists`.
class SmartLists : public HostPart {
public:
    using HostPart::HostPart;
    /// Has the host read the fields of a list type from a file.
    void appendSchema(const std::string& type, const std::string& moduleName,
                      const std::string& moduleKey, const std::string& path) const
    {
        qmevents::call(part("types", type), "AppendSchema", moduleName, moduleKey, path);
    }
};

/// A column of a smart list.
class SmartListColumn : public HostPart {
public:
    using HostPart::HostPart;
    void setModuleId(const std::string& id) const { put("ModuleId", id); }
    void setKey(const std::string& key) const { put("Key", key); }
    void setCaption(const std::string& caption) const { put("Caption", caption); }
    void setVisible(bool visible) const { put("Visible", visible); }
    void setWidth(std::int32_t pixels) const { put("Width", pixels); }
    void setDataField(const std::string& field) const { put("DataField", field); }
    void setDataType(std::int32_t code) const { put("dataType", code); }
    /// The right that a user needs for the column.
    void setOperation(const std::string& right) const { put("Operation", right); }
};

/// Payload of the event that asks for the columns of a list.
class SmartListColumns : public HostPart {
public:
    using HostPart::HostPart;
    std::string listType() const { return toText(get("ListType")); }
    SmartListColumn newColumn() const { return SmartListColumn(toObject(call("GetNewColumn"))); }
    void add(const SmartListColumn& column, const std::string& key) const
    {
        qmevents::call(part("Columns"), "Add", column.object(), key);
    }
};

} // namespace qmevents
