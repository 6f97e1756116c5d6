#pragma once

#include <functional>
#include <string>
#include <vector>

#include "host/document/dialect.h"
#include "host/lists/list_definition.h"
#include "host/lists/list_schema.h"

namespace refhost {

class ListPeriods;

/// What is wrong with a filter, counted from 1.
struct ListFault {
    std::size_t filter = 0;
    std::string text;
};

/// The one statement that reads a list, and what had to be left out of it.
struct ListStatement {
    /// The record's key, its donor and its event, then `columns`; empty when there are faults.
    std::string text;
    std::vector<ListField> columns;
    std::vector<std::string> warnings;
    bool isWidened = false; ///< A filter was left out, so that there may be more records.
    std::vector<ListFault> faults;
};

/// What a statement is made with.
struct ListTools {
    Dialect dialect;
    const ListPeriods& periods;
    std::function<bool(const std::string& right)> allowed;
};

/// How many columns of a row stand before those that the list shows.
constexpr std::size_t listKeys = 3;

/// The statement for `definition`. Fields and criteria that the schema does not have, and those
/// that the user may not see, are left out with a warning.
ListStatement listStatement(const ListSchema& schema, const ListDefinition& definition,
                            const ListTools& tools);

/// A statement that works the field or the criterion out for no record: it fails where the
/// expression does.
std::string probeOf(const ListType& type, const ListField& field, const ListTools& tools);
std::string probeOf(const ListType& type, const ListCriterion& criterion, const ListTools& tools);

} // namespace refhost
