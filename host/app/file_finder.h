#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace refhost {

/// The file that `path` names, written as hosts of this kind write paths: with slashes or
/// backslashes, and in any case. Nothing when there is no such file. Where several names differ in
/// case only, the exact one is taken.
std::optional<std::filesystem::path> findFile(std::string_view path);

/// `path` with a separator at its end.
std::string withSeparator(std::string path);

} // namespace refhost
