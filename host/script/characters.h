#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

// Characters of UTF-8 texts. A byte that continues nothing belongs to the character before it, so
// every text can be cut anywhere between two characters and joined again.
namespace refhost::script {

/// Where the character at `index` (from 0) begins, or the end of `text`.
std::size_t offsetOf(std::string_view text, std::size_t index);
/// `count` characters from the one at `index`, as far as there are any.
std::string_view slice(std::string_view text, std::size_t index, std::size_t count);
/// The number of characters that begin before byte `offset`.
std::size_t indexOf(std::string_view text, std::size_t offset);

/// The first character of `text` as a number; a byte that is no valid UTF-8 counts as itself.
std::uint32_t codeOf(std::string_view text);
/// The character with this number, which must be at most 0x10FFFF.
std::string character(std::uint32_t code);

} // namespace refhost::script
