#include "host/script/script_engine.h"

#include <new>

#include "host/script/interpreter.h"
#include "host/script/parser.h"
#include "host/script/script_error.h"

namespace refhost {
namespace {

using qmevents::ErrorNumber;
using qmevents::Value;

std::string lineOf(std::string_view text, int line)
{
    for (; line > 1 && !text.empty(); --line) {
        const std::size_t end = text.find_first_of("\r\n");
        if (end == std::string_view::npos) return {};
        text.remove_prefix(text.substr(end, 2) == "\r\n" ? end + 2 : end + 1);
    }
    return std::string(text.substr(0, text.find_first_of("\r\n")));
}

} // namespace

ScriptEngine::ScriptEngine() : interpreter_(std::make_unique<script::Interpreter>()) {}
ScriptEngine::~ScriptEngine() = default;

void ScriptEngine::addObject(const std::string& name, qmevents::Ref<qmevents::Object> object)
{
    interpreter_->addObject(name, std::move(object));
}

void ScriptEngine::addFunction(const std::string& name, Function function)
{
    interpreter_->addFunction(name, std::move(function));
}

void ScriptEngine::setLimits(const ScriptLimits& limits) { limits_ = limits; }

// Runs `act` and turns whatever ends it early into an Error that error() describes.
template <typename Act>
Value ScriptEngine::guarded(std::string_view text, Act act)
{
    if (!interpreter_->isRunning()) interpreter_->setLimits(limits_);
    error_ = {};
    const auto fail = [&](int number, const std::string& source, const std::string& description) {
        const script::Position& at = interpreter_->position();
        if (error_.line == 0) error_.line = at.line;
        error_ = {number, source, description, error_.line,
                  lineOf(at.unit ? std::string_view(at.unit->text) : text, error_.line)};
        throw qmevents::Error(number, source, description);
    };
    try {
        return act();
    } catch (const script::SyntaxError& failure) {
        error_ = {failure.number, "Script", failure.description, failure.line,
                  lineOf(text, failure.line)};
    } catch (const qmevents::Error& failure) {
        fail(failure.number(), failure.source(), failure.description());
    } catch (const script::Stopped& failure) {
        fail(static_cast<int>(ErrorNumber::internal), "Script",
             std::string("The script was stopped: ") + failure.reason);
    } catch (const std::bad_alloc&) {
        fail(static_cast<int>(ErrorNumber::outOfMemory), "Script",
             script::textOf(static_cast<int>(ErrorNumber::outOfMemory)));
    } catch (const std::exception& failure) {
        fail(static_cast<int>(ErrorNumber::internal), "Script", failure.what());
    }
    throw qmevents::Error(error_.number, error_.source, error_.description);
}

void ScriptEngine::addCode(std::string_view text)
{
    guarded(text, [&] {
        interpreter_->run(script::parse(std::string(text)));
        return Value();
    });
}

Value ScriptEngine::evaluate(std::string_view expression)
{
    return guarded(expression, [&] {
        const std::string text(expression);
        const auto tree = script::parseSingleExpression(text);
        return interpreter_->evaluateOnly(*tree);
    });
}

Value ScriptEngine::run(std::string_view procedure, std::span<Value> arguments)
{
    return guarded({}, [&] { return interpreter_->callByName(procedure, arguments); });
}

void ScriptEngine::reset()
{
    if (interpreter_->isRunning()) throw script::scriptError(ErrorNumber::invalidCall);
    interpreter_ = std::make_unique<script::Interpreter>();
    error_ = {};
}

} // namespace refhost
