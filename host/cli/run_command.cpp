#include <algorithm>
#include <ostream>

#include "automation/clock.h"
#include "automation/conversions.h"
#include "automation/error.h"
#include "host/app/session.h"
#include "host/cli/commands.h"
#include "host/cli/common_options.h"
#include "host/cli/headless_front_end.h"
#include "host/script/script_engine.h"

namespace refhost {
namespace {

struct RunOptions {
    std::string databaseFile;
    Dialect dialect = Dialect::sqlServer;
    std::string user = "admin";
    std::optional<std::vector<std::string>> rights;
    std::string answersFile;
    std::optional<qmevents::Date> now;
    std::string addIn;
    bool showsSql = true;
    bool showsSignInSql = false;
    bool showsTimings = false;
};

std::vector<std::string> splitAtCommas(const std::string& text)
{
    std::vector<std::string> parts;
    for (std::size_t at = 0; at <= text.size();) {
        const std::size_t comma = std::min(text.find(',', at), text.size());
        const std::string_view part =
            qmevents::text::trim(std::string_view(text).substr(at, comma - at));
        if (!part.empty()) parts.emplace_back(part);
        at = comma + 1;
    }
    return parts;
}

CommandLine commandLine(RunOptions& options)
{
    const auto text = [](std::string& target) {
        return [&target](const std::string& value) { target = value; };
    };
    const auto flag = [](bool& target, bool value) {
        return [&target, value](const std::string&) { target = value; };
    };
    return {"run",
            "FILE|-",
            "Signs in without a screen, runs a script that reaches the host as App, and prints\n"
            "what happened: one JSON object a line.",
            {databaseOption(options.databaseFile,
                            "The database, made if absent; else a fresh one in memory."),
             dialectOption(options.dialect),
             {"--user", "NAME", "Who signs in (admin).", text(options.user)},
             {"--rights", "A,B,...", "The user's rights, exactly these.",
              [&](const std::string& value) { options.rights = splitAtCommas(value); }},
             {"--answers", "FILE", "What the user answers and does in dialogs.",
              text(options.answersFile)},
             clockOption(options.now),
             {"--addin", "PATH", "The folder with data/, cache/ and pages/.", text(options.addIn)},
             {"--quiet-sql", "", "Leaves the statements out.", flag(options.showsSql, false)},
             {"--signin-sql", "", "Shows those of signing in and out, too.",
              flag(options.showsSignInSql, true)},
             {"--no-signin-sql", "", "Leaves these out (as it does anyway).",
              flag(options.showsSignInSql, false)},
             {"--timings", "", "Shows how many microseconds each statement took.",
              flag(options.showsTimings, true)}}};
}

/// One run of a script: the session, what it prints and how it fails.
class Run {
public:
    Run(RunOptions options, std::string scriptName, const Streams& streams)
        : options_(std::move(options)), scriptName_(std::move(scriptName)), streams_(streams),
          lines_(streams.out)
    {
    }

    int perform()
    {
        const int code = performReported();
        streams_.out.flush();
        return code;
    }

private:
    int performReported()
    {
        std::optional<HeadlessFrontEnd> frontEnd;
        std::string script;
        SessionOptions sessionOptions;
        try {
            script = readText(scriptName_, streams_);
            frontEnd.emplace(lines_, answers());
            sessionOptions = optionsFor(*frontEnd);
        } catch (const qmevents::Error& error) {
            streams_.err << "quillmere run: " << error.description() << '\n';
            return failed;
        }
        try {
            Session session(std::move(sessionOptions));
            signedIn_ = true;
            frontEnd->runScript = [&](const std::string& text) { runPart(session, text); };
            runWhole(session, script);
            signedIn_ = false;
        } catch (const qmevents::Error& error) {
            const std::string& file = options_.databaseFile;
            failure_ = {error.number(),
                        error.source(),
                        "cannot sign in" + (file.empty() ? file : " to " + file) + ": " +
                            error.description(),
                        0,
                        {}};
        }
        if (!frontEnd->misfit().empty()) failure_.description = frontEnd->misfit();
        if (!frontEnd->misfit().empty() && failure_.number == 0) failure_.number = 5;
        if (failure_.number != 0) return reportFailure();
        if (const auto count = frontEnd->unusedAnswers(); count > 0) {
            lines_.write({{"kind", "unused-answers"}, {"count", count}});
        }
        return succeeded;
    }

