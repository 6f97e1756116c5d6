#include "host/script/operators.h"

#include <cmath>
#include <compare>
#include <limits>
#include <optional>

#include "automation/conversions.h"
#include "automation/object.h"
#include "automation/text.h"
#include "host/script/script_error.h"

namespace refhost::script {
namespace {

using qmevents::Currency;
using qmevents::Date;
using qmevents::ErrorNumber;
using qmevents::Value;
using qmevents::ValueKind;

bool isWhole(const Value& value)
{
    return value.isEmpty() || value.is(ValueKind::boolean) || value.is(ValueKind::int16) ||
           value.is(ValueKind::int32);
}
bool isShort(const Value& value) { return isWhole(value) && !value.is(ValueKind::int32); }

Value real(double number)
{
    if (!std::isfinite(number)) throw scriptError(ErrorNumber::overflow);
    return number;
}

// A whole number in the narrowest of the kinds that `atLeast` and its size allow.
Value whole(std::int64_t number, ValueKind atLeast)
{
    if (atLeast == ValueKind::int16 && number >= std::numeric_limits<std::int16_t>::min() &&
        number <= std::numeric_limits<std::int16_t>::max()) {
        return static_cast<std::int16_t>(number);
    }
    if (number >= std::numeric_limits<std::int32_t>::min() &&
        number <= std::numeric_limits<std::int32_t>::max()) {
        return static_cast<std::int32_t>(number);
    }
    return static_cast<double>(number);
}

ValueKind widerKind(const Value& left, const Value& right)
{
    return isShort(left) && isShort(right) ? ValueKind::int16 : ValueKind::int32;
}

Value date(double serial) { return Date::fromSerial(serial); }

// Days later or earlier, exact to the second like all dates.
Value shifted(const Value& from, double days) { return qmevents::toDate(from).plusDays(days); }

Value added(Value left, const Value& right)
{
    const bool texts = (left.isText() || left.isEmpty()) && (right.isText() || right.isEmpty());
    if (texts && !(left.isEmpty() && right.isEmpty())) {
        return applyBinary(Operator::join, {std::move(left)}, {right});
    }
    if (left.is(ValueKind::date)) return shifted(left, qmevents::toDouble(right));
    if (right.is(ValueKind::date)) return shifted(right, qmevents::toDouble(left));
    if (left.is(ValueKind::currency) || right.is(ValueKind::currency)) {
        return qmevents::toCurrency(left) + qmevents::toCurrency(right);
    }
    if (isWhole(left) && isWhole(right)) {
        return whole(std::int64_t{qmevents::toInt32(left)} + qmevents::toInt32(right),
                     widerKind(left, right));
    }
    return real(qmevents::toDouble(left) + qmevents::toDouble(right));
}

Value subtracted(const Value& left, const Value& right)
{
    if (left.is(ValueKind::date) && right.is(ValueKind::date)) {
        return left.as<Date>().serial() - right.as<Date>().serial();
    }
    if (left.is(ValueKind::date)) return shifted(left, -qmevents::toDouble(right));
    if (right.is(ValueKind::date)) {
        return date(qmevents::toDouble(left) - qmevents::toDouble(right));
    }
    if (left.is(ValueKind::currency) || right.is(ValueKind::currency)) {
        return qmevents::toCurrency(left) - qmevents::toCurrency(right);
    }
    if (isWhole(left) && isWhole(right)) {
        return whole(std::int64_t{qmevents::toInt32(left)} - qmevents::toInt32(right),
                     widerKind(left, right));
    }
    return real(qmevents::toDouble(left) - qmevents::toDouble(right));
}

Value multiplied(const Value& left, const Value& right)
{
    const auto isMoney = [](const Value& value) { return value.is(ValueKind::currency); };
    if ((isMoney(left) || isWhole(left)) && (isMoney(right) || isWhole(right))) {
        if (isMoney(left) || isMoney(right)) {
            return qmevents::toCurrency(left) * qmevents::toCurrency(right);
        }
        return whole(std::int64_t{qmevents::toInt32(left)} * qmevents::toInt32(right),
                     widerKind(left, right));
    }
    return real(qmevents::toDouble(left) * qmevents::toDouble(right));
}

Value divided(const Value& left, const Value& right)
{
    const double dividend = qmevents::toDouble(left);
    const double divisor = qmevents::toDouble(right);
    if (divisor == 0) {
        throw scriptError(dividend == 0 ? ErrorNumber::overflow : ErrorNumber::divisionByZero);
    }
    return real(dividend / divisor);
}

Value dividedWhole(Operator operation, const Value& left, const Value& right)
{
    const std::int64_t dividend = qmevents::toInt32(left);
    const std::int64_t divisor = qmevents::toInt32(right);
    if (divisor == 0) throw scriptError(ErrorNumber::divisionByZero);
    return whole(operation == Operator::modulo ? dividend % divisor : dividend / divisor,
                 widerKind(left, right));
}

Value raised(const Value& left, const Value& right)
{
    const double base = qmevents::toDouble(left);
    const double exponent = qmevents::toDouble(right);
    if ((base == 0 && exponent < 0) || (base < 0 && exponent != std::trunc(exponent))) {
        throw scriptError(ErrorNumber::invalidCall);
    }
    return real(std::pow(base, exponent));
}

Value joined(Value left, const Value& right)
{
    if (left.isNull() && right.isNull()) return qmevents::Null{};
    std::string result = left.isText()   ? std::move(std::get<std::string>(left.storage()))
                         : left.isNull() ? std::string()
                                         : qmevents::toText(left);
    if (right.isText()) {
        checkLength(result.size() + right.text().size());
        result += right.text();
    } else if (!right.isNull()) {
        result += qmevents::toText(right);
    }
    return result;
}

std::partial_ordering textOrder(const std::string& left, const std::string& right)
{
    return left.compare(right) <=> 0;
}

std::partial_ordering order(const Operand& left, const Operand& right)
{
    const Value& a = left.value;
    const Value& b = right.value;
    if (a.isText() && b.isText()) return textOrder(a.text(), b.text());
    if (a.isText() != b.isText() && !a.isEmpty() && !b.isEmpty()) {
        // Of a number and a text, a literal one says how to compare; else numbers come first.
        const bool numberIsLiteral = a.isText() ? right.isLiteral : left.isLiteral;
        const bool textIsLiteral = a.isText() ? left.isLiteral : right.isLiteral;
        if (textIsLiteral) return textOrder(qmevents::toText(a), qmevents::toText(b));
        if (!numberIsLiteral) {
            return a.isText() ? std::partial_ordering::greater : std::partial_ordering::less;
        }
        return qmevents::toDouble(a) <=> qmevents::toDouble(b);
    }
    if (a.isText() || b.isText()) return textOrder(qmevents::toText(a), qmevents::toText(b));
    if (a.is(ValueKind::date) && b.is(ValueKind::date)) return a.as<Date>() <=> b.as<Date>();
    if (a.is(ValueKind::currency) || b.is(ValueKind::currency)) {
        // As money, to four decimals, unless the other number is out of its range.
        const double other = qmevents::toDouble(a.is(ValueKind::currency) ? b : a);
        if (std::abs(other) < 9e14) return qmevents::toCurrency(a) <=> qmevents::toCurrency(b);
    }
    return qmevents::toDouble(a) <=> qmevents::toDouble(b);
}

Value compared(Operator operation, const Operand& left, const Operand& right)
{
    const auto result = order(left, right);
    switch (operation) {
    case Operator::equal:
        return result == 0;
    case Operator::notEqual:
        return result != 0;
    case Operator::less:
        return result < 0;
    case Operator::lessOrEqual:
        return result <= 0;
    case Operator::greater:
        return result > 0;
    default:
        return result >= 0;
    }
}

// The bits of an operand of And and the like, and how wide the result has to be.
struct Bits {
    std::int32_t bits = 0;
    ValueKind kind = ValueKind::int32;
};
std::optional<Bits> bitsOf(const Value& value)
{
    if (value.isNull()) return std::nullopt;
    const bool isWord = value.isText() && (qmevents::text::sameName(value.text(), "True") ||
                                           qmevents::text::sameName(value.text(), "False"));
    if (value.is(ValueKind::boolean) || isWord) {
        return Bits{qmevents::toBool(value) ? -1 : 0, ValueKind::boolean};
    }
    return Bits{qmevents::toInt32(value), isShort(value) ? ValueKind::int16 : ValueKind::int32};
}
Value fromBits(std::int32_t bits, ValueKind kind)
{
    if (kind == ValueKind::boolean) return bits != 0;
    if (kind == ValueKind::int16) return static_cast<std::int16_t>(bits);
    return bits;
}

Value combined(Operator operation, const Value& left, const Value& right)
{
    const auto a = bitsOf(left);
    const auto b = bitsOf(right);
    const auto decides = [](const std::optional<Bits>& known, bool whenZero) {
        return known && (known->bits == 0) == whenZero;
    };
    if (!a || !b) {
        // One known operand may settle the result whatever the other one is.
        const auto& known = a ? a : b;
        const bool settled = (operation == Operator::logicalAnd && decides(known, true)) ||
                             (operation == Operator::logicalOr && decides(known, false)) ||
                             (operation == Operator::implies && decides(b, false));
        if (settled) return fromBits(known->bits, known->kind);
        if (operation == Operator::implies && decides(a, true)) return fromBits(-1, a->kind);
        return qmevents::Null{};
    }
    const ValueKind kind = std::max(a->kind, b->kind);
    switch (operation) {
    case Operator::logicalAnd:
        return fromBits(a->bits & b->bits, kind);
    case Operator::logicalOr:
        return fromBits(a->bits | b->bits, kind);
    case Operator::exclusiveOr:
        return fromBits(a->bits ^ b->bits, kind);
    case Operator::equivalent:
        return fromBits(~(a->bits ^ b->bits), kind);
    default:
        return fromBits(~a->bits | b->bits, kind);
    }
}

Value negated(const Value& value)
{
    switch (value.kind()) {
    case ValueKind::null:
        return value;
    case ValueKind::currency:
        return -value.as<Currency>();
    case ValueKind::date:
        return date(-value.as<Date>().serial());
    default:
        if (isWhole(value))
            return whole(-std::int64_t{qmevents::toInt32(value)},
                         isShort(value) ? ValueKind::int16 : ValueKind::int32);
        return real(-qmevents::toDouble(value));
    }
}

bool sameObject(const Value& left, const Value& right)
{
    if (!left.isObject() || !right.isObject()) {
        throw scriptError(ErrorNumber::objectRequired, typeName(left.isObject() ? right : left));
    }
    return left.object() == right.object();
}

} // namespace

void checkLength(std::size_t length)
{
    if (length > longestText) throw scriptError(ErrorNumber::outOfMemory, "the text is too long");
}

Value plainValue(Value value)
{
    // A default member may be an object with a default member of its own, but not for ever.
    for (int depth = 0; value.isObject(); ++depth) {
        const auto object = value.object();
        if (!object) throw scriptError(ErrorNumber::objectNotSet);
        if (depth == 8) throw scriptError(ErrorNumber::noSuchMember, object->className());
        value = object->invoke(qmevents::defaultMember, qmevents::CallKind::get, {});
    }
    return value;
}

Value applyUnary(Operator operation, Value operand)
{
    const Value value = plainValue(std::move(operand));
    return asScript([&]() -> Value {
        if (operation == Operator::negate) return negated(value);
        if (operation == Operator::plus) {
            return value.isText() ? Value(qmevents::toDouble(value)) : value;
        }
        const auto bits = bitsOf(value);
        return bits ? fromBits(~bits->bits, bits->kind) : Value(qmevents::Null{});
    });
}

Value applyBinary(Operator operation, Operand left, Operand right)
{
    if (operation == Operator::same) return sameObject(left.value, right.value);
    left.value = plainValue(std::move(left.value));
    right.value = plainValue(std::move(right.value));
    return asScript([&]() -> Value {
        if (operation == Operator::join) return joined(std::move(left.value), right.value);
        if (operation >= Operator::logicalAnd) {
            return combined(operation, left.value, right.value);
        }
        if (left.value.isNull() || right.value.isNull()) return qmevents::Null{};
        switch (operation) {
        case Operator::add:
            return added(std::move(left.value), right.value);
        case Operator::subtract:
            return subtracted(left.value, right.value);
        case Operator::multiply:
            return multiplied(left.value, right.value);
        case Operator::divide:
            return divided(left.value, right.value);
        case Operator::divideWhole:
        case Operator::modulo:
            return dividedWhole(operation, left.value, right.value);
        case Operator::power:
            return raised(left.value, right.value);
        default:
            return compared(operation, left, right);
        }
    });
}

} // namespace refhost::script
