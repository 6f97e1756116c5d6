#include "host/web/page_files.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <system_error>
#include <utility>

namespace refhost {

namespace fs = std::filesystem;

namespace {

constexpr std::array<std::pair<std::string_view, std::string_view>, 8> types{{
    {".js", "text/javascript; charset=utf-8"},
    {".mjs", "text/javascript; charset=utf-8"},
    {".css", "text/css; charset=utf-8"},
    {".svg", "image/svg+xml"},
    {".png", "image/png"},
    {".ico", "image/x-icon"},
    {".woff2", "font/woff2"},
    {".json", "application/json"},
}};
constexpr std::string_view pageType = "text/html; charset=utf-8";

bool isName(std::string_view segment)
{
    const auto mayStand = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
               c == '-' || c == '_' || c == '.';
    };
    return !segment.empty() && segment.front() != '.' && std::ranges::all_of(segment, mayStand);
}

// The path below the folder, or nothing when a part of it is no plain name.
std::optional<fs::path> relativePath(std::string_view target)
{
    if (target.empty() || target.front() != '/') return std::nullopt;
    fs::path path;
    while (!target.empty()) {
        target.remove_prefix(1);
        const std::string_view segment = target.substr(0, target.find('/'));
        if (!isName(segment)) return std::nullopt;
        path /= segment;
        target.remove_prefix(segment.size());
    }
    return path;
}

std::string tagOf(std::string_view content)
{
    std::uint64_t hash = 14695981039346656037U; // FNV-1a
    for (const char c : content) hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211U;
    return '"' + std::to_string(hash) + '-' + std::to_string(content.size()) + '"';
}

} // namespace

PageFiles::PageFiles(const fs::path& folder) : folder_(fs::canonical(folder)) {}

std::optional<PageFile> PageFiles::find(std::string_view target) const
{
    auto path = relativePath(target.substr(0, target.find('?')));
    if (!path) return std::nullopt;
    PageFile file;
    if (const std::string extension = path->extension().string(); extension.empty()) {
        *path += ".html";
        file.type = pageType;
        file.isPage = true;
    } else {
        const auto* const known =
            std::ranges::find(types, extension, [](auto& t) { return t.first; });
        if (known == types.end()) return std::nullopt;
        file.type = known->second;
    }
    // A link would lead elsewhere than its name says.
    std::error_code error;
    const fs::path full = folder_ / *path;
    if (fs::canonical(full, error) != full || error || !fs::is_regular_file(full, error))
        return std::nullopt;
    std::ifstream stream(full, std::ios::binary);
    if (!stream) return std::nullopt;
    file.content.assign(std::istreambuf_iterator<char>(stream), {});
    file.tag = tagOf(file.content);
    return file;
}

} // namespace refhost
