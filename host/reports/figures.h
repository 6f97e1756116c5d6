#pragma once

#include <cstdint>

#include "automation/currency.h"
#include "automation/value.h"
#include "host/reports/layout.h"

namespace refhost::reporting {

/// The total of one column: money and whole numbers are added exactly.
class Figure {
public:
    void add(const qmevents::Value& cell, CellKind kind);
    void countOne() { whole_ += 1; }
    void add(const Figure& other); ///< What was added to `other`, too.
    /// Null when it is a sum of `rows` none of which had a figure.
    qmevents::Value value(CellKind kind, Totalled total, std::size_t rows) const;

private:
    qmevents::Currency money_;
    std::int64_t whole_ = 0;
    double real_ = 0;
    bool hasReal_ = false;
    bool hasAny_ = false;
};

/// `part` of `whole`, both figures: per cent to one decimal, else what one of `whole` comes to.
/// Null when `whole` is 0 or either is missing.
qmevents::Value ratio(const qmevents::Value& part, const qmevents::Value& whole, CellKind kind);

} // namespace refhost::reporting
