#include "host/modules/reports.h"

#include <algorithm>
#include <cctype>

#include "automation/describe.h"

namespace refhost {

using qmevents::arg;
using qmevents::Collection;
using qmevents::describe;
using qmevents::Error;
using qmevents::ErrorNumber;
using qmevents::makeRef;
using qmevents::optional;

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

bool isAbsolute(const std::string& path)
{
    return path.starts_with('/') || path.find(':') != std::string::npos;
}

bool isKey(const std::string& text)
{
    return !text.empty() && std::all_of(text.begin(), text.end(), [](unsigned char c) {
        return std::isalnum(c) != 0 || c == '-' || c == '_';
    });
}

bool isNone(const Value& value)
{
    return value.isEmpty() || value.isNull() || value.isMissing() || value.isNothing() ||
           (value.isText() && qmevents::text::trim(value.text()).empty());
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
                    "Asks the modules for the reports that work on a list of records.")
            .method("Open", &Reports::Open,
                    {arg("Folder"), arg("Key"), optional("EntityId"), optional("List")},
                    "Opens a report: of an event, of a list's records, or of all.");
    return table;
}

Ref<ReportCategory> Reports::GetNewCategory() const { return makeRef<ReportCategory>(); }

Ref<Report> Reports::GetNewReport() const { return makeRef<Report>(); }

// Addresses name the folder within the add-in: one from outside could open any file.
std::string Reports::folderInAddIn(const std::string& folder) const
{
    const std::string plain = qmevents::text::replaceAll(folder, "\\", "/");
    const std::string base = qmevents::text::replaceAll(context_->addInPath, "\\", "/");
    const bool isInside = plain.starts_with(base);
    const std::string within = isInside ? plain.substr(base.size()) : plain;
    if ((!isInside && isAbsolute(plain)) || within.find("..") != std::string::npos)
        throw Error::with(ErrorNumber::invalidCall, folder + " is no folder of the add-in");
    return within;
}

std::string Reports::GetReportTaskString(const std::string& folder, const std::string& key,
                                         const Value& entityId) const
{
    return "obsidian://host/report?folder=" + escapedForUrl(folderInAddIn(folder)) +
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

// What the entry asks for and what the layout asks for must both be held, however the report was
// reached: from the list, by its address or by a script.
void Reports::checkRight(const std::string& key, const std::string& layoutOperation)
{
    std::vector<std::string> operations{"events/view", layoutOperation};
    const auto addEntries = [&](const Ref<Collection>& reports) {
        for (std::size_t i = 1; i <= reports->size(); ++i) {
            const auto report = qmevents::toObject(reports->at(i));
            if (qmevents::text::sameName(qmevents::toText(get(report, "Key")), key))
                operations.push_back(qmevents::toText(get(report, "Operation")));
        }
    };
    const auto categories = Load();
    for (std::size_t i = 1; i <= categories->size(); ++i) {
        const auto category = qmevents::toObject(categories->at(i));
        if (const auto* const known = dynamic_cast<ReportCategory*>(category.get()))
            addEntries(known->Reports);
    }
    addEntries(LoadChooser());
    for (const std::string& operation : operations) {
        if (!reporting::mayUse(context_, operation)) {
            throw Error(static_cast<int>(ErrorNumber::permissionDenied), "Reports",
                        "You do not have the right to view this report.");
        }
    }
}

void Reports::takeList(reporting::Inquiry& inquiry, const Value& list) const
{
    if (isNone(list)) return;
    const auto& filters = inquiry.layout.filters;
    const auto filter = std::find_if(filters.begin(), filters.end(), [](const auto& plan) {
        return plan.kind == reporting::FilterKind::list;
    });
    if (filter == filters.end()) {
        throw Error::with(ErrorNumber::invalidCall,
                          "the report " + inquiry.layout.key + " does not work on a list");
    }
    if (qmevents::isNumeric(list)) {
        inquiry.values[static_cast<std::size_t>(filter - filters.begin())] =
            qmevents::toInt32(list);
    } else {
        inquiry.source = qmevents::toText(list);
    }
}

Ref<ReportRun> Reports::Open(const std::string& folder, const std::string& key,
                             const Value& entityId, const Value& list)
{
    if (!isKey(key)) throw Error::with(ErrorNumber::invalidCall, key + " is no key of a report");
    const std::string within = folderInAddIn(folder);
    auto inquiry = std::make_shared<reporting::Inquiry>();
    inquiry->context = context_;
    inquiry->lists = smartLists_;
    inquiry->layout = reporting::readLayout(context_->addInPath + within, within, key);
    checkRight(key, inquiry->layout.operation);
    inquiry->values = reporting::defaultValues(context_, inquiry->layout);
    takeList(*inquiry, list);
    for (std::size_t i = 0; i < inquiry->layout.filters.size(); ++i) {
        if (inquiry->layout.filters[i].kind != reporting::FilterKind::event) continue;
        const bool isGiven = !isNone(entityId) && qmevents::toText(entityId) != "0";
        if (isGiven) inquiry->values[i] = entityId;
    }
    return makeRef<ReportRun>(std::move(inquiry));
}

} // namespace refhost
