#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/script/arrays.h"
#include "host/script/err_object.h"
#include "host/script/library.h"
#include "host/script/scope.h"
#include "host/script/script_engine.h"
#include "host/script/syntax.h"

namespace refhost::script {

/// A run that its limits ended. Not an Error, so that no script can step over it.
struct Stopped {
    const char* reason;
};

/// Where a script is: what its failures are reported with.
struct Position {
    const Unit* unit = nullptr;
    int line = 0;
};

/// Runs syntax trees. Values and names live here; the engine in front of it keeps errors.
class Interpreter {
public:
    Interpreter();
    Interpreter(const Interpreter&) = delete;
    Interpreter& operator=(const Interpreter&) = delete;

    void addObject(const std::string& name, qmevents::Ref<qmevents::Object> object);
    void addFunction(const std::string& name, ScriptEngine::Function function);
    void setLimits(const ScriptLimits& limits);

    void run(std::unique_ptr<const Unit> unit);
    qmevents::Value evaluateOnly(const Expression& expression);
    qmevents::Value callByName(std::string_view procedure, std::span<qmevents::Value> arguments);

    bool isRunning() const { return frame_ != nullptr; }
    /// Where the last run stopped.
    const Position& position() const { return position_; }

private:
    /// What a block ended with.
    enum class Flow { next, exitFor, exitDo, exitProcedure };

    /// One call of a procedure, or the script itself.
    class Frame {
    public:
        Frame(Interpreter& interpreter, const Unit* ofUnit, const Procedure* ofProcedure = nullptr);
        Frame(const Frame&) = delete;
        Frame& operator=(const Frame&) = delete;
        ~Frame() { interpreter_.frame_ = caller_; }

        Scope locals;
        const Unit* const unit;           ///< Null for a single expression.
        const Procedure* const procedure; ///< Null for the script itself.
        bool resumeNext = false;
        std::vector<qmevents::Ref<qmevents::Object>> withObjects;

    private:
        Interpreter& interpreter_;
        Frame* caller_;
    };

    /// Where the value of an argument came from, so that a result can go back to it.
    struct Origin {
        Cell* cell = nullptr; ///< Null for a value that came from no variable.
        Indices indices;      ///< Of an element of the array in the cell.
        bool isElement = false;
    };
    struct CallArguments {
        std::vector<qmevents::Value> values;
        std::vector<Origin> origins; ///< One for each value.
    };

    /// What a name can mean where it is called.
    struct Callee {
        const Procedure* procedure = nullptr;
        const ScriptEngine::Function* function = nullptr;
        const Builtin* builtin = nullptr;
        explicit operator bool() const { return procedure || function || builtin; }
    };

    // Statements
    Flow run(const Block& block);
    Flow execute(const Statement& statement);
    Flow execute(const Assignment& node);
    Flow execute(const CallStatement& node);
    Flow execute(const ReDim& node);
    Flow execute(const Erase& node);
    Flow execute(const If& node);
    Flow execute(const ForRange& node);
    Flow execute(const ForEach& node);
    Flow execute(const Loop& node);
    Flow execute(const Select& node);
    Flow execute(const With& node);
    Flow execute(const Exit& node);
    Flow execute(const OnError& node);
    void countStep();
    bool holds(const Expression& condition);
    bool isIn(const Expression& value, const Operand& subject);
    void assign(const Expression& target, qmevents::Value value, bool byReference);
    void assignIndexed(const Indexed& target, qmevents::Value value, bool byReference);
    void assignMember(const MemberOf& target, CallArguments indices, qmevents::Value value,
                      bool byReference);

    // Expressions
    qmevents::Value evaluate(const Expression& expression);
    qmevents::Value evaluate(const Literal& node) { return node.value; }
    qmevents::Value evaluate(const Name& node);
    qmevents::Value evaluate(const MemberOf& node);
    qmevents::Value evaluate(const Indexed& node);
    qmevents::Value evaluate(const Grouped& node) { return evaluate(*node.inner); }
    qmevents::Value evaluate(const Unary& node);
    qmevents::Value evaluate(const Chain& node);
    qmevents::Value evaluatePlain(const Expression& expression);
    Operand evaluateOperand(const Expression& expression);
    qmevents::Ref<qmevents::Object> objectOf(const MemberOf& node);
    qmevents::Value indexed(const qmevents::Value& value, CallArguments& arguments);

    // Names and calls
    Cell* findCell(std::string_view name);
    /// The variable called `name`, to be written: made when there is none, refused (501) for what
    /// is no variable.
    Cell& variable(const std::string& name);
    Scope& scope() { return frame_->procedure ? frame_->locals : globals_; }
    Callee findCallee(std::string_view name) const;
    const qmevents::Value* findFixedValue(std::string_view name) const;
    bool isOwnName(std::string_view name) const; ///< Of the function that is running.
    CallArguments prepare(const Expressions& expressions);
    void prepare(const Expression& expression, CallArguments& arguments);
    qmevents::Value call(const Callee& callee, std::string_view name, CallArguments& arguments);
    qmevents::Value callProcedure(const Procedure& procedure, CallArguments& arguments);
    /// Invokes a member, the default one when `member` is empty.
    qmevents::Value invoke(const qmevents::Ref<qmevents::Object>& object, std::string_view member,
                           qmevents::CallKind kind, CallArguments& arguments);
    void writeBack(const Origin& origin, qmevents::Value value);
    void declare(Scope& scope, const std::vector<Declared>& declared);

    template <typename T>
    using ByName =
        std::unordered_map<std::string, T, qmevents::text::NameHash, qmevents::text::NameEqual>;

    Scope globals_;
    ByName<qmevents::Value> objects_;
    ByName<ScriptEngine::Function> functions_;
    ByName<const Procedure*> procedures_;
    std::vector<std::unique_ptr<const Unit>> units_;
    qmevents::Ref<ErrObject> err_;
    LibraryState library_;
    Frame* frame_ = nullptr;
    Position position_;
    ScriptLimits limits_;
    std::int64_t stepsLeft_ = 0;
    std::chrono::steady_clock::time_point deadline_;
    int calls_ = 0;
};

} // namespace refhost::script
