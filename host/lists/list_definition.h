#pragma once

#include <string>
#include <vector>

namespace refhost {

/// What a list shows and which records it holds. Captions are kept beside the names, so that what
/// no longer exists can still be called by the name that the user knows.
struct ListDefinition {
    struct Column {
        std::string name, caption;
    };
    struct Filter {
        std::string key, caption, operation;
        std::vector<std::string> values; ///< Days as "2026-03-07", numbers with a point, keys.
    };

    std::string type = {};
    bool matchesAny = false; ///< One filter is enough; otherwise all count.
    std::vector<Column> columns = {};
    std::vector<Filter> filters = {};
    std::string sort = {}; ///< The name of a field; ties are broken by the record's key.
    bool sortsDown = false;
};

/// The definition as a text, without its type.
std::string written(const ListDefinition& definition);
/// The definition that `text` holds; what is not understood is left out.
ListDefinition readDefinition(const std::string& type, const std::string& text);

} // namespace refhost