    Answers answers() const
    {
        if (options_.answersFile.empty()) return {};
        const std::string text = readText(options_.answersFile, streams_);
        try {
            return Answers::parse(text);
        } catch (const qmevents::Error& error) {
            throw qmevents::Error(error.number(), error.source(),
                                  options_.answersFile + ": " + error.description());
        }
    }

    SessionOptions optionsFor(HeadlessFrontEnd& frontEnd)
    {
        SessionOptions session;
        session.database = openDatabase(options_.databaseFile);
        session.dialect = options_.dialect;
        session.userName = options_.user;
        session.rights = options_.rights;
        session.frontEnd = &frontEnd;
        session.addInPath = options_.addIn.empty() ? findAddIn() : options_.addIn;
        session.onStatement = [this](const Traced& statement) { trace(statement); };
        return session;
    }

    void trace(const Traced& statement)
    {
        if (!options_.showsSql || !(signedIn_ || options_.showsSignInSql)) return;
        const bool reads = statement.kind == Traced::Kind::read;
        Json line{{"kind", "sql"}, {"text", statement.text}, {"type", reads ? "read" : "write"}};
        if (!reads && statement.error.empty()) line["rows"] = statement.rows;
        if (!statement.error.empty()) line["error"] = statement.error;
        if (options_.showsTimings) line["microseconds"] = statement.microseconds;
        lines_.write(line);
    }

    void prepare(ScriptEngine& engine, Session& session)
    {
        engine.addObject("App", session.app());
        engine.addFunction("Print", [this](std::span<Value> values) {
            std::string text;
            for (const Value& value : values) {
                if (&value != values.data()) text += ' ';
                text += printed(value);
            }
            lines_.write({{"kind", "print"}, {"text", text}});
            return Value();
        });
    }

    // What has no text of its own is printed as its type.
    static std::string printed(const Value& value)
    {
        if (value.isNull()) return "Null";
        if (!value.isObject() && !value.is(qmevents::ValueKind::array) && !value.isMissing()) {
            return qmevents::toText(value);
        }
        try {
            return qmevents::toText(value);
        } catch (const qmevents::Error&) {
            return typeName(value);
        }
    }

    void runWhole(Session& session, const std::string& script)
    {
        ScriptEngine engine;
        prepare(engine, session);
        try {
            engine.addCode(script);
        } catch (const qmevents::Error&) {
            failure_ = engine.error();
        }
    }

    /// The script of a dialog page, whose failure names its own line.
    void runPart(Session& session, const std::string& script)
    {
        ScriptEngine engine;
        prepare(engine, session);
        try {
            engine.addCode(script);
        } catch (const qmevents::Error& error) {
            throw qmevents::Error(error.number(), error.source(),
                                  "line " + std::to_string(engine.error().line) + ": " +
                                      error.description());
        }
    }

    int reportFailure()
    {
        lines_.write({{"kind", "error"},
                      {"file", scriptName_},
                      {"line", failure_.line},
                      {"message", failure_.description},
                      {"number", failure_.number},
                      {"source", failure_.source}});
        streams_.out.flush();
        const std::string place =
            failure_.line > 0 ? scriptName_ + ":" + std::to_string(failure_.line) : "quillmere run";
        streams_.err << place << ": " << failure_.description << '\n';
        return failed;
    }

    RunOptions options_;
    std::string scriptName_;
    const Streams& streams_;
    JsonLines lines_;
    ScriptError failure_;
    bool signedIn_ = false;
};

} // namespace

int runCommand(std::span<const std::string> arguments, const Streams& streams)
{
    RunOptions options;
    const CommandLine line = commandLine(options);
    return line.run(arguments, streams, [&](const std::vector<std::string>& operands) {
        if (operands.size() != 1) throw UsageError{"it needs one script"};
        std::optional<qmevents::PinnedClock> clock;
        if (options.now) clock.emplace(*options.now);
        return Run(options, operands[0], streams).perform();
    });
}

} // namespace refhost
