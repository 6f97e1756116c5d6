#pragma once

#include <string>

#include "core/host_part.h"

namespace qmevents {

/// A widget of the host's home page, as the host hands it to the module that offers it.
class Widget : public HostPart {
public:
    using HostPart::HostPart;
    std::string key() const { return toText(get("Key")); }
    void setModuleId(const std::string& module) const { put("ModuleId", module); }
    void setKey(const std::string& key) const { put("Key", key); }
    void setTitle(const std::string& title) const { put("Title", title); }
    void setDescription(const std::string& description) const { put("Description", description); }
    /// The right that a user needs to have it.
    void setOperation(const std::string& right) const { put("Operation", right); }
    /// What it shows, as markup.
    void setContent(const std::string& markup) const { put("Content", markup); }
    /// An option that the user may set; `choices` as "value=caption|value=caption".
    void addOption(const std::string& key, const std::string& caption, const std::string& kind,
                   const std::string& value, const std::string& choices) const
    {
        call("AddOption", key, caption, kind, value, choices);
    }
    /// What the user set an option to; Empty for one that was not sent.
    Value optionValue(const std::string& key) const { return call("OptionValue", key); }
    /// Why what the user set was not taken.
    void setProblem(const std::string& problem) const { put("Problem", problem); }
};

/// The payload of a widget event.
class WidgetEvent : public HostPart {
public:
    using HostPart::HostPart;
    /// The widget that it is about; nothing while the home page asks for those that there are.
    Widget widget() const { return Widget(part("widget")); }
    Widget newWidget() const { return Widget(toObject(call("GetNewWidget"))); }
    void add(const Widget& widget, const std::string& key) const
    {
        qmevents::call(part("Widgets"), "Add", widget.object(), key);
    }
};

} // namespace qmevents
