// The other modules that the recording host has loaded: donors, gifts, mailings, notes, reports.

#include <gtest/gtest.h>

#include "tests/support/scripted_host.h"
#include "tests/support/shown_value.h"

namespace qmevents::testing {
namespace {

Value donorObject(const ScriptedHost& host, std::int32_t id)
{
    const auto found = host.donors.find(id);
    if (found == host.donors.end()) {
        if (host.noDonor.isText()) throw Error(3021, "DonorManage", host.noDonor.text());
        return host.noDonor;
    }
    auto donor = puppet("Donor");
    donor->holds("Id", id).holds("Display", found->second).holds("EntityType", "household");
    return donor;
}

} // namespace

Ref<Object> ScriptedHost::makeModules()
{
    auto modules = puppet("Modules");
    modules->holds("Events", makeEventsModule()).holds("donor", makeDonorModule());
    modules->holds("Donation", makeDonation()).holds("Actions", makeActions());
    modules->holds("Quillmere", makeQuillmere());
    return modules;
}

Ref<Object> ScriptedHost::makeEventsModule()
{
    auto configuration = puppet("Configuration");
    configuration->on("getValue", [this](std::span<Value>) { return Value(requiredSchema); });
    auto events = puppet("EventsModule");
    events->holds("Configuration", configuration).holds("Path", "C:\\Events\\");
    events->on("Objects", [this](std::span<Value> a) { return Value(roots_.at(toText(a[0]))); });
    events->on("ShowDialog", [this](std::span<Value> a) {
        log.push_back("ShowDialog " + toText(a[0]) + " " + shown(a[1]) + " " + shown(a[2]) + " " +
                      toText(a[3]) + " " + toText(a[4]));
        dialogReturnValue_ = {};
        dialogIsLeftOpen_ = !std::exchange(dialogIsWaitedFor_, true);
        if (!dialogIsLeftOpen_) closeDialog(dialogPage ? dialogPage() : Value(false));
        return Value();
    });
    events->on("LoadDialog", [this](std::span<Value> a) {
        log.push_back("LoadDialog " + toText(a[0]));
        return Value();
    });
    return events;
}

Ref<Object> ScriptedHost::makeDonorModule()
{
    auto donorManage = puppet("DonorManage");
    for (const char* name : {"GetDonor", "GetSmallDonor"}) {
        donorManage->on(name,
                        [this](std::span<Value> a) { return donorObject(*this, toInt32(a[0])); });
    }
    auto mailings = puppet("MailingManage");
    for (const char* name :
         {"OpenMailingDialog", "AddToMailingList", "CloseMailingDialog", "StartMailingProcess"}) {
        mailings->on(name, [this, name](std::span<Value> a) {
            std::string line = name;
            for (const auto& argument : a) line += " " + shown(argument);
            statement(line);
            return Value();
        });
    }
    auto donorDialogs = puppet("DonorDialogs");
    donorDialogs->on("NewDialog", [this](std::span<Value> a) {
        EXPECT_EQ(toText(a[0]), "getdonor");
        return Value(makeDonorChooser());
    });
    auto donor = puppet("DonorModule");
    donor->holds("DonorManage", donorManage).holds("MailingManage", mailings);
    donor->holds("Dialogs", donorDialogs);
    return donor;
}

Ref<Object> ScriptedHost::makeActions()
{
    auto actions = puppet("Actions");
    actions->on("NewActionCriteria", [](std::span<Value>) -> Value {
        auto criteria = puppet("ActionCriteria");
        criteria->holds("EntityType", "").holds("EntityId", 0);
        return criteria;
    });
    actions->on("GetAssignments", [this](std::span<Value> a) -> Value {
        statement("GetAssignments " + toText(get(a[0].object(), "EntityType")) + " " +
                  toText(get(a[0].object(), "EntityId")));
        auto assignment = puppet("Assignment");
        assignment->holds("Id", 77);
        auto found = makeRef<Collection>();
        found->append(assignment);
        return found;
    });
    actions->on("DeleteAssignment", [this](std::span<Value> a) {
        statement("DeleteAssignment " + toText(a[0]));
        return Value();
    });
    actions->on("NewNote", [this](std::span<Value>) -> Value {
        auto note = puppet("Note");
        for (const char* name : {"DonorId", "Group", "Reference", "Text"}) note->holds(name, "");
        note->on("Save", [this, note = note.get()](std::span<Value>) {
            const auto said = [&](const char* name) {
                return toText(get(Ref<Object>(note), name));
            };
            statement("Note " + said("DonorId") + " " + said("Group") + " " + said("Reference") +
                      ": " + said("Text"));
            return Value();
        });
        return note;
    });
    return actions;
}

Ref<Object> ScriptedHost::makeDonorChooser()
{
    auto chooser = puppet("DonorChooser");
    for (const char* name :
         {"Title", "Heading", "Description", "AllowNew", "ShowAll", "AllowAdvanced"}) {
        chooser->onPut(name, [this, name](std::span<Value> a) {
            log.push_back("getdonor " + std::string(name) + " = " + shown(a[0]));
            return Value();
        });
    }
    chooser->on("Create", [this](std::span<Value>) {
        log.emplace_back("getdonor shown");
        return Value(chosenDonor.has_value());
    });
    chooser->on("DonorId", [this](std::span<Value>) { return Value(chosenDonor.value()); });
    return chooser;
}

Ref<Object> ScriptedHost::makeDonation()
{
    auto wizards = puppet("Wizards");
    wizards->on("StartDonationWizard", [this](std::span<Value> a) {
        EXPECT_TRUE(a.empty());
        log.emplace_back("StartDonationWizard");
        return Value();
    });
    auto donations = puppet("Donations");
    donations->holds("Wizards", wizards).on("Delete", [this](std::span<Value> a) {
        statement("Donation.Delete " + toText(a[0]));
        return Value();
    });
    auto donation = puppet("DonationModule");
    donation->holds("Donations", donations);
    return donation;
}

Ref<Object> ScriptedHost::makeQuillmere()
{
    auto reports = puppet("Reports");
    reports->on("GetReportTaskString", [](std::span<Value> a) {
        return Value("report:" + toText(a[0]) + "|" + toText(a[1]) + "|" + toText(a[2]));
    });
    auto quillmere = puppet("Quillmere");
    quillmere->holds("Reports", reports);
    return quillmere;
}

} // namespace qmevents::testing
