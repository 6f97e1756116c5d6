#pragma once

#include "host/app/session_context.h"
#include "host/lists/list_rows.h"
#include "host/lists/list_statement.h"

namespace refhost {

/// A list as it was read.
struct ListReading {
    ListStatement statement;
    ListRows rows; ///< The keys first (see listKeys), then the columns.

    std::vector<std::int32_t> keys() const; ///< Of the records, in their order.
};

/// Reads the list. What the engine refuses in the expression of a field or criterion is marked at
/// it in the schema, and left out with a warning that names its place.
ListReading readList(const SharedContext& context, ListSchema& schema,
                     const ListDefinition& definition);

} // namespace refhost
