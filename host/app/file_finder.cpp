#include "host/app/file_finder.h"

#include "automation/text.h"

namespace refhost {
namespace {

namespace fs = std::filesystem;

// The entry of `folder` that is called `name`, the exact one first.
std::optional<fs::path> entryOf(const fs::path& folder, const fs::path& name)
{
    std::error_code failure;
    const fs::path exact = folder / name;
    if (fs::exists(exact, failure)) return exact;
    for (fs::directory_iterator entry(folder.empty() ? "." : folder, failure), end;
         !failure && entry != end; entry.increment(failure)) {
        if (qmevents::text::lower(entry->path().filename().string()) ==
            qmevents::text::lower(name.string())) {
            return folder / entry->path().filename();
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<fs::path> findFile(std::string_view path)
{
    if (path.empty() || path.find('\0') != std::string_view::npos) return std::nullopt;
    const fs::path wanted(qmevents::text::replaceAll(path, "\\", "/"));
    fs::path found = wanted.root_path();
    for (const fs::path& name : wanted.relative_path()) {
        if (name.empty() || name == ".") continue;
        if (name == "..") {
            found /= name;
            continue;
        }
        const auto entry = entryOf(found, name);
        if (!entry) return std::nullopt;
        found = *entry;
    }
    std::error_code failure;
    if (!fs::is_regular_file(found, failure)) return std::nullopt;
    return found;
}

std::string withSeparator(std::string path)
{
    if (path.empty() || (path.back() != '/' && path.back() != '\\')) path += '/';
    return path;
}

} // namespace refhost
