#pragma once

#include <cstdint>
#include <string>

#include "automation/conversions.h"
#include "core/host_part.h"

namespace qmevents {

/// A box on a tab of the donor's details page.
class DonorPageSection : public HostPart {
public:
    using HostPart::HostPart;
    void setTitle(const std::string& title) const { put("Title", title); }
    void setKey(const std::string& key) const { put("Key", key); }
    void addRow(const Ref<Object>& row) const { qmevents::call(part("Rows"), "Add", row); }
};

/// The host's details page of a donor, to which modules add their sections.
class DonorPage : public HostPart {
public:
    using HostPart::HostPart;
    std::int32_t donorId() const { return toInt32(qmevents::get(part("donor"), "Id")); }
    DonorPageSection newSection() const
    {
        return DonorPageSection(toObject(call("GetNewSection")));
    }
    /// A new line: a label and its value as markup.
    Ref<Object> newRow(const std::string& name, const std::string& markup) const
    {
        const auto row = toObject(call("GetNewSectionRow"));
        qmevents::put(row, "Name", name);
        qmevents::put(row, "Value", markup);
        return row;
    }
    void addSection(const std::string& tab, const DonorPageSection& section,
                    const std::string& key) const
    {
        qmevents::call(getObject(part("Tabs", tab), "Sections"), "Add", section.object(), key);
    }
};

} // namespace qmevents
