#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "automation/value.h"
#include "host/document/dialect.h"

namespace refhost {

/// How a value is written into statement text.
enum class LiteralKind : std::int32_t {
    date = 1,
    key = 2,
    number = 3,
    text = 5,
    listName = 6,
    yesNo = 7,
};

/// `value` as a literal of `dialect`. Null and missing are NULL; an empty value is the zero of its
/// kind (NULL for a date). Errors: 5 for a text that no literal can hold, 13 for a value that is
/// none of its kind, 6 for a number out of range.
std::string sqlLiteral(Dialect dialect, const qmevents::Value& value, LiteralKind kind);

/// `text` as part of a pattern for LIKE in which every character means itself.
std::string likeText(std::string_view text);

} // namespace refhost
