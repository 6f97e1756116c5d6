#include "tests/host/cli/cli_runner.h"

namespace refhost {
namespace {

class RunCommand : public CommandLineTest {};

TEST_F(RunCommand, PrintsWhatHappenedInOrder)
{
    EXPECT_EQ(
        outputOf("Print 1, \"a\", Null, Nothing, True\nApp.Shell.MsgBox \"Hello\", \"Title\"\n"
                 "App.Shell.ErrorUser \"Bad\", 1002, False\nApp.Shell.ErrorUnexpected \"Odd\"\n"
                 "App.Shell.Navigate \"obsidian://events/events-view\", True\n"
                 "App.Document.ForceUpdate"),
        "{\"kind\":\"print\",\"text\":\"1 a Null Nothing True\"}\n"
        "{\"kind\":\"message\",\"box\":\"MsgBox\",\"text\":\"Hello\",\"title\":\"Title\"}\n"
        "{\"kind\":\"message\",\"box\":\"ErrorUser\",\"text\":\"Bad\",\"code\":1002}\n"
        "{\"kind\":\"message\",\"box\":\"ErrorUnexpected\",\"text\":\"Odd\"}\n"
        "{\"kind\":\"navigate\",\"url\":\"obsidian://events/events-view\",\"second\":true}\n"
        "{\"kind\":\"refresh\"}\n");
}

TEST_F(RunCommand, ShowsTheStatementsThatTheScriptCaused)
{
    write("s.vbs",
          "App.Document.Execute \"UPDATE events_event_info SET Name = N'x' WHERE Id = 0\"\n"
          "Print App.Document.GetDataSet(\"SELECT 1 AS One\")(\"One\")\n"
          "On Error Resume Next\nApp.Document.Execute \"DELETE FROM gone\"");
    const std::string written =
        "{\"kind\":\"sql\",\"text\":\"UPDATE events_event_info SET Name = N'x' "
        "WHERE Id = 0\",\"type\":\"write\",\"rows\":0}\n";
    const std::string out = perform({"run", "s.vbs"}).out;
    EXPECT_EQ(out.substr(0, written.size()), written);
    EXPECT_NE(out.find("{\"kind\":\"sql\",\"text\":\"SELECT 1 AS One\",\"type\":\"read\"}\n"
                       "{\"kind\":\"print\",\"text\":\"1\"}\n"),
              std::string::npos)
        << out;
    EXPECT_NE(out.find("\"DELETE FROM gone\",\"type\":\"write\",\"error\":\"Line 1, column 13"),
              std::string::npos)
        << out;
    EXPECT_EQ(perform({"run", "s.vbs"}).out, out) << "equal runs give equal output";
    EXPECT_EQ(perform({"run", "--quiet-sql", "s.vbs"}).out,
              "{\"kind\":\"print\",\"text\":\"1\"}\n");
    EXPECT_NE(perform({"run", "--timings", "s.vbs"}).out.find("\"microseconds\":"),
              std::string::npos);
    const std::string all = perform({"run", "--signin-sql", "s.vbs"}).out;
    EXPECT_LT(all.find("CREATE TABLE events_event_info"), all.find("UPDATE events_event_info SET"));
    EXPECT_EQ(perform({"run", "--signin-sql", "--no-signin-sql", "s.vbs"}).out, out);
}

TEST_F(RunCommand, KeepsADatabaseForUsersDialectsAndRights)
{
    const std::string show =
        "Print App.Security.CurrentUser.Name, App.Provider.GetDocumentType(), "
        "App.Security.IsAllowed(\"events/edit\"), Now, "
        "App.Document.Setting(\"kept\")\nApp.Document.Setting(\"kept\") = \"yes\"";
    EXPECT_EQ(
        perform({"run", "--quiet-sql", "--db", "a.db", "--now", "2026-11-21 10:00", "-"}, show).out,
        "{\"kind\":\"print\",\"text\":\"admin 1 True 11/21/2026 10:00:00 AM \"}\n");
    EXPECT_EQ(perform({"run", "--quiet-sql", "--db=a.db", "--user", "ann", "--rights",
                       "events/view, donors/view", "--now=2026-11-21", "-"},
                      show)
                  .out,
              "{\"kind\":\"print\",\"text\":\"ann 1 False 11/21/2026 yes\"}\n");
    EXPECT_EQ(perform({"run", "--quiet-sql", "--dialect", "jet", "-"},
                      "Print App.Provider.GetDocumentType() = 1")
                  .out,
              "{\"kind\":\"print\",\"text\":\"False\"}\n");
}

TEST_F(RunCommand, AnswersPromptsAndDialogsFromAFile)
{
    const std::string prompts = "Print App.Shell.MsgPrompt(\"A?\", 4, \"T\"), "
                                "App.Shell.MsgPrompt(\"B?\", 1, \"T\")";
    EXPECT_EQ(outputOf(prompts, "[{\"prompt\":6},{\"prompt\":\"ok\"},{\"prompt\":7}]"),
              "{\"kind\":\"prompt\",\"text\":\"A?\",\"buttons\":4,\"title\":\"T\",\"answer\":6}\n"
              "{\"kind\":\"prompt\",\"text\":\"B?\",\"buttons\":1,\"title\":\"T\",\"answer\":1}\n"
              "{\"kind\":\"print\",\"text\":\"6 1\"}\n{\"kind\":\"unused-answers\",\"count\":1}\n");
    EXPECT_EQ(outputOf(prompts),
              "{\"kind\":\"prompt\",\"text\":\"A?\",\"buttons\":4,\"title\":\"T\",\"answer\":7,"
              "\"unanswered\":true}\n"
              "{\"kind\":\"prompt\",\"text\":\"B?\",\"buttons\":1,\"title\":\"T\",\"answer\":2,"
              "\"unanswered\":true}\n{\"kind\":\"print\",\"text\":\"7 2\"}\n");

    const std::string dialog = "App.Shell.Dialog(\"cost\") = CCur(5)\n"
                               "App.Modules.Events.ShowDialog \"first\", , , 300\n"
                               "Print App.Shell.Dialog.ReturnValue, App.Shell.Dialog(\"eventid\"), "
                               "App.Shell.Dialog(\"day\")";
    EXPECT_EQ(
        outputOf(
            dialog,
            "[{\"dialog\":\"First\",\"script\":\"Print App.Shell.Dialog(\\\"cost\\\")\\n"
            "App.Modules.Events.LoadDialog \\\"second\\\"\"},{\"dialog\":\"second\",\"back\":true},"
            "{\"dialog\":\"first\",\"set\":{\"eventid\":12,\"day\":{\"$date\":\"2026-03-07\"}},"
            "\"return\":true,\"url\":\"obsidian://events/events-view\"}]"),
        "{\"kind\":\"dialog\",\"page\":\"first\",\"module\":\"events\",\"height\":300,\"width\":"
        "550,"
        "\"values\":{\"cost\":{\"$currency\":\"5\"}},\"answer\":false}\n"
        "{\"kind\":\"print\",\"text\":\"5\"}\n"
        "{\"kind\":\"dialog-load\",\"page\":\"second\",\"module\":\"events\","
        "\"values\":{\"cost\":{\"$currency\":\"5\"}},\"answer\":\"back\"}\n"
        "{\"kind\":\"dialog-load\",\"page\":\"first\",\"module\":\"events\","
        "\"values\":{\"cost\":{\"$currency\":\"5\"}},\"answer\":true}\n"
        "{\"kind\":\"navigate\",\"url\":\"obsidian://events/events-view\"}\n"
        "{\"kind\":\"print\",\"text\":\"True 12 3/7/2026\"}\n");
    EXPECT_EQ(outputOf(dialog),
              "{\"kind\":\"dialog\",\"page\":\"first\",\"module\":\"events\",\"height\":300,"
              "\"width\":550,\"values\":{\"cost\":{\"$currency\":\"5\"}},\"answer\":false,"
              "\"unanswered\":true}\n{\"kind\":\"print\",\"text\":\"False  \"}\n");
    EXPECT_EQ(outputOf("App.Shell.Dialog.WaitForClose = False\nApp.Modules.Events.ShowDialog "
                       "\"first\"\nPrint TypeName(App.Shell.Dialog.ReturnValue)"),
              "{\"kind\":\"dialog\",\"page\":\"first\",\"module\":\"events\",\"height\":468,"
              "\"width\":550,\"values\":{},\"waits\":false}\n"
              "{\"kind\":\"print\",\"text\":\"Empty\"}\n");
}

TEST_F(RunCommand, FailsWithFileLineAndReason)
{
    write("bad.vbs", "Print 1\r\nx = 1 / 0\r\n");
    const Outcome bad = perform({"run", "bad.vbs"});
    EXPECT_EQ(bad.code, 1);
    EXPECT_EQ(bad.out,
              "{\"kind\":\"print\",\"text\":\"1\"}\n"
              "{\"kind\":\"error\",\"file\":\"bad.vbs\",\"line\":2,\"message\":\"Division by "
              "zero\",\"number\":11,\"source\":\"Script\"}\n");
    EXPECT_EQ(bad.err, "bad.vbs:2: Division by zero\n");

    struct {
        const char* script;
        const char* answers;
        const char* reason;
    } const misfits[] = {
        {"App.Modules.Events.ShowDialog \"first\"", "[{\"prompt\":6},{\"dialog\":\"x\"}]", ""},
        {"App.Modules.Events.ShowDialog \"first\"", "[{\"dialog\":\"other\"}]",
         "answer 1: it is for the dialog \"other\", but \"first\" is shown"},
        // A command that steps over the error does not hide it.
        {"On Error Resume Next\nApp.Modules.Events.ShowDialog \"first\"",
         "[{\"dialog\":\"first\",\"script\":\"\\n\\nOops 1\"}]",
         "answer 1: line 3: Type mismatch (Oops is no procedure, array or object)"},
        {"App.Modules.Events.ShowDialog \"first\"", "[{\"dialog\":\"first\",\"back\":true}]",
         "shows its first page"},
        {"x = App.Shell.MsgPrompt(\"A?\", 1)", "[{\"prompt\":6}]",
         "answer 1: the prompt \"A?\" has no button 6"},
        {"", "[{\"prompt\":5}]", "answer 1: a prompt is answered with"},
        {"", "[{\"dialog\":\"x\",\"retrun\":true}]", "\"retrun\" is no part of such an answer"},
        {"", "[{\"dialog\":\"x\",\"set\":{\"a\":{}}}]", "no value can be made of {}"},
        {"", "[1]", "an answer has \"prompt\" or \"dialog\""},
        {"", "{}", "an answers file is a list"},
        {"", "[", "parse error"},
    };
    for (const auto& [script, answers, reason] : misfits) {
        write("answers.json", answers);
        const Outcome outcome = perform({"run", "--answers", "answers.json", "-"}, script);
        EXPECT_EQ(outcome.code, *reason ? 1 : 0) << answers << outcome.out;
        EXPECT_NE(outcome.err.find(reason), std::string::npos) << outcome.err;
    }
}

TEST_F(RunCommand, RefusesACommandLineThatMakesNoSense)
{
    write("empty.vbs", "");
    write("no.db", std::string(2000, 'x'));
    struct {
        std::vector<std::string> words;
        int code;
        const char* reason;
    } const cases[] = {
        {{"run"}, 2, "it needs one script\nUsage: quillmere run [OPTION...] FILE|-"},
        {{"run", "a", "b"}, 2, "it needs one script"},
        {{"run", "--bogus", "empty.vbs"}, 2, "there is no option --bogus"},
        {{"run", "-x"}, 2, "there is no option -x"},
        {{"run", "empty.vbs", "--db"}, 2, "--db needs a value: FILE"},
        {{"run", "--quiet-sql=1", "empty.vbs"}, 2, "--quiet-sql takes no value"},
        {{"run", "--dialect", "oracle", "empty.vbs"}, 2, "--dialect is sqlserver or jet"},
        {{"run", "--now", "soon", "empty.vbs"}, 2, "--now is no such date: soon"},
        {{"run", "gone.vbs"}, 1, "cannot read the file gone.vbs"},
        {{"run", "."}, 1, "cannot read the file ."},
        {{"run", "--answers", "gone.json", "empty.vbs"}, 1, "cannot read the file gone.json"},
        {{"run", "--db", "no/such/folder/a.db", "empty.vbs"},
         1,
         "quillmere run: cannot sign in to no/such/folder/a.db: "},
        {{"run", "--db", "no.db", "empty.vbs"}, 1, "quillmere run: cannot sign in to no.db: "},
        {{"run", "--addin", "nowhere", "empty.vbs"}, 0, ""},
        {{"sql", "SELECT 1", "SELECT 2"}, 2, "it takes one text"},
        {{"sql", "--db", "gone.db", "SELECT 1"}, 1, "there is no database gone.db"},
        {{"sql", "--db", "no.db", "SELECT 1"}, 1, "quillmere sql: "},
    };
    for (const auto& [words, code, reason] : cases) {
        const Outcome outcome = perform(words);
        SCOPED_TRACE(testing::PrintToString(words));
        EXPECT_EQ(outcome.code, code) << outcome.out;
        EXPECT_NE(outcome.err.find(reason), std::string::npos) << outcome.err;
    }
    for (const char* command : {"run", "sql"}) {
        const Outcome help = perform({command, "--help"});
        EXPECT_EQ(help.code, 0);
        EXPECT_NE(help.out.find("--dialect sqlserver|jet"), std::string::npos) << help.out;
    }
}

TEST_F(RunCommand, SqlShowsEveryColumnUnderAKeyOfItsOwn)
{
    EXPECT_EQ(perform({"sql", "SELECT 1, 2 AS a, 3 AS a, NULL AS n, N'\xC3\xAB' AS t"}).out,
              "{\"#1\":1,\"a\":2,\"a#3\":3,\"n\":null,\"t\":\"\xC3\xAB\"}\n");
    EXPECT_EQ(perform({"sql"}, "\r\n  \nSELECT 1 AS a\r\n").out, "{\"a\":1}\n");
}

} // namespace
} // namespace refhost
