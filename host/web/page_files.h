#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace refhost {

/// A file as it is sent to a browser.
struct PageFile {
    std::string content;
    std::string type;
    std::string tag; ///< Differs whenever the content does.
    bool isPage = false;
};

/// The pages, scripts and styles below one folder, and nothing else.
class PageFiles {
public:
    /// Throws std::filesystem::filesystem_error when there is no such folder.
    explicit PageFiles(const std::filesystem::path& folder);

    /// What is at `target`, a request's path before decoding: "/events/events-view" is the page
    /// events/events-view.html, other files are named in full. Nothing for what is absent, of no
    /// known type, hidden, or anywhere else than its name says.
    std::optional<PageFile> find(std::string_view target) const;

private:
    std::filesystem::path folder_;
};

} // namespace refhost
