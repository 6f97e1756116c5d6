#pragma once

#include <string>
#include <utility>
#include <vector>

#include "host/app/session_context.h"

namespace refhost {

/// Names of the settings that hold the first and the last day of one of the four periods that users
/// set; 1 to 4.
std::string periodStartSetting(int period);
std::string periodEndSetting(int period);
constexpr int listPeriods = 4;

/// The spans of time that expressions of lists may name: this and last calendar and fiscal year and
/// the four periods that users set, each as "{...START}" and "{...END}", its last second. Nothing
/// falls into a period that is not set.
class ListPeriods {
public:
    /// The spans as they are today, as literals of the session's dialect.
    explicit ListPeriods(const SharedContext& context);
    /// `expression` with the dates in place of their names.
    std::string in(std::string expression) const;

private:
    std::vector<std::pair<std::string, std::string>> literals_; // by placeholder
};

} // namespace refhost
