#include "tests/host/cli/cli_runner.h"

namespace refhost {
namespace {

/// A fenced block of a document: what stands behind the fence, and the lines within.
struct Fenced {
    std::string info;
    std::string text;
};

std::vector<Fenced> fencedBlocks(std::istream& document)
{
    std::vector<Fenced> blocks;
    bool inside = false;
    for (std::string line; std::getline(document, line);) {
        if (line.starts_with("```")) {
            inside = !inside;
            if (inside) blocks.push_back({line.substr(3), {}});
        } else if (inside) {
            blocks.back().text += line + "\n";
        }
    }
    return blocks;
}

// Words of a command line, double quotes around those with blanks.
std::vector<std::string> wordsOf(const std::string& line)
{
    std::vector<std::string> words(1);
    bool quoted = false;
    for (const char c : line) {
        if (c == '"') {
            quoted = !quoted;
        } else if (c == ' ' && !quoted) {
            words.emplace_back();
        } else {
            words.back() += c;
        }
    }
    return words;
}

std::string contentOf(const std::string& file)
{
    std::ifstream in(file);
    return {std::istreambuf_iterator<char>(in), {}};
}

class Documentation : public CommandLineTest {};

TEST_F(Documentation, ShowsWhatItsExamplesPrint)
{
    std::ifstream document(QM_SOURCE_DIR "/docs/command-line.md");
    int examples = 0;
    for (const auto& [info, text] : fencedBlocks(document)) {
        if (info != "console") {
            write(info.substr(info.find(' ') + 1), text);
            continue;
        }
        const std::size_t end = text.find('\n');
        const std::string command = text.substr(0, end);
        SCOPED_TRACE(command);
        std::vector<std::string> words = wordsOf(command);
        ASSERT_EQ(words[0] + words[1], "$quillmere");
        words.erase(words.begin(), words.begin() + 2);
        std::string input;
        if (words.size() > 2 && words[words.size() - 2] == "<") {
            input = contentOf(words.back());
            words.resize(words.size() - 2);
        }
        const Outcome outcome = perform(words, input);
        EXPECT_EQ(outcome.out + outcome.err, text.substr(end + 1));
        ++examples;
    }
    EXPECT_EQ(examples, 6);
}

} // namespace
} // namespace refhost
