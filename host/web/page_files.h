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

/// The pages, scripts and styles below one folder, the add-in's pictures and the libraries of the
/// pages, and nothing else.
class PageFiles {
public:
    /// `pages` is their folder, `addIn` the one with cache/ and the libraries' node_modules/; both
    /// of these may be absent. Throws std::filesystem::filesystem_error when there are no pages.
    explicit PageFiles(const std::filesystem::path& pages, std::filesystem::path addIn = {});

    /// What is at `target`, a request's path before decoding: "/events/events-view" is the page
    /// events/events-view.html, other files are named in full. "/cache/" leads to the pictures
    /// there, "/libraries/" to the one file of each library. Nothing for what is absent, of no
    /// known type, hidden, or anywhere else than its name says.
    std::optional<PageFile> find(std::string_view target) const;

private:
    std::filesystem::path pages_, addIn_;
};

} // namespace refhost
