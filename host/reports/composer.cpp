#include "host/reports/composer.h"

#include <algorithm>
#include <map>
#include <numeric>

#include "host/reports/columns.h"
#include "host/reports/statement.h"

namespace refhost::reporting {
namespace {

// The rows of one group of a section, by position.
using Rows = std::vector<std::size_t>;

std::int32_t linkOf(const Record& record, const std::optional<std::size_t>& column)
{
    return column && record[*column].isNumber() ? qmevents::toInt32(record[*column]) : 0;
}

bool isBlank(const Value& value)
{
    return wordsOf(value).empty() || (value.isNumber() && qmevents::toDouble(value) == 0);
}

class Composer {
public:
    Composer(const Inquiry& inquiry, const Answers& answers)
        : inquiry_(inquiry), layout_(inquiry.layout), answers_(answers)
    {
    }

    Composition compose()
    {
        for (const SectionPlan& section : layout_.sections) {
            const bool allowed = mayUse(inquiry_.context, section.operation);
            withheld_ = withheld_ || !allowed;
            sections_.push_back(allowed ? readSectionRows(inquiry_, section, answers_) : Records());
        }
        Columns columns(inquiry_, sections_);
        columns_ = &columns;
        result_.columns = columns.shown();
        beginPicture();
        if (layout_.record) {
            composeRecords(*layout_.record);
        } else {
            for (std::size_t i = 0; i < sections_.size(); ++i) {
                Rows rows(sections_[i].rows.size());
                std::iota(rows.begin(), rows.end(), std::size_t{0});
                composeSection(i, rows, 0);
            }
        }
        finishPicture();
        writeNotes();
        return std::move(result_);
    }

private:
    void composeRecords(const RecordPlan& plan)
    {
        const Records records = readRecords(inquiry_, plan.sql, answers_);
        const std::size_t key = records.column(layout_, plan.by, plan.line);
        std::optional<std::size_t> link;
        if (!plan.link.empty()) link = records.column(layout_, plan.link, plan.line);
        std::vector<std::map<std::string, Rows>> rowsOf(sections_.size());
        for (std::size_t i = 0; i < sections_.size(); ++i) {
            const Records& section = sections_[i];
            if (section.names.empty()) continue;
            const auto of = section.column(layout_, plan.by, layout_.sections[i].line);
            for (std::size_t row = 0; row < section.rows.size(); ++row)
                rowsOf[i][wordsOf(section.rows[row][of])].push_back(row);
        }
        for (const Record& record : records.rows) {
            addHead(filled(plan.caption, layout_, records, record, 0, plan.line), 0,
                    linkOf(record, link));
            for (std::size_t i = 0; i < sections_.size(); ++i)
                composeSection(i, rowsOf[i][wordsOf(record[key])], 1);
        }
    }

    void addHead(std::string caption, std::int32_t level, std::int32_t link)
    {
        result_.lines.push_back(
            {LineKind::head, level, std::move(caption),
             std::vector<Value>(result_.columns.size(), Value(qmevents::Null{})), link});
    }

    void composeSection(std::size_t index, const Rows& rows, std::int32_t level)
    {
        const SectionPlan& plan = layout_.sections[index];
        const Records& records = sections_[index];
        if (records.names.empty() || (rows.empty() && layout_.sections.size() > 1)) return;
        std::vector<RowBinding> bindings;
        for (const RowPlan& row : plan.rows) {
            if (mayUse(inquiry_.context, row.operation))
                bindings.push_back(columns_->bind(records, row, plan.line));
            else
                withheld_ = true;
        }
        if (!plan.caption.empty()) addHead(plan.caption, level++, 0);
        Totals totals = columns_->newTotals();
        std::size_t number = 0;
        composeGroup(plan, records, rows, 0, level, bindings, totals, number, !plan.total.empty());
        if (plan.total.empty()) return;
        const Record blank(records.names.size(), Value(qmevents::Null{}));
        result_.lines.push_back(
            {LineKind::total, level,
             filled(plan.total, layout_, records, rows.empty() ? blank : records.rows[rows.front()],
                    totals.rows, plan.line),
             columns_->onlyShown(columns_->cellsOf(totals)), 0});
    }

