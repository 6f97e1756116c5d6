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

constexpr std::array<std::pair<std::string_view, std::string_view>, 9> types{{
    {".js", "text/javascript; charset=utf-8"},
    {".mjs", "text/javascript; charset=utf-8"},
    {".css", "text/css; charset=utf-8"},
    {".svg", "image/svg+xml"},
    {".png", "image/png"},
    {".gif", "image/gif"},
    {".ico", "image/x-icon"},
    {".woff2", "font/woff2"},
    {".json", "application/json"},
}};
constexpr std::string_view pageType = "text/html; charset=utf-8";

/// What the pages load of npm's libraries, and where npm puts it below the add-in's folder.
constexpr std::array<std::pair<std::string_view, std::string_view>, 1> libraries{{
    {"/libraries/d3.js", "node_modules/d3/dist/d3.min.js"},
}};

/// The add-in's cache holds queries too; only its pictures are for browsers.
constexpr std::string_view pictureFolder = "/cache/";
constexpr std::string_view pictureType = "image/";

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

// A link would lead elsewhere than its name says.
bool isWhereItSays(const fs::path& path)
{
    std::error_code error;
    return fs::canonical(path, error) == path && !error;
}

bool load(PageFile& file, const fs::path& path)
{
    std::error_code error;
    if (!fs::is_regular_file(path, error)) return false;
    std::ifstream stream(path, std::ios::binary);
    if (!stream) return false;
    file.content.assign(std::istreambuf_iterator<char>(stream), {});
    file.tag = tagOf(file.content);
    return true;
}

} // namespace

PageFiles::PageFiles(const fs::path& pages, fs::path addIn)
    : pages_(fs::canonical(pages)), addIn_(std::move(addIn))
{
    std::error_code error; // without the folder there are no pictures and no libraries
    addIn_ = addIn_.empty() ? fs::path() : fs::canonical(addIn_, error);
}

std::optional<PageFile> PageFiles::find(std::string_view target) const
{
    target = target.substr(0, target.find('?'));
    auto path = relativePath(target);
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
    // Package managers may link their folder, and the name is ours.
    const auto* const library =
        std::ranges::find(libraries, target, [](auto& one) { return one.first; });
    if (library != libraries.end()) {
        if (addIn_.empty() || !load(file, addIn_ / library->second)) return std::nullopt;
        return file;
    }
    const bool isPicture = target.starts_with(pictureFolder);
    if (isPicture && (addIn_.empty() || !file.type.starts_with(pictureType))) return std::nullopt;
    const fs::path full = (isPicture ? addIn_ : pages_) / *path;
    if (!isWhereItSays(full) || !load(file, full)) return std::nullopt;
    return file;
}

} // namespace refhost
