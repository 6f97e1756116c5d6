#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "host/cli/commands.h"
#include "tests/support/temp_folder.h"

namespace refhost {

/// Runs subcommands in a folder of the test's own, which is gone afterwards.
class CommandLineTest : public testing::Test {
protected:
    struct Outcome {
        int code = 0;
        std::string out;
        std::string err;
    };

    CommandLineTest() { std::filesystem::current_path(folder_.path()); }
    ~CommandLineTest() override { std::filesystem::current_path("/"); }

    static void write(const std::string& name, const std::string& text)
    {
        std::ofstream(name, std::ios::binary) << text;
    }

    static Outcome perform(const std::vector<std::string>& words, const std::string& input = {})
    {
        std::istringstream in(input);
        std::ostringstream out;
        std::ostringstream err;
        const auto arguments = std::span(words).subspan(1);
        const auto command = words[0] == "run"      ? runCommand
                             : words[0] == "report" ? reportCommand
                                                    : sqlCommand;
        const int code = command(arguments, {in, out, err});
        return {code, out.str(), err.str()};
    }

    /// Runs `script`, statements left out, and gives the output.
    static std::string outputOf(const std::string& script, const std::string& answers = {})
    {
        std::vector<std::string> words{"run", "--quiet-sql", "-"};
        if (!answers.empty()) {
            write("answers.json", answers);
            words.insert(words.end(), {"--answers", "answers.json"});
        }
        return perform(words, script).out;
    }

private:
    const qmevents::testing::TempFolder folder_;
};

} // namespace refhost
