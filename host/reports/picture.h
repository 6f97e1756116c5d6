#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/reports/answers.h"

namespace refhost::reporting {

struct Series {
    std::string name;
    std::vector<Value> values;
};

struct Picture {
    std::string kind, title;
    std::vector<std::string> categories;
    std::vector<Series> series;
};

/// Draws the layout's chart of the cells of rows or of groups.
class Draughtsman {
public:
    /// `columnOf` gives the position of a column's cells, nothing when the user may not see it.
    template <typename ColumnOf>
    Draughtsman(const Layout& layout, const Answers& answers, ColumnOf columnOf)
    {
        if (!layout.chart) return;
        for (const SeriesPlan& series : layout.chart->series) {
            if (const auto column = columnOf(series.column)) addSeries(series, *column, answers);
        }
        if (!columns_.empty()) chart_ = &*layout.chart;
    }

    bool drawsRows() const { return chart_ && !chart_->overGroups; }
    bool drawsGroups() const { return chart_ && chart_->overGroups; }
    const std::string& category() const { return chart_->category; } ///< Of a row.
    void addPoint(std::string category, const std::vector<Value>& cells);
    /// The picture; nothing without a point or a series.
    std::optional<Picture> finish();

private:
    void addSeries(const SeriesPlan& series, std::size_t column, const Answers& answers);
    void keepHighest(std::size_t most);

    const ChartPlan* chart_ = nullptr; // nothing when none is drawn
    Picture picture_;
    std::vector<std::size_t> columns_; // one for each series
};

} // namespace refhost::reporting
