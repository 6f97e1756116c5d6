#pragma once

#include <string>

#include "host/document/dialect.h"
#include "host/lists/list_definition.h"
#include "host/lists/list_fields.h"

namespace refhost {

/// What a filter asks for in SQL, or why it cannot be asked for: a value that is missing or none of
/// its kind.
struct ListCondition {
    std::string sql;
    std::string fault;
};

/// `criterion`, whose expressions are ready for the statement, with what `filter` compares it to.
/// Every value stands in it as a literal of `dialect`; wildcards mean themselves.
ListCondition conditionOf(const ListCriterion& criterion, const ListDefinition::Filter& filter,
                          Dialect dialect);

} // namespace refhost
