#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "automation/value.h"

namespace refhost {

namespace script {
class Interpreter;
}

/// How the last run of a script failed; number 0 when it did not.
struct ScriptError {
    int number = 0;
    std::string source;
    std::string description;
    int line = 0;     ///< Counted from 1 in the text that was added.
    std::string text; ///< That line.
};

/// When a run is ended by force; a script cannot catch it.
struct ScriptLimits {
    std::int64_t statements = 0;       ///< 0 for no limit.
    std::chrono::milliseconds time{0}; ///< 0 for no limit.
};

/// Runs texts in the "vbscript" language. Variables and procedures stay from one text to the next.
/// What fails throws Error, and `error()` then tells where. Used on one thread.
class ScriptEngine {
public:
    using Function = std::function<qmevents::Value(std::span<qmevents::Value>)>;

    ScriptEngine();
    ScriptEngine(const ScriptEngine&) = delete;
    ScriptEngine& operator=(const ScriptEngine&) = delete;
    ~ScriptEngine();

    /// Makes `object` reachable under `name`; what it changes takes effect at the next access.
    void addObject(const std::string& name, qmevents::Ref<qmevents::Object> object);
    /// Makes a procedure of the host callable under `name`.
    void addFunction(const std::string& name, Function function);
    void setLimits(const ScriptLimits& limits);

    /// Runs `text`. When any of it cannot be parsed, nothing of it runs.
    void addCode(std::string_view text);
    /// The value of an expression.
    qmevents::Value evaluate(std::string_view expression);
    /// Calls a procedure of the script; by-reference results come back in `arguments`.
    qmevents::Value run(std::string_view procedure, std::span<qmevents::Value> arguments);

    /// Forgets all variables, procedures and objects. Refused (5) while a text is running.
    void reset();

    const ScriptError& error() const { return error_; }
    void clearError() { error_ = {}; }

private:
    template <typename Act>
    qmevents::Value guarded(std::string_view text, Act act);

    ScriptLimits limits_;
    ScriptError error_;
    std::unique_ptr<script::Interpreter> interpreter_;
};

} // namespace refhost
