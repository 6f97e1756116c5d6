#pragma once

#include <cstddef>
#include <cstdint>

#include "automation/value.h"

namespace refhost::script {

enum class Operator : std::uint8_t {
    negate,
    plus,
    logicalNot,
    power,
    multiply,
    divide,
    divideWhole,
    modulo,
    add,
    subtract,
    join,
    equal,
    notEqual,
    less,
    lessOrEqual,
    greater,
    greaterOrEqual,
    same, ///< Is
    logicalAnd,
    logicalOr,
    exclusiveOr,
    equivalent,
    implies,
};

/// An operand; one that stands in the script as a literal decides how a number and a text compare.
struct Operand {
    qmevents::Value value;
    bool isLiteral = false;
};

/// What `value` stands for where no object is asked for: an object's default member.
/// Error 438 when it has none, 91 for Nothing.
qmevents::Value plainValue(qmevents::Value value);

qmevents::Value applyUnary(Operator operation, qmevents::Value operand);
/// Whole numbers that overflow become the next wider kind; doubles that overflow are error 6. Null
/// gives Null wherever its value would matter.
qmevents::Value applyBinary(Operator operation, Operand left, Operand right);

/// The longest text, in bytes, and the most array elements that a script may make.
constexpr std::size_t longestText = std::size_t{64} << 20U;
constexpr std::size_t mostElements = std::size_t{4} << 20U;
/// Error 7 when a text of `length` bytes is too long.
void checkLength(std::size_t length);

} // namespace refhost::script
