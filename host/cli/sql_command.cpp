#include <filesystem>
#include <ostream>
#include <sstream>

#include "automation/error.h"
#include "automation/text.h"
#include "host/cli/commands.h"
#include "host/cli/common_options.h"
#include "host/cli/json_text.h"
#include "host/document/sql_session.h"

namespace refhost {
namespace {

bool isQuery(std::string_view statement)
{
    const std::size_t start = statement.find_first_not_of(" \t(");
    return start != std::string_view::npos &&
           qmevents::text::sameName(statement.substr(start, 6), "SELECT");
}

// Columns may share a name or have none; each still shows under a key of its own.
std::vector<std::string> keysOf(const Cursor& rows)
{
    std::vector<std::string> keys;
    for (std::size_t i = 0; i < rows.columnCount(); ++i) {
        std::string key = rows.columnName(i);
        const bool taken = std::find(keys.begin(), keys.end(), key) != keys.end();
        if (key.empty() || taken) key += "#" + std::to_string(i + 1);
        keys.push_back(std::move(key));
    }
    return keys;
}

void runStatement(SqlSession& session, std::string_view statement, JsonLines& lines)
{
    if (!isQuery(statement)) {
        lines.write({{"rows", session.execute(statement)}});
        return;
    }
    const auto rows = session.query(statement);
    const auto keys = keysOf(*rows);
    for (; !rows->eof(); rows->next()) {
        Json line = Json::object();
        for (std::size_t i = 0; i < keys.size(); ++i) line[keys[i]] = toJson(rows->value(i));
        lines.write(line);
    }
}

int runStatements(SqlSession& session, const std::string& text, const Streams& streams)
{
    JsonLines lines(streams.out);
    std::istringstream statements(text);
    int number = 0;
    for (std::string statement; std::getline(statements, statement);) {
        ++number;
        if (!statement.empty() && statement.back() == '\r') statement.pop_back();
        if (qmevents::text::trim(statement).empty()) continue;
        try {
            runStatement(session, statement, lines);
        } catch (const qmevents::Error& error) {
            lines.write({{"error", error.description()},
                         {"number", error.number()},
                         {"statement", statement}});
            streams.out.flush();
            streams.err << "quillmere sql: statement " << number << ": " << error.description()
                        << '\n';
            return failed;
        }
    }
    return succeeded;
}

} // namespace

int sqlCommand(std::span<const std::string> arguments, const Streams& streams)
{
    std::string file;
    Dialect dialect = Dialect::sqlServer;
    const CommandLine line(
        "sql", "[TEXT|-]",
        "Runs statements, one a line, and prints their rows: one JSON object a line. It stops at\n"
        "the first statement that fails.",
        {databaseOption(file, "The database, which must exist; else an empty one in memory."),
         dialectOption(dialect)});
    return line.run(arguments, streams, [&](const std::vector<std::string>& operands) -> int {
        if (operands.size() > 1) throw UsageError{"it takes one text; put it in quotes"};
        try {
            std::error_code failure;
            if (!file.empty() && !std::filesystem::exists(file, failure)) {
                throw qmevents::Error(53, "quillmere", "there is no database " + file);
            }
            const bool fromInput = operands.empty() || operands[0] == "-";
            const std::string text = fromInput ? readText("-", streams) : operands[0];
            SqlSession session(openDatabase(file), dialect);
            const int code = runStatements(session, text, streams);
            streams.out.flush();
            return code;
        } catch (const qmevents::Error& error) {
            streams.err << "quillmere sql: " << error.description() << '\n';
            return failed;
        }
    });
}

} // namespace refhost
