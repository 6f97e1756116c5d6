#pragma once

#include <map>
#include <string>
#include <vector>

#include "host/document/dialect.h"

namespace refhost::test {

/// A further filter; `choices` is a statement, or empty where the choices are fixed.
struct BuilderFilter {
    std::string key, line, choices, condition; ///< `line`: what is declared of it, joined by |.
};

struct BuilderField {
    std::string name, line, value;
};

/// A list-builder file as a host reads it, its placeholders replaced: the calendar year is 2026,
/// the fiscal year begins on 1 July 2026, the first period is one day of May 2025, the second March
/// 2024 to February 2026, the third December 2026, the fourth is not set.
struct BuilderFile {
    BuilderFile(Dialect dialect, const std::string& type);

    /// Keys or names of the records with every field, as one statement; `where` may hold {id}.
    std::string statement(const std::string& where = "") const;

    std::string table, from; ///< The records' table, and with the sources of the fields.
    std::vector<BuilderField> fields;
    std::vector<BuilderFilter> filters;
};

} // namespace refhost::test
