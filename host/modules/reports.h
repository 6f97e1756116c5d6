#pragma once

#include <string>

#include "automation/collection.h"
#include "host/app/session_context.h"
#include "host/reports/report_run.h"

namespace refhost {

/// A report that a module offers.
class Report : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "Report";
    const Members& members() const override;

    std::string Key, Name, Description, Iconimage;
    std::string Path;      ///< The folder of the layouts.
    std::string Script;    ///< A line to run instead of showing the layout; may be empty.
    std::string Operation; ///< The right that a user needs; empty for none.
    bool IsEntitySmartList = false;
    std::string EntityType;
};

/// A heading under which reports are listed.
class ReportCategory : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "ReportCategory";
    const Members& members() const override;

    std::string Key, Name, Description;
    Ref<qmevents::Collection> Reports = qmevents::makeRef<qmevents::Collection>();
};

/// `App.Modules.Quillmere.Reports`.
class Reports : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "Reports";
    const Members& members() const override;

    /// `smartLists` gives the records of a list by the list's id.
    Reports(SharedContext context, Ref<SmartLists> smartLists)
        : context_(std::move(context)), smartLists_(std::move(smartLists))
    {
    }
    Ref<qmevents::Collection> Categories = qmevents::makeRef<qmevents::Collection>();
    Ref<ReportCategory> GetNewCategory() const;
    Ref<Report> GetNewReport() const;
    /// The address that shows a report of a record. The folder lies in the add-in's own, or the
    /// call is refused (error 5).
    std::string GetReportTaskString(const std::string& folder, const std::string& key,
                                    const Value& entityId) const;
    /// Asks the modules for their categories and reports, anew.
    Ref<qmevents::Collection> Load();
    /// Asks the modules for the reports that work on a list of records.
    Ref<qmevents::Collection> LoadChooser() const;
    /// The report whose layout is `key` in `folder`, of the add-in: of the event `entityId`, or of
    /// the records of a list, given by the list's id or by the text that follows "SELECT Id FROM ".
    /// Errors: 70 without the report's right or "events/view", 53 without a layout, 5 for one that
    /// is malformed, naming file and line.
    Ref<ReportRun> Open(const std::string& folder, const std::string& key, const Value& entityId,
                        const Value& list);

private:
    std::string folderInAddIn(const std::string& folder) const;
    void checkRight(const std::string& key, const std::string& layoutOperation);
    void takeList(reporting::Inquiry& inquiry, const Value& list) const;

    SharedContext context_;
    Ref<SmartLists> smartLists_;
};

} // namespace refhost
