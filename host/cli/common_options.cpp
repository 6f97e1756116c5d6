#include "host/cli/common_options.h"

#include <filesystem>
#include <fstream>
#include <istream>
#include <iterator>

#include "automation/error.h"

namespace refhost {

namespace fs = std::filesystem;

Option dialectOption(Dialect& dialect)
{
    return {"--dialect", "sqlserver|jet", "The SQL that the database is spoken to in (sqlserver).",
            [&dialect](const std::string& name) {
                if (name != "sqlserver" && name != "jet") {
                    throw UsageError{"--dialect is sqlserver or jet, not " + name};
                }
                dialect = name == "jet" ? Dialect::jet : Dialect::sqlServer;
            }};
}

Option databaseOption(std::string& file, std::string_view help)
{
    return {"--db", "FILE", help, [&file](const std::string& name) {
                if (name.empty()) throw UsageError{"--db needs the name of a file"};
                file = name;
            }};
}

Option clockOption(std::optional<qmevents::Date>& now)
{
    return {"--now", "\"YYYY-MM-DD HH:MM\"", "Stops the clock at this moment.",
            [&now](const std::string& value) {
                now = qmevents::Date::parseIso(value);
                if (!now) throw UsageError{"--now is no such date: " + value};
            }};
}

std::string readText(const std::string& name, const Streams& streams)
{
    const auto whole = [](std::istream& in) {
        return std::string(std::istreambuf_iterator<char>(in), {});
    };
    if (name == "-") return whole(streams.in);
    std::error_code failure;
    std::ifstream file(name, std::ios::binary);
    if (fs::is_directory(name, failure) || !file) {
        constexpr int fileNotFound = 53;
        throw qmevents::Error(fileNotFound, "quillmere", "cannot read the file " + name);
    }
    return whole(file);
}

std::shared_ptr<Database> openDatabase(const std::string& file)
{
    return file.empty() ? Database::inMemory() : Database::open(file);
}

std::string findAddIn()
{
    std::error_code failure;
    const fs::path here = fs::current_path(failure);
    for (const fs::path& start : {here, fs::read_symlink("/proc/self/exe", failure)}) {
        for (fs::path folder = start; folder.has_relative_path(); folder = folder.parent_path()) {
            if (fs::exists(folder / "data" / "addin.xml", failure)) return (folder / "").string();
        }
    }
    return (here / "").string();
}

} // namespace refhost
