#include "automation/object.h"
#include "host/script/interpreter.h"
#include "host/script/script_error.h"

// The interpreter's statements.
namespace refhost::script {
namespace {

using qmevents::CallKind;
using qmevents::ErrorNumber;
using qmevents::Object;
using qmevents::Ref;
using qmevents::Value;
using qmevents::ValueKind;

bool isTrue(const Value& value)
{
    return !value.isNull() && asScript([&] { return qmevents::toBool(value); });
}

} // namespace

Interpreter::Flow Interpreter::run(const Block& block)
{
    for (const Statement& statement : block) {
        const Flow flow = execute(statement);
        if (flow != Flow::next) return flow;
    }
    return Flow::next;
}

Interpreter::Flow Interpreter::execute(const Statement& statement)
{
    position_ = {frame_->unit, statement.line};
    countStep();
    try {
        return std::visit([&](const auto& node) { return execute(node); }, statement.node);
    } catch (const qmevents::Error& error) {
        // On Error Resume Next: go on with the statement behind the one that failed.
        if (!frame_->resumeNext) throw;
        err_->set(error);
        return Flow::next;
    }
}

void Interpreter::countStep()
{
    if (limits_.statements == 0 && limits_.time.count() == 0) return;
    --stepsLeft_;
    if (limits_.statements > 0 && stepsLeft_ < 0) throw Stopped{"too many statements"};
    if (limits_.time.count() > 0 && stepsLeft_ % 256 == 0 &&
        std::chrono::steady_clock::now() > deadline_) {
        throw Stopped{"it took too long"};
    }
}

// A failing condition of If counts as true, as in the language: the next statement is the first
// one of the branch.
bool Interpreter::holds(const Expression& condition)
{
    try {
        return isTrue(evaluatePlain(condition));
    } catch (const qmevents::Error& error) {
        if (!frame_->resumeNext) throw;
        err_->set(error);
        return true;
    }
}

// --- Assignments ------------------------------------------------------------------------------

Interpreter::Flow Interpreter::execute(const Assignment& node)
{
    assign(*node.target, evaluate(*node.value), node.byReference);
    return Flow::next;
}

void Interpreter::assign(const Expression& target, Value value, bool byReference)
{
    if (!byReference) {
        value = plainValue(std::move(value));
    } else if (!value.isObject()) {
        throw scriptError(ErrorNumber::objectRequired, typeName(value));
    }
    if (const auto* name = std::get_if<Name>(&target.node)) {
        Cell& cell = variable(name->name);
        if (cell.kind == Cell::Kind::fixedArray) {
            throw scriptError(ErrorNumber::typeMismatch, name->name + " is an array");
        }
        std::swap(cell.value, value);
    } else if (const auto* member = std::get_if<MemberOf>(&target.node)) {
        assignMember(*member, {}, std::move(value), byReference);
    } else {
        assignIndexed(std::get<Indexed>(target.node), std::move(value), byReference);
    }
}

void Interpreter::assignMember(const MemberOf& target, CallArguments indices, Value value,
                               bool byReference)
{
    indices.values.push_back(std::move(value));
    indices.origins.emplace_back();
    invoke(objectOf(target), target.name, byReference ? CallKind::putReference : CallKind::put,
           indices);
}

void Interpreter::assignIndexed(const Indexed& target, Value value, bool byReference)
{
    if (const auto* member = std::get_if<MemberOf>(&target.target->node)) {
        assignMember(*member, prepare(target.arguments), std::move(value), byReference);
        return;
    }
    // Down to the variable: `a(1)(2)(3) = x` changes an array within an array.
    std::vector<CallArguments> path;
    const Expression* base = nullptr;
    for (const Indexed* level = &target; level; level = std::get_if<Indexed>(&base->node)) {
        path.push_back(prepare(level->arguments));
        base = level->target.get();
    }
    const auto* name = std::get_if<Name>(&base->node);
    Cell* cell = name ? findCell(name->name) : nullptr;
    Value temporary;
    if (!cell) temporary = evaluate(*base);
    Value* place = cell ? &cell->value : &temporary;
    for (; place->is(ValueKind::array) && !path.empty(); path.pop_back()) {
        Indices indices;
        for (const Value& index : path.back().values) {
            indices.push_back(asScript([&] { return qmevents::toInt32(index); }));
        }
        place = &writableElement(*place, indices);
    }
    if (path.empty()) {
        checkNesting(value);
        std::swap(*place, value);
        return;
    }
    Value holder = *place;
    for (; path.size() > 1; path.pop_back()) holder = indexed(holder, path.back());
    if (!holder.isObject()) {
        throw scriptError(ErrorNumber::typeMismatch, typeName(holder) + " cannot be indexed");
    }
    path.back().values.push_back(std::move(value));
    path.back().origins.emplace_back();
    invoke(holder.object(), {}, byReference ? CallKind::putReference : CallKind::put, path.back());
}

Interpreter::Flow Interpreter::execute(const CallStatement& node)
{
    const auto* name = std::get_if<Name>(&node.call->node);
    if (!name) {
        evaluate(*node.call);
        return Flow::next;
    }
    CallArguments none;
    call(findCallee(name->name), name->name, none);
    return Flow::next;
}

Interpreter::Flow Interpreter::execute(const ReDim& node)
{
    for (const auto& [name, expressions] : node.items) {
        Indices bounds;
        for (const auto& expression : expressions) {
            const Value bound = evaluatePlain(*expression);
            bounds.push_back(asScript([&] { return qmevents::toInt32(bound); }));
        }
        Cell* cell = findCell(name);
        if (!cell) cell = &scope().declare(name);
        if (cell->kind == Cell::Kind::constant) throw scriptError(illegalAssignment, name);
        if (cell->kind == Cell::Kind::fixedArray) throw scriptError(arrayIsFixed, name);
        const bool keeps = node.preserve && cell->value.is(ValueKind::array);
        Value array = keeps ? resized(*cell->value.array(), bounds) : makeArray(bounds);
        std::swap(cell->value, array);
    }
    return Flow::next;
}

Interpreter::Flow Interpreter::execute(const Erase& node)
{
    for (const auto& name : node.names) {
        Cell& cell = variable(name);
        if (!cell.value.is(ValueKind::array)) throw scriptError(ErrorNumber::typeMismatch, name);
        Indices bounds;
        if (cell.kind == Cell::Kind::fixedArray) {
            for (const auto& dimension : cell.value.array()->dimensions) {
                bounds.push_back(dimension.count - 1);
            }
        }
        Value array = makeArray(bounds);
        std::swap(cell.value, array);
    }
    return Flow::next;
}

// --- Blocks -----------------------------------------------------------------------------------

Interpreter::Flow Interpreter::execute(const If& node)
{
    for (const auto& [condition, body, line] : node.branches) {
        position_.line = line;
        if (holds(*condition)) return run(body);
    }
    return run(node.otherwise);
}

Interpreter::Flow Interpreter::execute(const ForRange& node)
{
    const auto number = [&](const ExpressionPtr& expression) {
        Value value = evaluatePlain(*expression);
        if (value.isNull()) throw scriptError(ErrorNumber::invalidNull);
        return applyBinary(Operator::add, {std::move(value)}, {Value(std::int16_t{0})});
    };
    const Value from = number(node.from);
    const Value to = number(node.to);
    const Value step = node.step ? number(node.step) : Value(std::int16_t{1});
    const Operator within =
        qmevents::toDouble(step) < 0 ? Operator::greaterOrEqual : Operator::lessOrEqual;
    Cell& counter = variable(node.variable);
    counter.value = from;
    while (isTrue(applyBinary(within, {counter.value}, {to}))) {
        const Flow flow = run(node.body);
        if (flow == Flow::exitFor) break;
        if (flow != Flow::next) return flow;
        countStep();
        counter.value = applyBinary(Operator::add, {counter.value}, {step});
    }
    return Flow::next;
}

Interpreter::Flow Interpreter::execute(const ForEach& node)
{
    const Value collection = evaluate(*node.collection);
    std::function<bool(Value&)> next;
    if (collection.is(ValueKind::array)) {
        next = [array = collection.array(), at = std::size_t{0}](Value& item) mutable {
            if (at == array->items.size()) return false;
            item = array->items[at++];
            return true;
        };
    } else if (collection.isObject()) {
        if (collection.isNothing()) throw scriptError(ErrorNumber::objectNotSet);
        next = [walk = collection.object()->enumerate()](Value& item) { return walk->next(item); };
    } else {
        throw scriptError(ErrorNumber::notACollection, typeName(collection));
    }
    Cell& element = variable(node.variable);
    for (Value item; next(item); item = Value()) {
        std::swap(element.value, item);
        const Flow flow = run(node.body);
        if (flow == Flow::exitFor) break;
        if (flow != Flow::next) return flow;
        countStep();
    }
    return Flow::next;
}

Interpreter::Flow Interpreter::execute(const Loop& node)
{
    const int line = position_.line;
    const auto goesOn = [&] {
        position_ = {frame_->unit, line};
        countStep();
        return !node.condition || isTrue(evaluatePlain(*node.condition)) != node.until;
    };
    if (!node.testedAfter && !goesOn()) return Flow::next;
    do {
        const Flow flow = run(node.body);
        if (flow == Flow::exitDo) break;
        if (flow != Flow::next) return flow;
    } while (goesOn());
    return Flow::next;
}

Interpreter::Flow Interpreter::execute(const Select& node)
{
    Operand subject = evaluateOperand(*node.subject);
    subject.value = plainValue(std::move(subject.value));
    for (const auto& [values, body] : node.cases) {
        for (const auto& value : values) {
            if (isIn(*value, subject)) return run(body);
        }
    }
    return run(node.otherwise);
}

bool Interpreter::isIn(const Expression& value, const Operand& subject)
{
    return isTrue(applyBinary(Operator::equal, subject, evaluateOperand(value)));
}

Interpreter::Flow Interpreter::execute(const With& node)
{
    const Value value = evaluate(*node.object);
    if (!value.isObject()) throw scriptError(ErrorNumber::objectRequired, typeName(value));
    auto& stack = frame_->withObjects;
    const struct Entered {
        explicit Entered(std::vector<Ref<Object>>& objects, Ref<Object> object) : objects_(objects)
        {
            objects_.push_back(std::move(object));
        }
        Entered(const Entered&) = delete;
        Entered& operator=(const Entered&) = delete;
        ~Entered() { objects_.pop_back(); }
        std::vector<Ref<Object>>& objects_;
    } entered(stack, value.object());
    return run(node.body);
}

Interpreter::Flow Interpreter::execute(const Exit& node)
{
    switch (node.what) {
    case ExitFrom::forLoop:
        return Flow::exitFor;
    case ExitFrom::doLoop:
        return Flow::exitDo;
    case ExitFrom::procedure:
        break;
    }
    return Flow::exitProcedure;
}

Interpreter::Flow Interpreter::execute(const OnError& node)
{
    frame_->resumeNext = node.resumeNext;
    err_->Clear();
    return Flow::next;
}

} // namespace refhost::script
