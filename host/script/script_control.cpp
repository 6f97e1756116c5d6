#include "host/script/script_control.h"

#include "automation/describe.h"
#include "host/script/script_engine.h"
#include "host/script/script_error.h"

namespace refhost {
namespace {

using qmevents::arg;
using qmevents::CallKind;
using qmevents::ErrorNumber;
using qmevents::Members;
using qmevents::Ref;
using qmevents::Value;

constexpr std::string_view theLanguage = "vbscript";

/// What a control's Error property gives: how its last run failed.
class ControlError : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "ScriptError";
    explicit ControlError(std::shared_ptr<ScriptEngine> engine) : engine_(std::move(engine)) {}

    const Members& members() const override
    {
        static const Members table =
            qmevents::describe<ControlError>("How the last run of a script failed.")
                .readOnly("Number", &ControlError::Number, "The error's number; 0 for none.")
                .asDefault()
                .readOnly("Source", &ControlError::Source, "Where the error comes from.")
                .readOnly("Description", &ControlError::Description, "What went wrong.")
                .readOnly("Line", &ControlError::Line, "The line to blame, counted from 1.")
                .readOnly("Text", &ControlError::Text, "The text of that line.")
                .method("Clear", &ControlError::Clear, "Forgets the error.");
        return table;
    }

    std::int32_t Number() const { return engine_->error().number; }
    std::string Source() const { return engine_->error().source; }
    std::string Description() const { return engine_->error().description; }
    std::int32_t Line() const { return engine_->error().line; }
    std::string Text() const { return engine_->error().text; }
    void Clear() { engine_->clearError(); }

private:
    std::shared_ptr<ScriptEngine> engine_;
};

class ScriptControl : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "ScriptControl";
    const Members& members() const override;

    // Run takes as many arguments as the procedure has, so no line of the table can describe it.
    Value invoke(qmevents::MemberId member, CallKind kind, std::span<Value> arguments) override
    {
        if (member != members().id("Run") || arguments.empty() || kind != CallKind::method) {
            return DescribedObject::invoke(member, kind, arguments);
        }
        const Ref<ScriptControl> alive(this);
        return engine_->run(qmevents::toText(arguments[0]), arguments.subspan(1));
    }

    std::string Language() const { return std::string(theLanguage); }
    void setLanguage(const std::string& language)
    {
        if (!qmevents::text::sameName(language, theLanguage)) {
            throw script::scriptError(ErrorNumber::invalidCall, "no such language: " + language);
        }
    }
    std::int32_t Timeout() const { return timeout_; }
    void setTimeout(std::int32_t milliseconds)
    {
        timeout_ = milliseconds > 0 ? milliseconds : 0;
        engine_->setLimits({0, std::chrono::milliseconds(timeout_)});
    }
    void AddObject(const std::string& name, const Ref<qmevents::Object>& object, bool)
    {
        engine_->addObject(name, object);
    }
    // The caller's reference to this object might go away while a script runs.
    void AddCode(const std::string& text)
    {
        const Ref<ScriptControl> alive(this);
        engine_->addCode(text);
    }
    Value Eval(const std::string& expression)
    {
        const Ref<ScriptControl> alive(this);
        return engine_->evaluate(expression);
    }
    Value Run(const std::string& procedure) { return engine_->run(procedure, {}); }
    void Reset() { engine_->reset(); }
    Ref<ControlError> Error() const { return qmevents::makeRef<ControlError>(engine_); }

private:
    std::shared_ptr<ScriptEngine> engine_ = std::make_shared<ScriptEngine>();
    std::int32_t timeout_ = 0;
};

const Members& ScriptControl::members() const
{
    using qmevents::optional;
    static const Members table =
        qmevents::describe<ScriptControl>("Runs scripts that are given as text.")
            .property("Language", &ScriptControl::Language, &ScriptControl::setLanguage,
                      "Always \"vbscript\"; any other language is refused.")
            .property("Timeout", &ScriptControl::Timeout, &ScriptControl::setTimeout,
                      "Milliseconds after which a run is ended; 0 for never.")
            .method("AddObject", &ScriptControl::AddObject,
                    {arg("Name"), arg("Object"), optional("AddMembers", false)},
                    "Makes an object reachable under a name.")
            .method("AddCode", &ScriptControl::AddCode, {arg("Code")}, "Runs a text.")
            .method("ExecuteStatement", &ScriptControl::AddCode, {arg("Statement")},
                    "Runs a statement.")
            .method("Eval", &ScriptControl::Eval, {arg("Expression")},
                    "The value of an expression.")
            .method("Run", &ScriptControl::Run, {arg("Procedure")},
                    "Calls a procedure with the arguments that follow its name.")
            .method("Reset", &ScriptControl::Reset, "Forgets all that was added.")
            .readOnly("Error", &ScriptControl::Error, "How the last run failed.");
    return table;
}

} // namespace

Ref<qmevents::Object> makeScriptControl() { return qmevents::makeRef<ScriptControl>(); }

} // namespace refhost
