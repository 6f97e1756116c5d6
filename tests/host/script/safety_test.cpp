#include <gtest/gtest.h>

#include "tests/host/script/runner.h"

namespace refhost {
namespace {

std::string repeated(const std::string& text, std::size_t count)
{
    std::string result;
    for (std::size_t i = 0; i < count; ++i) result += text;
    return result;
}

TEST(ScriptSyntax, IsCheckedBeforeAnythingRunsAndNamesTheLine)
{
    struct {
        const char* script;
        const char* failure;
    } const cases[] = {
        {"x = ", "1 1023: Expected expression (found end of line)"},
        {"Print 1\nx = (1\nPrint 2", "2 1006: Expected ')' (found end of line)"},
        {"If 1\nPrint 1", "1 1014: Expected 'Then' (found end of line)"},
        {"If 1 Then\nPrint 1", "2 1014: Expected 'End' (found end of line)"},
        {"For i = 1\nNext", "1 1014: Expected 'To' (found end of line)"},
        {"For i = 1 To 2\nPrint i\nLoop", "3 1014: Expected 'Next' (found Loop)"},
        {"For i = 1 To 2\nNext i", "2 1025: Expected end of statement (found i)"},
        {"Loop", "1 1038: 'Loop' without 'Do' (found Loop)"},
        {"Do Forever\nLoop", "1 1027: Expected 'While' or 'Until' (found Forever)"},
        {"Exit For", "1 1039: Invalid 'Exit' statement (found For)"},
        {"Sub S\nExit Function\nEnd Sub", "2 1039: Invalid 'Exit' statement (found Function)"},
        {"Print(1, 2)", "1 1044: Cannot use parentheses when calling a Sub (found end of line)"},
        {"Dim x, X", "1 1041: Name redefined (X)"},
        {"Sub S(a, A)\nEnd Sub", "2 1041: Name redefined (a)"},
        {"Sub S\nEnd Sub\nFunction s\nEnd Function", "3 1041: Name redefined (s)"},
        {"If True Then\nSub S\nEnd Sub\nEnd If",
         "2 1002: Syntax error (a procedure inside another block)"},
        {"Const c = Now", "1 1045: Expected literal constant (c)"},
        {"x = \"open\ny = 1", "1 1033: Unterminated string constant"},
        {"x = 1 $ 2", "1 1032: Invalid character ($)"},
        {"x = 12ab", "1 1031: Invalid number (12a)"},
        {"d = #31/31/2026#", "1 1002: Syntax error (not a date: #31/31/2026#)"},
        {"d = #3/7/2026", "1 1002: Syntax error (not a date: #3/7/2026#)"},
        {".Name = 1", "1 505: Invalid or unqualified reference (found .)"},
        {"Class C\nEnd Class", "1 1002: Syntax error (Class is not supported)"},
        {"Set x = New RegExp", "1 1002: Syntax error (New is not supported)"},
        {"On Error GoTo there", "1 1002: Syntax error (only On Error GoTo 0 is supported)"},
        {"Select Case 1\nCase 1 To 5\nEnd Select",
         "2 1002: Syntax error (Case ranges are not part of the language)"},
        {"x = 1 y = 2", "1 1025: Expected end of statement (found y)"},
        {"Option Explicit\nDim x\nOption Explicit", "3 1024: Expected statement (found Option)"},
        {"x = [open", "1 1007: Expected ']'"},
        {"If True Then If True Then\nPrint 1\nEnd If",
         "1 1024: Expected statement (found end of line)"},
    };
    for (const auto& [script, failure] : cases) {
        EXPECT_NE(outputOf(std::string("Print 0: ") + script).substr(0, 2), "0\n") << script;
        EXPECT_EQ(outputOf(script), failure) << script;
    }
}

TEST(ScriptLimits, EndWhatRunsAwayWithAnError)
{
    EXPECT_EQ(outputOf("Function F(n)\nF = F(n + 1)\nEnd Function\n\nPrint F(1)"),
              "2 28: Out of stack space (F)");
    EXPECT_EQ(outputOf("Function F(n)\nIf n > 0 Then F = 1 + F(n - 1)\nEnd Function\nPrint F(500)"),
              "500\n");
    for (const char* nested :
         {"(", "-", "Not ", "a(", "a.b(1)", "If 1 Then ", "Do\n", "With x\n"}) {
        const std::string failure = outputOf("x = " + repeated(nested, 5000));
        EXPECT_NE(failure.find("10"), std::string::npos) << nested << failure;
        EXPECT_NE(outputOf(repeated(nested, 5000)).find("10"), std::string::npos) << nested;
    }
    // Long sums and texts are no nesting.
    EXPECT_EQ(outputOf("x = 1" + repeated(" + 1", 5000) + ": Print x"), "5001\n");

    Runner runner;
    runner.engine.setLimits({1000, {}});
    EXPECT_EQ(runner.run("On Error Resume Next\nDo\nLoop"),
              "2 51: The script was stopped: too many statements");
    EXPECT_EQ(runner.run("For i = 1 To 2 Step 0\nNext"),
              "1 51: The script was stopped: too many statements");
    EXPECT_EQ(runner.run("Print 1"), "1\n"); // each run has its own allowance
    runner.engine.setLimits({0, std::chrono::milliseconds(20)});
    EXPECT_EQ(runner.run("While True\nWend"), "1 51: The script was stopped: it took too long");
    EXPECT_EQ(outputOf("x = \"0123456789\"\nDo\nx = x & x\nLoop"),
              "3 7: Out of memory (the text is too long)");
}

TEST(ScriptLimits, NoBytesHurt)
{
    // Every prefix and every damaged copy of a script is refused or run, never worse.
    const std::string script =
        "\xEF\xBB\xBFOption Explicit\r\nDim a(2), s: s = \"Zo\xC3\xAB \xFF\"\r"
        "For Each s In Array(1, #3/7/2026#, &HFF, 1e3)\n"
        "  If s > 1 Then a(1) = Mid(s, 2) Else a(0) = StrReverse(s) _\n & \"x\"\n"
        "Next: With Err: .Clear: End With ' done\n"
        "Select Case Len(s)\nCase 1, 2: s = UCase(\"\xC3\")\nEnd Select\n";
    for (std::size_t length = 0; length <= script.size(); ++length) {
        outputOf(script.substr(0, length));
        for (const char damage : {'\0', '\xFF', '(', '"', '\n', '#', '&', '_'}) {
            std::string damaged = script;
            if (length < script.size()) damaged[length] = damage;
            Runner runner;
            runner.engine.setLimits({10000, {}});
            runner.run(damaged);
        }
    }
    for (const char* text : {"", "\xEF\xBB\xBF", "_", "'", "rem", ":::\r\r",
                             "x = \"\x80\xC3\"\nPrint Len(x), "
                             "Left(x, 1), Asc(x)"}) {
        outputOf(text);
    }
}

} // namespace
} // namespace refhost
