#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace refhost::reporting {

/// A question that an activity asks of whoever reserves it, or the answer to it.
struct ReservationField {
    std::string name;
    std::string value; ///< As a reader wants it: "Yes" for a ticked box; empty in a question.
};

/// The fields of a stored document, either questions or answers. Nothing when it cannot be read;
/// none for an empty text.
std::optional<std::vector<ReservationField>> readFields(std::string_view document);

/// "Meal: Fish; Table: 4": what was answered.
std::string asOneText(const std::vector<ReservationField>& fields);

} // namespace refhost::reporting
