#include "host/web/chain.h"

#include <array>
#include <utility>

#include "automation/conversions.h"
#include "automation/error.h"
#include "host/web/wire_value.h"

namespace refhost {

using nlohmann::json;
using qmevents::CallKind;
using qmevents::Error;
using qmevents::ErrorNumber;
using qmevents::Object;
using qmevents::Ref;
using qmevents::Value;

namespace {

constexpr std::size_t mostSteps = 32;
constexpr std::size_t mostArguments = 32;

Ref<Object> objectFrom(const Value& value, const std::string& what)
{
    if (!value.isObject())
        throw Error::with(ErrorNumber::objectRequired, what + " is " + typeName(value));
    return value.object();
}

} // namespace

Chain::Chain(const json& steps, const HeldObjects& held)
{
    if (!steps.is_array()) throw BadRequest("\"chain\" must be an array of steps");
    if (steps.size() > mostSteps) throw BadRequest("\"chain\" has too many steps");
    for (const json& step : steps) {
        if (!step.is_object()) throw BadRequest("each step of \"chain\" must be an object");
        if (const auto from = step.find("from"); from != step.end()) {
            if (start_ || !steps_.empty()) throw BadRequest("\"from\" must be the first step");
            start_ = objectFrom(fromWire(*from, held), "\"from\"");
        } else {
            steps_.push_back(stepFrom(step, held));
        }
    }
}

Chain::Step Chain::stepFrom(const json& step, const HeldObjects& held)
{
    static constexpr std::array<std::pair<const char*, CallKind>, 3> kinds{
        {{"get", CallKind::get}, {"call", CallKind::method}, {"put", CallKind::put}}};
    Step result;
    for (const auto& [key, kind] : kinds) {
        const auto name = step.find(key);
        if (name == step.end()) continue;
        if (!name->is_string() || !result.name.empty())
            throw BadRequest("a step has one member's name under get, call or put");
        result.name = name->get<std::string>();
        result.kind = kind;
    }
    if (result.name.empty())
        throw BadRequest("a step has one member's name under get, call or put");
    if (const auto arguments = step.find("args"); arguments != step.end()) {
        if (!arguments->is_array() || arguments->size() > mostArguments)
            throw BadRequest("\"args\" of " + result.name + " must be an array of few values");
        for (const json& argument : *arguments)
            result.arguments.push_back(fromWire(argument, held));
    }
    if (result.kind == CallKind::put) {
        const auto value = step.find("value");
        if (value == step.end())
            throw BadRequest("the assignment to " + result.name + " has no value");
        result.arguments.push_back(fromWire(*value, held));
        if (result.arguments.back().isObject()) result.kind = CallKind::putReference;
    }
    return result;
}

Value Chain::run(const Ref<Object>& app)
{
    Value result = start_ ? start_ : app;
    std::string path = start_ ? "the first step" : "App";
    const bool endsInCall = !steps_.empty() && (steps_.back().kind == CallKind::get ||
                                                steps_.back().kind == CallKind::method);
    if (endsInCall) given_ = steps_.back().arguments;
    for (Step& step : steps_) {
        const Ref<Object> object = objectFrom(result, path);
        result = invokeNamed(object, step.name, step.kind, step.arguments);
        path = step.name;
    }
    if (endsInCall) arguments_ = std::move(steps_.back().arguments);
    return result;
}

bool Chain::isUnchangedObject(std::size_t index) const
{
    const Value& before = given_[index];
    const Value& after = arguments_[index];
    return before.isObject() && !before.isNothing() && after.isObject() &&
           before.object() == after.object();
}

Ref<Object> Chain::runToObject(const Ref<Object>& app)
{
    const std::string last = steps_.empty() ? "the first step" : steps_.back().name;
    Ref<Object> object = objectFrom(run(app), last);
    if (!object) throw Error::with(ErrorNumber::objectNotSet, last);
    return object;
}

} // namespace refhost
