#include "host/reports/composer.h"

#include <algorithm>
#include <map>
#include <numeric>

#include "host/reports/columns.h"
#include "host/reports/notes.h"

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
        Draughtsman draughtsman(layout_, answers_,
                                [&](const std::string& key) { return columns.indexOf(key); });
        draughtsman_ = &draughtsman;
        if (layout_.record) {
            composeRecords(*layout_.record);
        } else {
            for (std::size_t i = 0; i < sections_.size(); ++i) {
                Rows rows(sections_[i].rows.size());
                std::iota(rows.begin(), rows.end(), std::size_t{0});
                composeSection(i, rows, 0);
            }
        }
        result_.picture = draughtsman.finish();
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
            addHead(filled(plan.caption, layout_, records, record, {}, plan.line), 0,
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
        Walk walk{plan, records, {}};
        for (const RowPlan& row : plan.rows) {
            if (mayUse(inquiry_.context, row.operation))
                walk.bindings.push_back(columns_->bind(records, row, plan.line));
            else
                withheld_ = true;
        }
        if (!plan.caption.empty()) addHead(plan.caption, level++, 0);
        Totals totals = columns_->newTotals();
        composeGroup(walk, rows, {0, level, !plan.total.empty()}, totals);
        if (plan.total.empty()) return;
        const Record blank(records.names.size(), Value(qmevents::Null{}));
        result_.lines.push_back(
            {LineKind::total, level,
             filled(plan.total, layout_, records, rows.empty() ? blank : records.rows[rows.front()],
                    {totals.rows, rows}, plan.line),
             columns_->onlyShown(columns_->cellsOf(totals)), 0});
    }

    // What stays the same on the way through a section's groups.
    struct Walk {
        const SectionPlan& plan;
        const Records& records;
        std::vector<RowBinding> bindings;
        std::size_t number = 0; // of the row
    };
    struct Place {
        std::size_t depth = 0; // among the groups
        std::int32_t level = 0;
        bool isAlone = false; // the groups above are, each at its level
    };

    // The rows below a group, with heads and subtotals; adds to the totals of the group above.
    void composeGroup(Walk& walk, const Rows& rows, const Place& place, Totals& above)
    {
        const Records& records = walk.records;
        if (place.depth == walk.plan.groups.size()) {
            for (const std::size_t row : rows) addRows(walk, records.rows[row], place.level, above);
            return;
        }
        const GroupPlan& group = walk.plan.groups[place.depth];
        const std::size_t key = records.column(layout_, group.by, group.line);
        std::optional<std::size_t> link;
        if (!group.link.empty()) link = records.column(layout_, group.link, group.line);
        for (auto begin = rows.begin(); begin != rows.end();) {
            const std::string value = wordsOf(records.rows[*begin][key]);
            const auto end = std::find_if(begin, rows.end(), [&](std::size_t row) {
                return wordsOf(records.rows[row][key]) != value;
            });
            const Record& first = records.rows[*begin];
            const std::string head = headOf(group, records, first, value);
            addHead(head, place.level, linkOf(first, link));
            // A group that is alone has the figures of the total below it.
            const bool isAlone = place.isAlone && begin == rows.begin() && end == rows.end();
            Totals totals = columns_->newTotals();
            composeGroup(walk, Rows(begin, end), {place.depth + 1, place.level + 1, isAlone},
                         totals);
            if (!group.subtotal.empty() && !isAlone) {
                result_.lines.push_back({LineKind::subtotal, place.level,
                                         filled(group.subtotal, layout_, records, first,
                                                {totals.rows, {begin, end}, head}, group.line),
                                         columns_->onlyShown(columns_->cellsOf(totals)), 0});
            }
            if (place.depth == 0 && draughtsman_->drawsGroups())
                draughtsman_->addPoint(head, columns_->cellsOf(totals));
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
        const std::string head = filled(group.caption, layout_, records, first, {}, group.line);
        return head.empty() ? group.blank : head;
    }

    void addRows(Walk& walk, const Record& record, std::int32_t level, Totals& totals)
    {
        const Records& records = walk.records;
        ++walk.number;
        for (const RowBinding& binding : walk.bindings) {
            if (binding.needs && isBlank(record[*binding.needs])) continue;
            std::vector<Value> cells = columns_->cells(records, record, binding, walk.number);
            columns_->add(totals, cells);
            if (draughtsman_->drawsRows()) {
                draughtsman_->addPoint(
                    filled(draughtsman_->category(), layout_, records, record, {}, 0), cells);
            }
            result_.lines.push_back({LineKind::row,
                                     level,
                                     {},
                                     columns_->onlyShown(std::move(cells)),
                                     linkOf(record, binding.link)});
        }
    }

    void writeNotes()
    {
        result_.notes = notesOf(layout_, answers_);
        if (withheld_ || columns_->areWithheld()) {
            result_.notes.emplace_back(
                "Figures that you do not have the right to view are left out.");
        }
        if (columns_->unreadable() > 0)
            result_.notes.emplace_back("Some reservation fields cannot be read and are left out.");
    }

    const Inquiry& inquiry_;
    const Layout& layout_;
    const Answers& answers_;
    std::vector<Records> sections_; // without names: the user lacks the right
    Columns* columns_ = nullptr;
    Draughtsman* draughtsman_ = nullptr;
    Composition result_;
    bool withheld_ = false;
};

} // namespace

Composition compose(const Inquiry& inquiry, const Answers& answers)
{
    return Composer(inquiry, answers).compose();
}

} // namespace refhost::reporting
