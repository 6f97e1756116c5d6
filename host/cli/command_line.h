#pragma once

#include <functional>
#include <iosfwd>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace refhost {

/// What a subcommand reads and writes: the process's own streams, or a test's.
struct Streams {
    std::istream& in;
    std::ostream& out;
    std::ostream& err;
};

/// Exit codes of every subcommand.
enum ExitCode : int { succeeded = 0, failed = 1, misused = 2 };

/// One option of a subcommand.
struct Option {
    std::string_view name;     ///< "--db"
    std::string_view argument; ///< "FILE"; empty for an option without a value.
    std::string_view help;
    /// Takes the value (empty without one); throws UsageError for a bad one.
    std::function<void(const std::string& value)> take;
};

/// A command line that cannot be understood.
struct UsageError {
    std::string reason;
};

/// The options of one subcommand, and its help.
class CommandLine {
public:
    /// `operands` is what stands behind the options, for example "FILE|-".
    CommandLine(std::string_view command, std::string_view operands, std::string_view summary,
                std::vector<Option> options);

    /// Takes the options ("--name value" or "--name=value") and gives the operands. Throws
    /// UsageError for an unknown option, a missing value and one too many.
    std::vector<std::string> parse(std::span<const std::string> arguments) const;

    /// Runs `act` with the operands. "--help" prints the help instead; what cannot be understood
    /// is reported with the usage.
    int run(std::span<const std::string> arguments, const Streams& streams,
            const std::function<int(const std::vector<std::string>& operands)>& act) const;

private:
    std::string usage() const;
    std::string help() const;
    const Option& optionNamed(const std::string& name) const;

    std::string_view command_;
    std::string_view operands_;
    std::string_view summary_;
    std::vector<Option> options_;
};

} // namespace refhost
