#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/reports/composer.h"
#include "host/reports/figures.h"
#include "host/reports/records.h"
#include "host/reports/reservation_answers.h"

namespace refhost::reporting {

/// Where the cells of a kind of row come from, found once for all rows of a section.
struct RowBinding {
    struct Source {
        std::optional<std::size_t> field;
        std::string text; ///< With `{field}`; stands when there is no field.
    };
    std::vector<Source> sources; ///< One for each column.
    std::optional<std::size_t> link, needs;
    int line = 0;
};

/// The running totals of a group or of a section.
struct Totals {
    std::vector<Figure> figures; ///< One for each column.
    std::size_t rows = 0;
};

/// The columns that this user sees of a report, and what stands in them.
class Columns {
public:
    /// `sections` are the rows of all sections: questions that were asked become columns.
    Columns(const Inquiry& inquiry, const std::vector<Records>& sections);

    std::vector<ShownColumn> shown() const { return onlyShown(columns_); }
    /// `items`, one for each column, without those of hidden columns.
    template <typename T>
    std::vector<T> onlyShown(std::vector<T> items) const
    {
        for (std::size_t i = items.size(); i-- > 0;) {
            if (slots_[i].plan->isHidden)
                items.erase(items.begin() + static_cast<std::ptrdiff_t>(i));
        }
        return items;
    }
    std::optional<std::size_t> indexOf(const std::string& key) const;
    /// Whether columns are left out because the user lacks a right.
    bool areWithheld() const { return withheld_; }
    /// Lines whose answers cannot be read.
    std::size_t unreadable() const { return unreadable_; }

    RowBinding bind(const Records& records, const RowPlan& row, int line) const;
    std::vector<Value> cells(const Records& records, const Record& record,
                             const RowBinding& binding, std::size_t number);
    Totals newTotals() const { return {std::vector<Figure>(slots_.size()), 0}; }
    void add(Totals& totals, const std::vector<Value>& cells) const;
    std::vector<Value> cellsOf(const Totals& totals) const;

private:
    struct Slot {
        const ColumnPlan* plan = nullptr;
        std::string question; ///< Of a column that shows the answers to one.
    };

    void show(const ColumnPlan& plan, const std::string& question);
    void showQuestions(const ColumnPlan& plan, const std::vector<Records>& sections);
    void fillRatios(std::vector<Value>& cells) const;
    Value answer(const Slot& slot, const Value& document);

    const Inquiry& inquiry_;
    std::vector<Slot> slots_;          // one for each column that the user may see
    std::vector<ShownColumn> columns_; // likewise
    bool withheld_ = false;
    std::size_t unreadable_ = 0;
    // The document that was read last: each of its questions asks for it.
    std::string document_;
    std::optional<std::vector<ReservationField>> fields_;
};

} // namespace refhost::reporting
