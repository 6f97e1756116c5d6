#include "host/demo/database_file.h"

#include <cctype>
#include <string>
#include <system_error>

namespace refhost::demo {
namespace {

namespace fs = std::filesystem;

/// A file beside the wanted one that is gone unless it was put in its place.
class TemporaryFile {
public:
    explicit TemporaryFile(const fs::path& wanted) : wanted_(wanted), path_(wanted)
    {
        path_ += ".making";
        remove();
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() { remove(); }

    const fs::path& path() const { return path_; }
    void putInPlace() const { fs::rename(path_, wanted_); }

private:
    void remove() const
    {
        std::error_code ignored;
        fs::remove(path_, ignored);
    }

    fs::path wanted_, path_;
};

// A session in memory would take a plain path for another database in memory.
std::string addressOnDisk(const fs::path& file)
{
    static constexpr char digits[] = "0123456789ABCDEF";
    std::string address = "file:";
    for (const char c : fs::absolute(file).string()) {
        const auto byte = static_cast<unsigned char>(c);
        if (std::isalnum(byte) || c == '/' || c == '.' || c == '-' || c == '_') {
            address += c;
        } else {
            address += '%';
            address += digits[byte >> 4];
            address += digits[byte & 15];
        }
    }
    return address + "?vfs=unix";
}

} // namespace

void saveDatabase(SqlSession& sql, const fs::path& file)
{
    const TemporaryFile temporary(file);
    sql.hostExecute("VACUUM INTO ?", {addressOnDisk(temporary.path())});
    temporary.putInPlace();
}

} // namespace refhost::demo
