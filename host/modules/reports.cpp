#include "host/modules/reports.h"

#include <cctype>

#include "automation/describe.h"

namespace refhost {

using qmevents::arg;
using qmevents::Collection;
using qmevents::describe;
using qmevents::Error;
using qmevents::ErrorNumber;
using qmevents::makeRef;

namespace {

std::string escapedForUrl(std::string_view text)
{
    constexpr const char* digits = "0123456789ABCDEF";
    std::string result;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (std::isalnum(byte) || c == '-' || c == '_' || c == '.' || c == '/') {
            result += c;
        } else {
            result += {'%', digits[byte >> 4], digits[byte & 0x0F]};
        }
    }
    return result;
}

} // namespace

const Members& Report::members() const
{
    static const Members table =
        describe<Report>("A report that a module offers.")
            .property("Key", &Report::Key, "The layout's key.")
            .property("Name", &Report::Name, "What the user sees.")
            .property("Description", &Report::Description, "What it shows.")
            .property("Iconimage", &Report::Iconimage, "Path of its icon.")
            .property("Path", &Report::Path, "The folder of the layouts.")
            .property("Script", &Report::Script, "A line to run instead of showing the layout.")
            .property("Operation", &Report::Operation, "The right that a user needs.")
            .property("IsEntitySmartList", &Report::IsEntitySmartList,
                      "Whether it works on a list of records.")
            .property("EntityType", &Report::EntityType, "Of what records.");
    return table;
}

const Members& ReportCategory::members() const
{
    static const Members table =
        describe<ReportCategory>("A heading under which reports are listed.")
            .property("Key", &ReportCategory::Key, "The key among the categories.")
            .property("Name", &ReportCategory::Name, "What the user sees.")
            .property("Description", &ReportCategory::Description, "What it is about.")
            .readOnly("Reports", &ReportCategory::Reports, "The reports, by their keys.");
    return table;
}

const Members& Reports::members() const
{
    static const Members table =
        describe<Reports>("The reports that modules offer.")
            .readOnly("Categories", &Reports::Categories, "The categories, by their keys.")
            .method("GetNewCategory", &Reports::GetNewCategory, "A new category, to be added.")
            .method("GetNewReport", &Reports::GetNewReport, "A new report, to be added.")
            .method("GetReportTaskString", &Reports::GetReportTaskString,
                    {arg("Folder"), arg("Key"), arg("EntityId")},
                    "The address that shows a report of a record.")
            .method("Load", &Reports::Load, "Asks the modules for their reports, anew.")
            .method("LoadChooser", &Reports::LoadChooser,
                    "Asks the modules for the reports that work on a list of records.");
    return table;
}

Ref<ReportCategory> Reports::GetNewCategory() const { return makeRef<ReportCategory>(); }

Ref<Report> Reports::GetNewReport() const { return makeRef<Report>(); }

std::string Reports::GetReportTaskString(const std::string& folder, const std::string& key,
                                         const Value& entityId) const
{
    // The address names the folder within the add-in: one from outside could open any file.
    const std::string plain = qmevents::text::replaceAll(folder, "\\", "/");
    const std::string base = qmevents::text::replaceAll(context_->addInPath, "\\", "/");
    if (!plain.starts_with(base) || plain.find("..", base.size()) != std::string::npos) {
        throw Error::with(ErrorNumber::invalidCall, folder + " is no folder of the add-in");
    }
    return "obsidian://host/report?folder=" + escapedForUrl(plain.substr(base.size())) +
           "&key=" + escapedForUrl(key) + "&id=" + escapedForUrl(qmevents::toText(entityId));
}

Ref<Collection> Reports::Load()
{
    Categories->clear();
    context_->raise("reports-categories", Value(Categories));
    context_->raise("reports-categories-reports", Value(Categories));
    return Categories;
}

Ref<Collection> Reports::LoadChooser() const
{
    const auto reports = makeRef<Collection>();
    context_->raise("reports-chooser-dialog", Value(reports));
    return reports;
}

const Members& SettingCategory::members() const
{
    static const Members table =
        describe<SettingCategory>("An entry among the settings.")
            .property("Key", &SettingCategory::Key, "The key among the entries.")
            .property("Name", &SettingCategory::Name, "What the user sees.")
            .property("Description", &SettingCategory::Description, "What it is about.")
            .property("Iconimage", &SettingCategory::Iconimage, "Path of its icon.")
            .property("Script", &SettingCategory::Script, "The line that opens it.")
            .property("Operation", &SettingCategory::Operation, "The right that a user needs.");
    return table;
}

const Members& Settings::members() const
{
    static const Members table =
        describe<Settings>("The settings that modules offer.")
            .readOnly("Categories", &Settings::Categories, "The entries, by their keys.")
            .method("GetNewCategory", &Settings::GetNewCategory, "A new entry, to be added.")
            .method("Load", &Settings::Load, "Asks the modules for their entries, anew.");
    return table;
}

Ref<SettingCategory> Settings::GetNewCategory() const { return makeRef<SettingCategory>(); }

Ref<Collection> Settings::Load()
{
    Categories->clear();
    context_->raise("settings-categories", Value(Categories));
    return Categories;
}

} // namespace refhost
