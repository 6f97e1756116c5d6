#include "host/reports/report_run.h"

#include "automation/clock.h"
#include "automation/describe.h"
#include "automation/error.h"
#include "host/reports/filter.h"

namespace refhost {

using qmevents::Array;
using qmevents::describe;
using qmevents::makeRef;

namespace {

Value listOf(const std::vector<std::string>& texts)
{
    return {Array::list(std::vector<Value>(texts.begin(), texts.end()))};
}

Ref<ReportColumn> columnFrom(const reporting::ShownColumn& shown)
{
    static constexpr const char* kinds[] = {"text", "number",   "money", "percent",
                                            "date", "datetime", "yesno"};
    const auto column = makeRef<ReportColumn>();
    column->Key = shown.key;
    column->Caption = shown.caption;
    column->Kind = kinds[static_cast<std::size_t>(shown.kind)];
    column->Width = shown.width;
    column->Align = shown.align;
    return column;
}

Ref<ReportChart> chartFrom(reporting::Picture picture)
{
    const auto chart = makeRef<ReportChart>();
    chart->Kind = picture.kind;
    chart->Title = picture.title;
    chart->Categories = listOf(picture.categories);
    for (reporting::Series& plan : picture.series) {
        const auto series = makeRef<ReportSeries>();
        series->Name = plan.name;
        series->Values = Array::list(std::move(plan.values));
        chart->Series->append(Value(series));
    }
    return chart;
}

} // namespace

const Members& ReportColumn::members() const
{
    static const Members table =
        describe<ReportColumn>("A column of a report.")
            .readOnly("Key", &ReportColumn::Key, "The key among the columns.")
            .readOnly("Caption", &ReportColumn::Caption, "Its head.")
            .readOnly("Kind", &ReportColumn::Kind,
                      "\"text\", \"number\", \"money\", \"percent\", \"date\", \"datetime\" or "
                      "\"yesno\".")
            .readOnly("Width", &ReportColumn::Width, "Its share of the page against the others'.")
            .readOnly("Align", &ReportColumn::Align, "\"left\", \"right\" or \"center\".");
    return table;
}

const Members& ReportLine::members() const
{
    static const Members table =
        describe<ReportLine>("A line of a report, in print order.")
            .readOnly("Kind", &ReportLine::Kind, "\"head\", \"row\", \"subtotal\" or \"total\".")
            .readOnly("Level", &ReportLine::Level, "How deep its group lies, from 0.")
            .readOnly("Caption", &ReportLine::Caption, "The text of a head or of a total.")
            .readOnly("Cells", &ReportLine::Cells, "The values, one for each column.")
            .readOnly("Link", &ReportLine::Link, "The id of the event to open, or 0.");
    return table;
}

std::string ReportLine::Kind() const
{
    static constexpr const char* kinds[] = {"head", "row", "subtotal", "total"};
    return kinds[static_cast<std::size_t>(line_.kind)];
}

Value ReportLine::Cells() const { return {Array::list(line_.cells)}; }

const Members& ReportSeries::members() const
{
    static const Members table =
        describe<ReportSeries>("The figures of one colour in a chart.")
            .readOnly("Name", &ReportSeries::Name, "What they are.")
            .readOnly("Values", &ReportSeries::Values, "One for each category.");
    return table;
}

const Members& ReportChart::members() const
{
    static const Members table =
        describe<ReportChart>("The picture that a report opens with.")
            .readOnly("Kind", &ReportChart::Kind, "\"bar\", \"groupedbar\" or \"line\".")
            .readOnly("Title", &ReportChart::Title, "What it shows.")
            .readOnly("Categories", &ReportChart::Categories, "What stands along the axis.")
            .readOnly("Series", &ReportChart::Series, "The figures.");
    return table;
}

const Members& ReportRun::members() const
{
    static const Members table =
        describe<ReportRun>("A report that was opened.")
            .readOnly("Key", &ReportRun::Key, "The layout's key.")
            .readOnly("Title", &ReportRun::Title, "Its heading.")
            .readOnly("Description", &ReportRun::Description, "What it shows.")
            .readOnly("Orientation", &ReportRun::Orientation, "\"portrait\" or \"landscape\".")
            .readOnly("Filters", &ReportRun::Filters, "The questions that are asked first.")
            .method("Run", &ReportRun::Run,
                    "Reads and computes; False when `Problem` tells why it cannot.")
            .readOnly("Problem", &ReportRun::Problem, "Why it did not run; empty when it did.")
            .readOnly("Made", &ReportRun::Made, "When it ran last.")
            .readOnly("Columns", &ReportRun::Columns, "The columns.")
            .readOnly("Lines", &ReportRun::Lines, "The lines, in print order.")
            .readOnly("Chart", &ReportRun::Chart, "The picture, or Nothing.")
            .readOnly("Notes", &ReportRun::Notes, "What stands below the heading: the filters.");
    return table;
}

ReportRun::ReportRun(std::shared_ptr<reporting::Inquiry> inquiry) : inquiry_(std::move(inquiry))
{
    const auto& filters = inquiry_->layout.filters;
    for (std::size_t i = 0; i < filters.size(); ++i) {
        if (!reporting::isAsked(*inquiry_, filters[i])) continue;
        Filters->append(Value(makeRef<reporting::Filter>(inquiry_, i)), filters[i].key);
        if (filters[i].kind == reporting::FilterKind::event && !inquiry_->values[i].isEmpty())
            problem_ = reporting::readAnswers(*inquiry_).at(filters[i].key).problem;
    }
    clear();
}

void ReportRun::clear()
{
    Columns->clear();
    Lines->clear();
    Chart = {};
    Notes = Array::list({});
}

bool ReportRun::Run()
{
    clear();
    problem_.clear();
    if (!reporting::mayUse(inquiry_->context, "events/view") ||
        !reporting::mayUse(inquiry_->context, inquiry_->layout.operation)) {
        problem_ = "You do not have the right to view this report.";
        return false;
    }
    const reporting::Answers answers =
        reporting::readAnswers(*inquiry_, reporting::ReadFor::running);
    for (const reporting::FilterPlan& filter : inquiry_->layout.filters) {
        problem_ = answers.at(filter.key).problem;
        if (!problem_.empty()) return false;
    }
    Made = qmevents::Clock::now();
    reporting::Composition composition = reporting::compose(*inquiry_, answers);
    for (const auto& column : composition.columns) Columns->append(Value(columnFrom(column)));
    for (auto& line : composition.lines) Lines->append(Value(makeRef<ReportLine>(std::move(line))));
    if (composition.picture) Chart = chartFrom(std::move(*composition.picture));
    Notes = listOf(composition.notes);
    return true;
}

} // namespace refhost
