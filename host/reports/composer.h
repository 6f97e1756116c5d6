#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/reports/answers.h"
#include "host/reports/picture.h"

namespace refhost::reporting {

struct ShownColumn {
    std::string key, caption;
    CellKind kind = CellKind::text;
    int width = 10;
    std::string align;
};

enum class LineKind { head, row, subtotal, total };

struct Line {
    LineKind kind = LineKind::row;
    std::int32_t level = 0;
    std::string caption;
    std::vector<Value> cells;
    std::int32_t link = 0; ///< An event's id, or 0.
};

/// A report as it is shown: lines in print order, all totals computed.
struct Composition {
    std::vector<ShownColumn> columns;
    std::vector<Line> lines;
    std::optional<Picture> picture;
    std::vector<std::string> notes;
};

/// Reads the rows of each section, one statement each, and composes the report.
Composition compose(const Inquiry& inquiry, const Answers& answers);

} // namespace refhost::reporting
