#pragma once

#include <map>
#include <string>
#include <vector>

#include "automation/object.h"
#include "automation/value.h"

namespace qmevents::testing {

/// The rows that a query answers with.
struct Rows {
    std::vector<std::string> columns;
    std::vector<std::vector<Value>> rows;
};

/// A record set over `rows`; counts how often it is closed.
Ref<Object> recordSet(Rows rows, int* closed = nullptr);

/// One row of the table of events: all null but for the id and what `cells` names.
Rows eventRow(std::int32_t id, const std::map<std::string, Value>& cells = {});

} // namespace qmevents::testing