    // The rows below the group level `depth`, with heads and subtotals; adds to all of `above`.
    void composeGroup(const SectionPlan& plan, const Records& records, const Rows& rows,
                      std::size_t depth, std::int32_t level,
                      const std::vector<RowBinding>& bindings, Totals& above, std::size_t& number,
                      bool aloneAbove)
    {
        if (depth == plan.groups.size()) {
            for (const std::size_t row : rows) {
                addRows(records, records.rows[row], level, bindings, above, ++number);
            }
            return;
        }
        const GroupPlan& group = plan.groups[depth];
        const std::size_t key = records.column(layout_, group.by, group.line);
        std::optional<std::size_t> link;
        if (!group.link.empty()) link = records.column(layout_, group.link, group.line);
        for (std::size_t begin = 0; begin < rows.size();) {
            const std::string value = wordsOf(records.rows[rows[begin]][key]);
            std::size_t end = begin;
            while (end < rows.size() && wordsOf(records.rows[rows[end]][key]) == value) ++end;
            const Record& first = records.rows[rows[begin]];
            const std::string head = headOf(group, records, first, value);
            addHead(head, level, linkOf(first, link));
            // A group that is alone has the figures of the total below it.
            const bool isAlone = aloneAbove && end - begin == rows.size();
            Totals totals = columns_->newTotals();
            composeGroup(plan, records,
                         Rows(rows.begin() + static_cast<std::ptrdiff_t>(begin),
                              rows.begin() + static_cast<std::ptrdiff_t>(end)),
                         depth + 1, level + 1, bindings, totals, number, isAlone);
            if (!group.subtotal.empty() && !isAlone) {
                result_.lines.push_back(
                    {LineKind::subtotal, level,
                     filled(group.subtotal, layout_, records, first, totals.rows, group.line),
                     columns_->onlyShown(columns_->cellsOf(totals)), 0});
            }
            if (depth == 0) addGroupToPicture(head, totals);
            above.rows += totals.rows;
            for (std::size_t i = 0; i < totals.figures.size(); ++i)
                above.figures[i].add(totals.figures[i]);
            begin = end;
        }
    }

    std::string headOf(const GroupPlan& group, const Records& records, const Record& first,
                       const std::string& value) const
    {
        const auto word = group.words.find(value);
        if (word != group.words.end()) return word->second;
        if (!group.blank.empty() && (value.empty() || value == "0")) return group.blank;
        const std::string head = filled(group.caption, layout_, records, first, 0, group.line);
        return head.empty() ? group.blank : head;
    }

    void addRows(const Records& records, const Record& record, std::int32_t level,
                 const std::vector<RowBinding>& bindings, Totals& totals, std::size_t number)
    {
        for (const RowBinding& binding : bindings) {
            if (binding.needs && isBlank(record[*binding.needs])) continue;
            std::vector<Value> cells = columns_->cells(records, record, binding, number);
            columns_->add(totals, cells, records, record);
            addRowToPicture(records, record, cells);
            result_.lines.push_back({LineKind::row,
                                     level,
                                     {},
                                     columns_->onlyShown(std::move(cells)),
                                     linkOf(record, binding.link)});
        }
    }

    void beginPicture()
    {
        if (!layout_.chart) return;
        Picture picture{layout_.chart->kind, layout_.chart->title, {}, {}};
        for (const SeriesPlan& series : layout_.chart->series) {
            const auto column = columns_->indexOf(series.column);
            if (!column || (series.when && !holds(*series.when, answers_))) continue;
            pictureColumns_.push_back(*column);
            picture.series.push_back({series.caption, {}});
        }
        if (!picture.series.empty()) result_.picture = std::move(picture);
    }

