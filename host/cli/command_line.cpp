#include "host/cli/command_line.h"

#include <algorithm>
#include <ostream>

namespace refhost {

CommandLine::CommandLine(std::string_view command, std::string_view operands,
                         std::string_view summary, std::vector<Option> options)
    : command_(command), operands_(operands), summary_(summary), options_(std::move(options))
{
}

const Option& CommandLine::optionNamed(const std::string& name) const
{
    const auto found = std::find_if(options_.begin(), options_.end(),
                                    [&](const Option& option) { return option.name == name; });
    if (found == options_.end()) throw UsageError{"there is no option " + name};
    return *found;
}

std::vector<std::string> CommandLine::parse(std::span<const std::string> arguments) const
{
    std::vector<std::string> operands;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (argument.size() < 2 || argument.substr(0, 2) != "--") {
            // A lone "-" is an operand; "-x" is none, as there are no short options.
            if (argument.size() > 1 && argument[0] == '-') optionNamed(argument);
            operands.push_back(argument);
            continue;
        }
        const std::size_t equals = argument.find('=');
        const Option& option = optionNamed(argument.substr(0, equals));
        if (option.argument.empty()) {
            if (equals != std::string::npos) {
                throw UsageError{std::string(option.name) + " takes no value"};
            }
            option.take({});
        } else if (equals != std::string::npos) {
            option.take(argument.substr(equals + 1));
        } else if (i + 1 < arguments.size()) {
            option.take(arguments[++i]);
        } else {
            throw UsageError{std::string(option.name) +
                             " needs a value: " + std::string(option.argument)};
        }
    }
    return operands;
}

int CommandLine::run(std::span<const std::string> arguments, const Streams& streams,
                     const std::function<int(const std::vector<std::string>&)>& act) const
{
    try {
        if (std::find(arguments.begin(), arguments.end(), "--help") != arguments.end()) {
            streams.out << help();
            return succeeded;
        }
        return act(parse(arguments));
    } catch (const UsageError& error) {
        streams.err << "quillmere " << command_ << ": " << error.reason << '\n' << usage();
        return misused;
    }
}

std::string CommandLine::usage() const
{
    std::string text = "Usage: quillmere " + std::string(command_);
    if (!options_.empty()) text += " [OPTION...]";
    if (!operands_.empty()) text += " " + std::string(operands_);
    return text + "\n";
}

std::string CommandLine::help() const
{
    constexpr std::size_t column = 30;
    std::string text = usage() + std::string(summary_) + "\n\n";
    const auto line = [&](std::string left, std::string_view right) {
        left.resize(std::max(column, left.size() + 2), ' ');
        text += left + std::string(right) + "\n";
    };
    for (const Option& option : options_) {
        std::string left = "  " + std::string(option.name);
        if (!option.argument.empty()) left += " " + std::string(option.argument);
        line(std::move(left), option.help);
    }
    line("  --help", "Shows this help.");
    return text;
}

} // namespace refhost
