#include <exception>
#include <iostream>

#include "host/cli/common_options.h"
#include "host/demo/codes.h"
#include "host/demo/demo.h"

namespace refhost {
namespace {

std::uint64_t seedFrom(const std::string& text)
{
    if (text.empty() || text.size() > 18 ||
        text.find_first_not_of("0123456789") != std::string::npos) {
        throw UsageError{"--seed takes a whole number, not " + text};
    }
    return std::stoull(text);
}

void tell(std::ostream& out, const DemoOptions& options, const DemoCounts& counts)
{
    out << options.database.string() << ": " << counts.donors << " donors, " << counts.gifts
        << " gifts and pledges, " << counts.events << " events, " << counts.reservations
        << " reservations, as of " << demoDay().iso().substr(0, 10) << ".\nSign in as";
    for (const demo::DemoUser& user : demo::demoUsers()) {
        out << " " << user.name << " (" << user.password << ")";
    }
    out << "\n";
}

} // namespace

int demoCommand(std::span<const std::string> args)
{
    DemoOptions options;
    options.addInPath = findAddIn();
    std::string file;
    const CommandLine line(
        "demo", "", "Makes a demonstration database: the same options give the same bytes.",
        {databaseOption(file, "The file to make."),
         dialectOption(options.dialect),
         {"--seed", "NUMBER", "Another number makes other donors and events (1).",
          [&](const std::string& text) { options.seed = seedFrom(text); }},
         {"--small", "", "Leaves out the event with thousands of participants.",
          [&](const std::string&) { makeSmall(options); }},
         {"--addin", "DIR", "The add-in's folder with data/, cache/ and pages/.",
          [&](const std::string& text) { options.addInPath = text; }},
         {"--force", "", "Replaces a file that is there.",
          [&](const std::string&) { options.replaces = true; }}});
    const Streams streams{std::cin, std::cout, std::cerr};
    return line.run(args, streams, [&](const std::vector<std::string>& operands) -> int {
        if (!operands.empty()) throw UsageError{"what is " + operands[0] + "?"};
        if (file.empty()) throw UsageError{"--db is missing"};
        options.database = file;
        try {
            tell(streams.out, options, makeDemo(options));
            return succeeded;
        } catch (const std::exception& error) {
            streams.err << "quillmere demo: " << error.what() << '\n';
            return failed;
        }
    });
}

} // namespace refhost
