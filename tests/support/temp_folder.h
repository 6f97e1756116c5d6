#pragma once

#include <unistd.h>

#include <filesystem>
#include <string>
#include <system_error>

namespace qmevents::testing {

/// An empty folder that no other test has, also in a second run beside this one; it is gone with
/// the object.
class TempFolder {
public:
    TempFolder()
    {
        const auto prefix = "quillmere-" + std::to_string(::getpid()) + "-";
        do {
            path_ = std::filesystem::temp_directory_path() / (prefix + std::to_string(++made));
        } while (!std::filesystem::create_directory(path_));
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder()
    {
        std::error_code ignored; // what cannot be removed is no fault of what was tested
        std::filesystem::remove_all(path_, ignored);
    }
    const std::filesystem::path& path() const { return path_; }
    std::string string() const { return path_.string(); }
    std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

private:
    inline static int made = 0;
    std::filesystem::path path_;
};

} // namespace qmevents::testing
