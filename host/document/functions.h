#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "host/document/dialect.h"
#include "host/document/sql_type.h"

namespace refhost {

/// A function of a dialect: what it takes, what it gives and how the embedded engine computes it.
struct Function {
    enum class Result { integer, date, text, asFirst, special };

    std::string_view name; ///< In upper case.
    /// A letter for each parameter: t text, i whole number, n number, d date, a any value, c
    /// condition, p part of a date. Those after "?" are optional; "*" at the end: any number more.
    std::string_view parameters;
    Result result = Result::special;
    /// The engine's expression, $1 standing for the first argument, $* for all; empty for what the
    /// translator writes itself.
    std::string_view sql;
    bool aggregate = false;
    std::size_t fewest = 0, most = 0;

    constexpr Function(std::string_view functionName, std::string_view takes, Result gives,
                       std::string_view text, bool aggregates = false)
        : name(functionName), parameters(takes), result(gives), sql(text), aggregate(aggregates)
    {
        bool optional = false;
        for (const char letter : takes) {
            if (letter == '?') optional = true;
            if (letter == '*') most += 100;
            if (letter == '?' || letter == '*') continue;
            ++most;
            if (!optional) ++fewest;
        }
    }

    /// The letter of parameter `index`.
    char parameter(std::size_t index) const;
};

/// The function that `dialect` calls `name` (in upper case), or nothing.
const Function* findFunction(Dialect dialect, std::string_view name);
/// Why there is no function `name`, and what to write instead where that is known.
std::string unknownFunction(Dialect dialect, std::string_view name);
std::string argumentCountRefusal(const Function& function);

/// The engine's code ("yyyy", "q", "m", "y", "d", "w", "ww", "h", "n", "s") of a part of a date as
/// the dialect names it, or an empty text.
std::string_view datePart(Dialect dialect, std::string_view name);

} // namespace refhost
