#include <filesystem>
#include <ostream>
#include <utility>

#include "automation/clock.h"
#include "automation/conversions.h"
#include "automation/error.h"
#include "automation/object.h"
#include "host/app/session.h"
#include "host/cli/commands.h"
#include "host/cli/common_options.h"
#include "host/cli/headless_front_end.h"

namespace refhost {
namespace {

using qmevents::call;
using qmevents::get;
using qmevents::put;
using qmevents::toObject;
using qmevents::toText;

struct ReportOptions {
    std::string databaseFile;
    Dialect dialect = Dialect::sqlServer;
    std::string user = "admin";
    std::optional<qmevents::Date> now;
    std::string addIn, event, list;
    std::vector<std::pair<std::string, std::string>> filters;
};

CommandLine commandLine(ReportOptions& options)
{
    const auto text = [](std::string& target) {
        return [&target](const std::string& value) { target = value; };
    };
    return {
        "report",
        "KEY",
        "Runs a report and prints its lines as comma-separated values: the kind of line, the\n"
        "caption of a head or total, then a value for each column.",
        {databaseOption(options.databaseFile, "The database, which must exist."),
         dialectOption(options.dialect),
         {"--user", "NAME", "Who signs in (admin).", text(options.user)},
         {"--event", "ID", "The event, of a report on one.", text(options.event)},
         {"--list", "ID|SOURCE",
          "A list, or what follows \"SELECT Id FROM \", of a report on a list's records.",
          text(options.list)},
         {"--set", "KEY=VALUE", "The value of a filter; may be given for each.",
          [&](const std::string& value) {
              const auto equals = value.find('=');
              if (equals == std::string::npos) throw UsageError{"--set needs KEY=VALUE"};
              options.filters.emplace_back(value.substr(0, equals), value.substr(equals + 1));
          }},
         clockOption(options.now),
         {"--addin", "PATH", "The folder with data/, cache/ and pages/.", text(options.addIn)}}};
}

// Dates as ISO text, amounts as plain numbers: what other programs read.
std::string plainText(const Value& value)
{
    if (value.isNull() || value.isEmpty()) return {};
    if (!value.is(qmevents::ValueKind::date)) return toText(value);
    const auto date = value.as<qmevents::Date>();
    return date.hasTime() ? date.iso() : date.iso().substr(0, 10);
}

std::string quoted(const std::string& text)
{
    if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
    return '"' + qmevents::text::replaceAll(text, "\"", "\"\"") + '"';
}

void print(const Ref<Object>& report, std::ostream& out)
{
    out << "line,caption";
    const auto columns = toObject(get(report, "Columns"))->enumerate();
    for (Value column; columns->next(column);)
        out << ',' << quoted(toText(get(toObject(column), "Caption")));
    out << '\n';
    const auto lines = toObject(get(report, "Lines"))->enumerate();
    for (Value item; lines->next(item);) {
        const auto line = toObject(item);
        out << toText(get(line, "Kind")) << ',' << quoted(toText(get(line, "Caption")));
        const Value cells = get(line, "Cells");
        for (const Value& cell : cells.array()->items) out << ',' << quoted(plainText(cell));
        out << '\n';
    }
}

int runReport(const ReportOptions& options, const std::string& key, const Streams& streams)
{
    std::error_code failure;
    if (options.databaseFile.empty()) throw UsageError{"it needs a database"};
    if (!std::filesystem::exists(options.databaseFile, failure))
        throw qmevents::Error(53, "quillmere", "there is no database " + options.databaseFile);
    JsonLines messages(streams.err);
    HeadlessFrontEnd frontEnd(messages, {});
    Session session({.database = openDatabase(options.databaseFile),
                     .dialect = options.dialect,
                     .userName = options.user,
                     .frontEnd = &frontEnd,
                     .addInPath = options.addIn.empty() ? findAddIn() : options.addIn});
    const auto core = getObject(getObject(session.app(), "Modules"), "Quillmere");
    const auto report = toObject(call(getObject(core, "Reports"), "Open", "Cache\\Reports", key,
                                      options.event, options.list));
    for (const auto& [filter, value] : options.filters)
        put(toObject(call(getObject(report, "Filters"), "Item", filter)), "Value", value);
    if (!qmevents::toBool(call(report, "Run"))) {
        streams.err << "quillmere report: " << toText(get(report, "Problem")) << '\n';
        return failed;
    }
    print(report, streams.out);
    streams.out.flush();
    return succeeded;
}

} // namespace

int reportCommand(std::span<const std::string> arguments, const Streams& streams)
{
    ReportOptions options;
    const CommandLine line = commandLine(options);
    return line.run(arguments, streams, [&](const std::vector<std::string>& operands) -> int {
        if (operands.size() != 1) throw UsageError{"it needs the key of one report"};
        std::optional<qmevents::PinnedClock> clock;
        if (options.now) clock.emplace(*options.now);
        try {
            return runReport(options, operands[0], streams);
        } catch (const qmevents::Error& error) {
            streams.err << "quillmere report: " << error.description() << '\n';
            return failed;
        }
    });
}

} // namespace refhost
