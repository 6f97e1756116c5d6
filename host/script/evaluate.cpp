#include "automation/object.h"
#include "host/script/interpreter.h"
#include "host/script/script_error.h"
#include "host/script/stack_room.h"

// The interpreter's expressions.
namespace refhost::script {
namespace {

using qmevents::CallKind;
using qmevents::ErrorNumber;
using qmevents::Object;
using qmevents::Ref;
using qmevents::Value;
using qmevents::ValueKind;

} // namespace

Value Interpreter::evaluate(const Expression& expression)
{
    if (stackIsLow()) throw scriptError(outOfStack);
    return std::visit([&](const auto& node) { return evaluate(node); }, expression.node);
}

Value Interpreter::evaluatePlain(const Expression& expression)
{
    return plainValue(evaluate(expression));
}

Operand Interpreter::evaluateOperand(const Expression& expression)
{
    return {evaluate(expression), std::holds_alternative<Literal>(expression.node)};
}

Value Interpreter::evaluate(const Name& node)
{
    if (const Cell* cell = findCell(node.name)) return cell->value;
    if (const Value* value = findFixedValue(node.name)) return *value;
    if (const Callee callee = findCallee(node.name)) {
        CallArguments none;
        return call(callee, node.name, none);
    }
    if (frame_->unit && frame_->unit->optionExplicit) {
        throw scriptError(undefinedVariable, node.name);
    }
    return {};
}

Value Interpreter::evaluate(const MemberOf& node)
{
    CallArguments none;
    return invoke(objectOf(node), node.name, CallKind::method, none);
}

Ref<Object> Interpreter::objectOf(const MemberOf& node)
{
    if (!node.object) {
        // The parser has seen the With block, but it may be one that a failure stepped over.
        if (frame_->withObjects.empty()) throw scriptError(unqualifiedReference, node.name);
        return frame_->withObjects.back();
    }
    const Value value = evaluate(*node.object);
    if (!value.isObject()) {
        throw scriptError(ErrorNumber::objectRequired, typeName(value) + " before ." + node.name);
    }
    return value.object();
}

Value Interpreter::evaluate(const Indexed& node)
{
    if (const auto* member = std::get_if<MemberOf>(&node.target->node)) {
        const Ref<Object> object = objectOf(*member);
        CallArguments arguments = prepare(node.arguments);
        return invoke(object, member->name, CallKind::method, arguments);
    }
    const auto* name = std::get_if<Name>(&node.target->node);
    // Inside a function its name is its result, but with arguments it is a call.
    if (name && (isOwnName(name->name) || (!findCell(name->name) && !findFixedValue(name->name)))) {
        CallArguments arguments = prepare(node.arguments);
        return call(findCallee(name->name), name->name, arguments);
    }
    const Value value = evaluate(*node.target);
    CallArguments arguments = prepare(node.arguments);
    return indexed(value, arguments);
}

Value Interpreter::indexed(const Value& value, CallArguments& arguments)
{
    if (value.isObject()) return invoke(value.object(), {}, CallKind::get, arguments);
    if (!value.is(ValueKind::array)) {
        throw scriptError(ErrorNumber::typeMismatch, typeName(value) + " cannot be indexed");
    }
    Indices indices;
    for (const Value& index : arguments.values) {
        indices.push_back(asScript([&] { return qmevents::toInt32(index); }));
    }
    return value.array()->items[positionOf(*value.array(), indices)];
}

Value Interpreter::evaluate(const Unary& node)
{
    return applyUnary(node.operation, evaluate(*node.operand));
}

Value Interpreter::evaluate(const Chain& node)
{
    Operand left = evaluateOperand(*node.first);
    for (const auto& [operation, operand] : node.rest) {
        Operand right = evaluateOperand(*operand);
        left = {applyBinary(operation, std::move(left), std::move(right)), false};
    }
    return std::move(left.value);
}

} // namespace refhost::script
