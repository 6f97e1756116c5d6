#pragma once

#include <memory>
#include <string>

#include "automation/collection.h"
#include "host/reports/composer.h"

namespace refhost {

/// A column of a report.
class ReportColumn : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "ReportColumn";
    const Members& members() const override;

    std::string Key, Caption, Kind;
    std::int32_t Width = 10; ///< A share of the page, against the other columns'.
    std::string Align;
};

/// A line of a report, in print order.
class ReportLine : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "ReportLine";
    const Members& members() const override;

    explicit ReportLine(reporting::Line line) : line_(std::move(line)) {}
    std::string Kind() const;
    std::int32_t Level() const { return line_.level; }
    std::string Caption() const { return line_.caption; }
    Value Cells() const; ///< An array.
    std::int32_t Link() const { return line_.link; }

private:
    reporting::Line line_;
};

/// The figures of one colour in a chart.
class ReportSeries : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "ReportSeries";
    const Members& members() const override;

    std::string Name;
    Value Values; ///< An array, one for each category.
};

/// The picture that a report opens with.
class ReportChart : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "ReportChart";
    const Members& members() const override;

    std::string Kind, Title;
    Value Categories; ///< An array of texts.
    Ref<qmevents::Collection> Series = qmevents::makeRef<qmevents::Collection>();
};

/// A report that was opened: its filters and, once it ran, its lines.
class ReportRun : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "ReportRun";
    const Members& members() const override;

    explicit ReportRun(std::shared_ptr<reporting::Inquiry> inquiry);

    // The late-bound face.
    std::string Key() const { return inquiry_->layout.key; }
    std::string Title() const { return inquiry_->layout.title; }
    std::string Description() const { return inquiry_->layout.description; }
    std::string Orientation() const { return inquiry_->layout.orientation; }
    /// Reads and computes. False when a filter has no proper value or its event is gone: `Problem`
    /// says so, and what an earlier run gave is dropped.
    bool Run();
    std::string Problem() const { return problem_; }

    qmevents::Date Made; ///< When it ran last.
    Ref<qmevents::Collection> Filters = qmevents::makeRef<qmevents::Collection>();
    Ref<qmevents::Collection> Columns = qmevents::makeRef<qmevents::Collection>();
    Ref<qmevents::Collection> Lines = qmevents::makeRef<qmevents::Collection>();
    Ref<ReportChart> Chart;
    Value Notes; ///< An array of texts.

private:
    void clear();

    std::shared_ptr<reporting::Inquiry> inquiry_;
    std::string problem_;
};

} // namespace refhost
