#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// Functions on texts; positions and lengths count characters (code points), the first is 1.
namespace refhost {

/// Whether `text` matches a LIKE pattern without regard to case: % any characters, _ one
/// character, [abc], [a-c] and, after `negation`, any other character.
bool matchesPattern(std::string_view text, std::string_view pattern, char negation);

std::string rightPart(std::string_view text, std::int64_t length);
/// `length` characters from `start`; a start before the text takes that much from the length.
std::string middlePart(std::string_view text, std::int64_t start, std::int64_t length);
/// Every occurrence of `from` replaced, without regard to case.
std::string replaceText(std::string_view text, std::string_view from, std::string_view to);
/// Where `wanted` first stands in `text` at or after `start`, without regard to case; 0 for
/// nowhere.
std::int64_t positionOf(std::string_view wanted, std::string_view text, std::int64_t start);

} // namespace refhost
