#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "core/host_donor_page.h"
#include "core/host_part.h"
#include "core/host_reports.h"
#include "core/host_settings.h"
#include "core/host_smart_lists.h"
#include "core/host_widget.h"

namespace qmevents {

/// `App.Modules.Events`, the add-in's own module object.
class EventsModule : public HostPart {
public:
    using HostPart::HostPart;
    /// A root object of the add-in as the host registered it.
    Ref<Object> rootObject(const std::string& name) const
    {
        return toObject(call("Objects", name));
    }
    /// The add-in's command object, as the host registered it.
    Ref<Object> commands() const { return getObject(rootObject("Workflow"), "Events"); }
    /// The installation folder; ends with a separator.
    std::string path() const { return toText(get("Path")); }
    /// Where the add-in's report layouts lie.
    std::string reportFolder() const { return path() + "Cache\\Reports"; }
    /// The picture that the add-in's reports share.
    std::string reportIcon() const { return path() + "Cache/1033/Events/gif/report.gif"; }
    Value configuration(const std::string& key) const
    {
        return qmevents::call(part("Configuration"), "getValue", key);
    }
    /// Shows a dialog page modally and returns after it has closed.
    void showDialog(const std::string& contentFile, std::int32_t height, std::int32_t width) const
    {
        call("ShowDialog", contentFile, Missing{}, Missing{}, height, width);
    }
    /// Replaces the page of the open dialog; does not wait.
    void loadDialog(const std::string& contentFile) const { call("LoadDialog", contentFile); }
};

/// `App.Modules.donor.MailingManage`, which turns lists of donors into mailings.
class MailingManage : public HostPart {
public:
    using HostPart::HostPart;
    void openDialog() const { call("OpenMailingDialog"); }
    /// Adds a donor to the list that `listKey` names; the first one makes the list.
    void addToList(const std::string& listKey, std::int32_t donorId) const
    {
        call("AddToMailingList", listKey, donorId);
    }
    void closeDialog() const { call("CloseMailingDialog"); }
    /// Lets the user go on with a mailing to the list; `source` names the module that it is from.
    void startProcess(const std::string& source, const std::string& listKey) const
    {
        call("StartMailingProcess", source, listKey);
    }
};

/// The host's own dialog in which the user chooses a donor.
class DonorChooser : public HostPart {
public:
    using HostPart::HostPart;
    void setTitle(const std::string& title) const { put("Title", title); }
    void setHeading(const std::string& heading) const { put("Heading", heading); }
    void setDescription(const std::string& description) const { put("Description", description); }
    /// Lets the user enter a new donor on the spot.
    void allowNew() const { put("AllowNew", true); }
    void showAll() const { put("ShowAll", true); }
    /// Offers the advanced search.
    void allowAdvanced() const { put("AllowAdvanced", true); }
    /// Shows the dialog; the engine's return value.
    Value create() const { return call("Create"); }
    std::int32_t donorId() const { return toInt32(get("DonorId")); }
};

/// `App.Modules.donor`.
class DonorModule : public HostPart {
public:
    using HostPart::HostPart;
    /// The donor, or nothing when there is none with this id.
    Ref<Object> donor(std::int32_t id) const { return read("GetDonor", id); }
    /// The donor with its display name only, or nothing.
    Ref<Object> smallDonor(std::int32_t id) const { return read("GetSmallDonor", id); }
    DonorChooser newDonorChooser() const
    {
        return DonorChooser(toObject(qmevents::call(part("Dialogs"), "NewDialog", "getdonor")));
    }
    MailingManage mailings() const { return MailingManage(part("MailingManage")); }

private:
    // Hosts answer Nothing, Empty or Null where there is no such donor.
    Ref<Object> read(std::string_view operation, std::int32_t id) const
    {
        const Value donor = qmevents::call(part("DonorManage"), operation, id);
        return donor.isNull() ? Ref<Object>() : toObject(donor);
    }
};

/// `App.Modules.Donation`.
class DonationModule : public HostPart {
public:
    using HostPart::HostPart;
    void deleteDonation(std::int32_t id) const { qmevents::call(donations(), "Delete", id); }
    /// The host's list of donations that satisfy `where`, a condition in SQL.
    Ref<Object> donationsWhere(const std::string& where, const std::string& orderBy) const;
    /// Starts the wizard that records a gift; it reads the dialog values for what it is about.
    void startWizard() const
    {
        qmevents::call(getObject(donations(), "Wizards"), "StartDonationWizard");
    }

private:
    Ref<Object> donations() const { return part("Donations"); }
};

/// `App.Modules.Actions`.
class ActionsModule : public HostPart {
public:
    using HostPart::HostPart;
    /// Adds a note to a donor's history. `group` names the module that it is from, `reference` the
    /// record there, and `markup` is what it says.
    void addNote(std::int32_t donorId, const std::string& group, const std::string& reference,
                 const std::string& markup) const;
    Ref<Object> newReminder() const { return toObject(call("GetNewReminder")); }
    Ref<Object> reminders() const { return part("Reminders"); }
    /// Removes every assignment that refers to the entity with this id.
    void deleteAssignmentsOf(const std::string& entityType, std::int32_t entityId) const;
};

/// `App.Modules.Quillmere`, the host's core module.
class QuillmereModule : public HostPart {
public:
    using HostPart::HostPart;
    SmartLists smartLists() const { return SmartLists(part("Smartlists")); }
    /// Adds a module's file of fields to those that mailings can merge.
    void appendMailingFields(const std::string& moduleName, const std::string& moduleKey,
                             const std::string& path) const
    {
        qmevents::call(getObject(part("Mailings"), "FieldSchema"), "AppendSchema", moduleName,
                       moduleKey, path);
    }
    Reports reports() const { return Reports(part("Reports")); }
    Settings settings() const { return Settings(part("Settings")); }
    DonorPage donorPage() const { return DonorPage(getObject(part("Donors"), "DetailsPage")); }
};

/// `App.Modules`, the other modules of the host by name.
class Modules : public HostPart {
public:
    using HostPart::HostPart;
    EventsModule events() const { return EventsModule(part("Events")); }
    DonorModule donor() const { return DonorModule(part("donor")); }
    DonationModule donation() const { return DonationModule(part("Donation")); }
    ActionsModule actions() const { return ActionsModule(part("Actions")); }
    QuillmereModule quillmere() const { return QuillmereModule(part("Quillmere")); }
    /// What the host event that runs is about, when the home page raised it.
    WidgetEvent widgetEvent() const
    {
        return WidgetEvent(getObject(getObject(part("Loader"), "CurrentEvent"), "Data"));
    }
};

} // namespace qmevents
