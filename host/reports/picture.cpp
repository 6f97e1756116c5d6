#include "host/reports/picture.h"

#include <algorithm>
#include <numeric>

#include "host/reports/statement.h"

namespace refhost::reporting {
namespace {

template <typename T>
std::vector<T> chosen(const std::vector<T>& all, const std::vector<std::size_t>& points)
{
    std::vector<T> result;
    result.reserve(points.size());
    for (const std::size_t point : points) result.push_back(all[point]);
    return result;
}

} // namespace

void Draughtsman::addSeries(const SeriesPlan& series, std::size_t column, const Answers& answers)
{
    if (series.when && !holds(*series.when, answers)) return;
    columns_.push_back(column);
    picture_.series.push_back({series.caption, {}});
}

void Draughtsman::addPoint(std::string category, const std::vector<Value>& cells)
{
    picture_.categories.push_back(std::move(category));
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        const Value& value = cells[columns_[i]];
        picture_.series[i].values.push_back(value.isNull() ? Value(0) : value);
    }
}

std::optional<Picture> Draughtsman::finish()
{
    if (!chart_ || picture_.categories.empty()) return std::nullopt;
    picture_.kind = chart_->kind;
    picture_.title = chart_->title;
    if (picture_.categories.size() > chart_->most) keepHighest(chart_->most);
    return std::move(picture_);
}

// A picture of very many points says nothing: the highest stay, in their order.
void Draughtsman::keepHighest(std::size_t most)
{
    const auto heightOf = [&](std::size_t point) {
        double height = 0;
        for (const Series& series : picture_.series) {
            const Value& value = series.values[point];
            if (value.isNumber()) height = std::max(height, qmevents::toDouble(value));
        }
        return height;
    };
    std::vector<std::size_t> points(picture_.categories.size());
    std::iota(points.begin(), points.end(), std::size_t{0});
    std::stable_sort(points.begin(), points.end(),
                     [&](auto a, auto b) { return heightOf(a) > heightOf(b); });
    points.resize(most);
    std::sort(points.begin(), points.end());
    picture_.title += " (the " + std::to_string(most) + " highest)";
    picture_.categories = chosen(picture_.categories, points);
    for (Series& series : picture_.series) series.values = chosen(series.values, points);
}

} // namespace refhost::reporting
