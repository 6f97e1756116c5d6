#pragma once

#include <string>
#include <vector>

#include "host/document/catalog.h"

namespace refhost {

/// A column as it shall be.
struct ChangedColumn {
    const CatalogColumn* before = nullptr;
    std::string definition; ///< Without a key; one that the column had stays.
    SqlType type;
};

/// The statements that give one column of `table` another type: the engine has no such change, so
/// the table is made anew with its rows, its counter and its indexes.
std::vector<std::string> rebuildStatements(Catalog& catalog, const CatalogTable& table,
                                           const ChangedColumn& changed, Dialect dialect);

} // namespace refhost
