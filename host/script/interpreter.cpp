#include "host/script/interpreter.h"

#include "automation/object.h"
#include "host/script/script_error.h"
#include "host/script/stack_room.h"

// Names, calls, and what runs from outside.
namespace refhost::script {
namespace {

using qmevents::CallKind;
using qmevents::ErrorNumber;
using qmevents::Missing;
using qmevents::Object;
using qmevents::Ref;
using qmevents::Value;
using qmevents::ValueKind;

constexpr int deepestCalls = 1000;

// Whether a value that was handed to a call is still what it was.
bool isUnchanged(const Value& before, const Value& after)
{
    return before.kind() == after.kind() && std::visit(
                                                [&](const auto& held) {
                                                    using T = std::remove_cvref_t<decltype(held)>;
                                                    if constexpr (std::equality_comparable<T>) {
                                                        return held == after.as<T>();
                                                    } else {
                                                        return true; // Null or missing, both times
                                                    }
                                                },
                                                before.storage());
}

Indices indicesOf(std::span<const Value> values)
{
    Indices indices;
    for (const Value& value : values) {
        indices.push_back(asScript([&] { return qmevents::toInt32(value); }));
    }
    return indices;
}

} // namespace

Interpreter::Interpreter() : err_(qmevents::makeRef<ErrObject>()) { addObject("Err", err_); }

Interpreter::Frame::Frame(Interpreter& interpreter, const Unit* ofUnit,
                          const Procedure* ofProcedure)
    : unit(ofUnit), procedure(ofProcedure), interpreter_(interpreter), caller_(interpreter.frame_)
{
    interpreter_.frame_ = this;
}

void Interpreter::addObject(const std::string& name, Ref<Object> object)
{
    objects_[name] = std::move(object);
}

void Interpreter::addFunction(const std::string& name, ScriptEngine::Function function)
{
    functions_[name] = std::move(function);
}

void Interpreter::setLimits(const ScriptLimits& limits)
{
    limits_ = limits;
    stepsLeft_ = limits.statements;
    deadline_ = std::chrono::steady_clock::now() + limits.time;
}

void Interpreter::run(std::unique_ptr<const Unit> unit)
{
    units_.push_back(std::move(unit));
    const Unit& added = *units_.back();
    for (const auto& procedure : added.procedures) procedures_[procedure->name] = procedure.get();
    const Frame frame(*this, &added);
    position_ = {&added, 0};
    declare(globals_, added.declared);
    run(added.body);
}

Value Interpreter::evaluateOnly(const Expression& expression)
{
    const Frame frame(*this, nullptr);
    position_ = {nullptr, 1};
    return evaluate(expression);
}

Value Interpreter::callByName(std::string_view procedure, std::span<Value> arguments)
{
    const auto found = procedures_.find(procedure);
    if (found == procedures_.end()) {
        throw scriptError(ErrorNumber::noSuchMember,
                          "there is no procedure " + std::string(procedure));
    }
    std::vector<Cell> cells;
    for (const Value& argument : arguments) cells.push_back({argument});
    CallArguments passed{{arguments.begin(), arguments.end()}, {}};
    for (Cell& cell : cells) passed.origins.push_back({&cell, {}, false});
    const Frame frame(*this, found->second->unit);
    Value result = callProcedure(*found->second, passed);
    for (std::size_t i = 0; i < cells.size(); ++i) arguments[i] = std::move(cells[i].value);
    return result;
}

// --- Names ------------------------------------------------------------------------------------

Cell* Interpreter::findCell(std::string_view name)
{
    if (frame_->procedure) {
        if (Cell* cell = frame_->locals.find(name)) return cell;
    }
    return globals_.find(name);
}

Cell& Interpreter::variable(const std::string& name)
{
    if (Cell* cell = findCell(name)) {
        if (cell->kind == Cell::Kind::constant) throw scriptError(illegalAssignment, name);
        return *cell;
    }
    if (findFixedValue(name) || findCallee(name)) throw scriptError(illegalAssignment, name);
    if (frame_->unit && frame_->unit->optionExplicit) throw scriptError(undefinedVariable, name);
    return scope().declare(name);
}

const Value* Interpreter::findFixedValue(std::string_view name) const
{
    const auto object = objects_.find(name);
    if (object != objects_.end()) return &object->second;
    return findConstant(name);
}

Interpreter::Callee Interpreter::findCallee(std::string_view name) const
{
    const auto procedure = procedures_.find(name);
    if (procedure != procedures_.end()) return {procedure->second, nullptr, nullptr};
    const auto function = functions_.find(name);
    if (function != functions_.end()) return {nullptr, &function->second, nullptr};
    return {nullptr, nullptr, findBuiltin(name)};
}

bool Interpreter::isOwnName(std::string_view name) const
{
    return frame_->procedure && qmevents::text::sameName(frame_->procedure->name, name);
}

void Interpreter::declare(Scope& scope, const std::vector<Declared>& declared)
{
    for (const Declared& item : declared) {
        Cell cell;
        if (item.kind == Declared::Kind::constant) {
            cell = {item.value, Cell::Kind::constant};
        } else if (item.kind == Declared::Kind::fixedArray) {
            cell = {makeArray(item.bounds), Cell::Kind::fixedArray};
        } else if (item.kind == Declared::Kind::dynamicArray) {
            cell.value = makeArray({});
        }
        scope.declare(item.name) = std::move(cell);
    }
}

// --- Calls ------------------------------------------------------------------------------------

Interpreter::CallArguments Interpreter::prepare(const Expressions& expressions)
{
    CallArguments arguments;
    for (const auto& expression : expressions) {
        if (expression) {
            prepare(*expression, arguments);
        } else {
            arguments.values.emplace_back(Missing{});
            arguments.origins.emplace_back();
        }
    }
    return arguments;
}

void Interpreter::prepare(const Expression& expression, CallArguments& arguments)
{
    Origin origin;
    Value value;
    const auto* name = std::get_if<Name>(&expression.node);
    const auto* element = std::get_if<Indexed>(&expression.node);
    if (element) name = std::get_if<Name>(&element->target->node);
    Cell* cell = name ? findCell(name->name) : nullptr;
    if (cell && cell->kind == Cell::Kind::constant) cell = nullptr;
    // Both ends of the chain pass a plain value, for reasons of their own.
    // NOLINTNEXTLINE(bugprone-branch-clone)
    if (element && (!cell || !cell->value.is(ValueKind::array) || isOwnName(name->name))) {
        value = evaluate(expression);
    } else if (element) {
        origin = {cell, indicesOf(prepare(element->arguments).values), true};
        // What evaluates the indices might have put something else into the variable.
        if (!cell->value.is(ValueKind::array)) throw scriptError(ErrorNumber::typeMismatch);
        value = cell->value.array()->items[positionOf(*cell->value.array(), origin.indices)];
    } else if (name && !cell && !findFixedValue(name->name) && !findCallee(name->name) &&
               !globals_.find(name->name)) {
        origin.cell = &variable(name->name);
    } else if (cell) {
        origin.cell = cell;
        value = cell->value;
    } else {
        value = evaluate(expression);
    }
    arguments.values.push_back(std::move(value));
    arguments.origins.push_back(std::move(origin));
}

Value Interpreter::call(const Callee& callee, std::string_view name, CallArguments& arguments)
{
    if (callee.procedure) return callProcedure(*callee.procedure, arguments);
    if (callee.builtin) return callBuiltin(*callee.builtin, arguments.values, library_);
    if (!callee.function) {
        throw scriptError(ErrorNumber::typeMismatch,
                          std::string(name) + " is no procedure, array or object");
    }
    const Position here = position_;
    Value result = (*callee.function)(arguments.values);
    position_ = here;
    return result;
}

Value Interpreter::callProcedure(const Procedure& procedure, CallArguments& arguments)
{
    if (arguments.values.size() != procedure.parameters.size()) {
        throw scriptError(ErrorNumber::wrongArgumentCount, procedure.name);
    }
    if (calls_ >= deepestCalls || stackIsLow()) throw scriptError(outOfStack, procedure.name);
    const Position here = position_;
    Frame frame(*this, procedure.unit, &procedure);
    for (std::size_t i = 0; i < arguments.values.size(); ++i) {
        const auto& [name, byValue] = procedure.parameters[i];
        const Origin& origin = arguments.origins[i];
        if (!byValue && origin.cell && !origin.isElement) {
            frame.locals.alias(name, origin.cell);
        } else {
            frame.locals.declare(name).value = std::move(arguments.values[i]);
        }
    }
    if (procedure.isFunction) frame.locals.declare(procedure.name);
    declare(frame.locals, procedure.declared);
    const struct Count {
        explicit Count(int& calls) : calls_(calls) { ++calls_; }
        Count(const Count&) = delete;
        Count& operator=(const Count&) = delete;
        ~Count() { --calls_; }
        int& calls_;
    } counted(calls_);
    run(procedure.body);
    position_ = here;
    for (std::size_t i = 0; i < arguments.origins.size(); ++i) {
        const auto& [name, byValue] = procedure.parameters[i];
        if (!byValue && arguments.origins[i].isElement) {
            writeBack(arguments.origins[i], std::move(frame.locals.find(name)->value));
        }
    }
    return procedure.isFunction ? std::move(frame.locals.find(procedure.name)->value) : Value();
}

Value Interpreter::invoke(const Ref<Object>& object, std::string_view member, CallKind kind,
                          CallArguments& arguments)
{
    const Position here = position_;
    std::vector<Value> passed(arguments.values.size());
    for (std::size_t i = 0; i < passed.size(); ++i) {
        if (arguments.origins[i].cell) passed[i] = arguments.values[i];
    }
    if (stackIsLow()) throw scriptError(outOfStack, member);
    Value result;
    if (!member.empty()) {
        result = qmevents::invokeNamed(object, member, kind, arguments.values);
    } else if (object) {
        result = object->invoke(qmevents::defaultMember, kind, arguments.values);
    } else {
        throw scriptError(ErrorNumber::objectNotSet);
    }
    position_ = here;
    for (std::size_t i = 0; i < passed.size(); ++i) {
        if (!arguments.origins[i].cell || isUnchanged(passed[i], arguments.values[i])) continue;
        writeBack(arguments.origins[i], std::move(arguments.values[i]));
    }
    return result;
}

void Interpreter::writeBack(const Origin& origin, Value value)
{
    Value& held = origin.cell->value;
    if (!origin.isElement) {
        std::swap(held, value);
        return;
    }
    // The array may have been replaced meanwhile by what was called.
    if (!held.is(ValueKind::array)) return;
    checkNesting(value);
    std::swap(writableElement(held, origin.indices), value);
}

} // namespace refhost::script
