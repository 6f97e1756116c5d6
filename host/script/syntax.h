#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "automation/value.h"
#include "host/script/operators.h"

// A script as a tree. The parser makes it, limits its depth, and nothing changes it afterwards.
namespace refhost::script {

struct Expression;
using ExpressionPtr = std::unique_ptr<Expression>;
using Expressions = std::vector<ExpressionPtr>;

struct Literal {
    qmevents::Value value;
};
struct Name {
    std::string name;
};
/// `object.name`; without an object, a member of the object of the With block around it.
struct MemberOf {
    ExpressionPtr object;
    std::string name;
};
/// `target(arguments)`: a call, an array's element, an object's default member. An argument that
/// was left out is null.
struct Indexed {
    ExpressionPtr target;
    Expressions arguments;
};
/// `(inner)`: a value, never a variable that a call could change.
struct Grouped {
    ExpressionPtr inner;
};
struct Unary {
    Operator operation;
    ExpressionPtr operand;
};
/// Operators of one precedence, applied from left to right; flat, as long sums are common.
struct Chain {
    struct Link {
        Operator operation;
        ExpressionPtr operand;
    };
    ExpressionPtr first;
    std::vector<Link> rest;
};

struct Expression {
    std::variant<Literal, Name, MemberOf, Indexed, Grouped, Unary, Chain> node;
    int depth = 1;
};

struct Statement;
using Block = std::vector<Statement>;

struct Assignment {
    ExpressionPtr target;
    ExpressionPtr value;
    bool byReference = false; ///< Set
};
struct CallStatement {
    ExpressionPtr call;
};
struct ReDim {
    struct Item {
        std::string name;
        Expressions bounds;
    };
    bool preserve = false;
    std::vector<Item> items;
};
struct Erase {
    std::vector<std::string> names;
};
struct If {
    struct Branch {
        ExpressionPtr condition;
        Block body;
        int line = 0;
    };
    std::vector<Branch> branches;
    Block otherwise;
};
struct ForRange {
    std::string variable;
    ExpressionPtr from, to, step; ///< No step counts as 1.
    Block body;
};
struct ForEach {
    std::string variable;
    ExpressionPtr collection;
    Block body;
};
struct Loop {
    ExpressionPtr condition; ///< Absent for a loop that only Exit Do leaves.
    bool until = false;
    bool testedAfter = false;
    Block body;
};
struct Select {
    struct Case {
        Expressions values;
        Block body;
    };
    ExpressionPtr subject;
    std::vector<Case> cases;
    Block otherwise;
};
struct With {
    ExpressionPtr object;
    Block body;
};
enum class ExitFrom : std::uint8_t { forLoop, doLoop, procedure };
struct Exit {
    ExitFrom what = ExitFrom::procedure;
};
struct OnError {
    bool resumeNext = false;
};

struct Statement {
    int line = 0;
    std::variant<Assignment, CallStatement, ReDim, Erase, If, ForRange, ForEach, Loop, Select, With,
                 Exit, OnError>
        node;
};

/// A variable or constant of a procedure or of the script; it exists from the start.
struct Declared {
    enum class Kind : std::uint8_t { variable, fixedArray, dynamicArray, constant };
    std::string name;
    Kind kind = Kind::variable;
    std::vector<std::int32_t> bounds; ///< Highest index of each dimension of a fixed array.
    qmevents::Value value;            ///< Of a constant.
};

struct Unit;

struct Procedure {
    struct Parameter {
        std::string name;
        bool byValue = false;
    };
    std::string name;
    bool isFunction = false;
    std::vector<Parameter> parameters;
    std::vector<Declared> declared;
    Block body;
    const Unit* unit = nullptr;
};

/// One text that was added to an engine.
struct Unit {
    std::string text;
    bool optionExplicit = false;
    std::vector<Declared> declared;
    std::vector<std::unique_ptr<const Procedure>> procedures;
    Block body;
};

} // namespace refhost::script
