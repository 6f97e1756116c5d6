#include <cstring>
#include <exception>
#include <iostream>
#include <iterator>

#include "host/cli/commands.h"
#include "host/demo/demo.h"
#include "host/web/serve.h"

namespace {

using Arguments = std::span<const std::string>;

refhost::Streams standardStreams() { return {std::cin, std::cout, std::cerr}; }

struct Subcommand {
    const char* name;
    const char* summary;
    int (*run)(Arguments arguments);
};

constexpr Subcommand subcommands[] = {
    {"serve", "answers browsers", refhost::serveCommand},
    {"demo", "makes a demonstration database", refhost::demoCommand},
    {"run", "runs a script against a signed-in session",
     [](Arguments arguments) { return refhost::runCommand(arguments, standardStreams()); }},
    {"sql", "runs statements of a dialect",
     [](Arguments arguments) { return refhost::sqlCommand(arguments, standardStreams()); }},
    {"report", "prints a report as comma-separated values",
     [](Arguments arguments) { return refhost::reportCommand(arguments, standardStreams()); }},
};

void printUsage(std::ostream& out)
{
    out << "Usage: quillmere SUBCOMMAND [OPTION...]\n\n";
    for (const auto& [name, summary, run] : subcommands) {
        out << "  " << name << std::string(8 - std::strlen(name), ' ') << summary << '\n';
    }
    out << "\n\"quillmere SUBCOMMAND --help\" tells the options of each.\n";
}

} // namespace

int main(int argc, char** argv)
{
    try {
        const std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
        if (arguments.empty()) {
            printUsage(std::cerr);
            return refhost::misused;
        }
        if (arguments[0] == "--help" || arguments[0] == "help") {
            printUsage(std::cout);
            return refhost::succeeded;
        }
        for (const auto& [name, summary, run] : subcommands) {
            if (arguments[0] == name) return run(Arguments(arguments).subspan(1));
        }
        std::cerr << "quillmere: there is no subcommand " << arguments[0] << '\n';
        printUsage(std::cerr);
        return refhost::misused;
    } catch (const std::exception& error) {
        std::cerr << "quillmere: " << error.what() << '\n';
        return refhost::failed;
    }
}
