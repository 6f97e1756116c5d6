#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/lists/list_types.h"

namespace refhost {

/// A column that a module offers for a list: the field that it shows is defined in a file.
struct OfferedColumn {
    std::string module, caption, field, operation;
    std::int32_t width = 100;
    bool isShown = false;
};

/// All that a list of a type can show and be filtered by.
struct ListSchema {
    const ListType* type = nullptr;
    std::vector<ListField> fields = {};
    std::vector<ListCriterion> criteria = {};
    std::vector<std::string> warnings = {}; ///< What could not be offered, and why.

    const ListField* field(std::string_view name) const; ///< Null when there is none.
    const ListCriterion* criterion(std::string_view key) const;
    /// The field that tells the event of a row; null when no module brought one that can be used.
    const ListField* eventField() const;
    ListField* field(std::string_view name);
    ListCriterion* criterion(std::string_view key);
};

/// The schema of what the host knows itself and of what modules offer: `files` define fields,
/// `columns` say which of them a list of the type has.
ListSchema makeSchema(const ListType& type, Dialect dialect, const std::vector<ListOffer>& files,
                      const std::vector<OfferedColumn>& columns);

} // namespace refhost