    void addRowToPicture(const Records& records, const Record& record,
                         const std::vector<Value>& cells)
    {
        if (result_.picture && !layout_.chart->overGroups)
            addPoint(filled(layout_.chart->category, layout_, records, record, 0, 0), cells);
    }

    void addGroupToPicture(const std::string& head, const Totals& totals)
    {
        if (result_.picture && layout_.chart->overGroups) addPoint(head, columns_->cellsOf(totals));
    }

    void addPoint(std::string category, const std::vector<Value>& cells)
    {
        Picture& picture = *result_.picture;
        picture.categories.push_back(std::move(category));
        for (std::size_t i = 0; i < pictureColumns_.size(); ++i) {
            const Value& value = cells[pictureColumns_[i]];
            picture.series[i].values.push_back(value.isNull() ? Value(0) : value);
        }
    }

    // A picture of very many points says nothing: the highest stay, in their order.
    void finishPicture()
    {
        if (!result_.picture) return;
        Picture& picture = *result_.picture;
        const std::size_t most = layout_.chart->most;
        if (picture.categories.empty()) {
            result_.picture.reset();
        } else if (picture.categories.size() > most) {
            const auto heightOf = [&](std::size_t point) {
                double height = 0;
                for (const Series& series : picture.series) {
                    const Value& value = series.values[point];
                    if (value.isNumber()) height = std::max(height, qmevents::toDouble(value));
                }
                return height;
            };
            std::vector<std::size_t> points(picture.categories.size());
            std::iota(points.begin(), points.end(), std::size_t{0});
            std::stable_sort(points.begin(), points.end(),
                             [&](auto a, auto b) { return heightOf(a) > heightOf(b); });
            points.resize(most);
            std::sort(points.begin(), points.end());
            picture.title += " (the " + std::to_string(most) + " highest)";
            picture.categories = chosen(picture.categories, points);
            for (Series& series : picture.series) series.values = chosen(series.values, points);
        }
    }

    template <typename T>
    static std::vector<T> chosen(const std::vector<T>& all, const std::vector<std::size_t>& points)
    {
        std::vector<T> result;
        result.reserve(points.size());
        for (const std::size_t point : points) result.push_back(all[point]);
        return result;
    }

    void writeNotes()
    {
        std::map<std::string, bool> told;
        for (const FilterPlan& filter : layout_.filters) {
            if (filter.notBefore.empty()) continue;
            told[filter.notBefore] = told[filter.key] = true;
        }
        for (const FilterPlan& filter : layout_.filters) {
            const Answer& answer = answers_.at(filter.key);
            if (!filter.notBefore.empty()) {
                writeRange(filter, answers_.at(filter.notBefore), answer);
            } else if (answer.given && !told[filter.key]) {
                result_.notes.push_back(filter.caption + ": " + answer.words);
            }
        }
        if (withheld_ || columns_->areWithheld()) {
            result_.notes.emplace_back(
                "Figures that you do not have the right to view are left out.");
        }
        if (columns_->unreadable() > 0)
            result_.notes.emplace_back("Some reservation fields cannot be read and are left out.");
    }

    void writeRange(const FilterPlan& filter, const Answer& from, const Answer& to)
    {
        const std::string name = filter.range.empty() ? filter.caption : filter.range;
        if (from.given && to.given) {
            result_.notes.push_back(name + ": " + from.words + " to " + to.words);
        } else if (from.given) {
            result_.notes.push_back(name + ": from " + from.words);
        } else if (to.given) {
            result_.notes.push_back(name + ": to " + to.words);
        }
    }

    const Inquiry& inquiry_;
    const Layout& layout_;
    const Answers& answers_;
    std::vector<Records> sections_; // without names: the user lacks the right
    Columns* columns_ = nullptr;
    Composition result_;
    std::vector<std::size_t> pictureColumns_; // one for each series
    bool withheld_ = false;
};

} // namespace

Composition compose(const Inquiry& inquiry, const Answers& answers)
{
    return Composer(inquiry, answers).compose();
}

} // namespace refhost::reporting
