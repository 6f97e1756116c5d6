#pragma once

#include <concepts>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "automation/conversions.h"
#include "automation/error.h"
#include "automation/members.h"

// How the arguments, results and fields of a described class become typed C++ values and back.
namespace qmevents {

/// The name of an enumeration in the reference and the type library; specialised beside each.
template <typename E>
struct EnumerationName;

/// A class with a public name.
template <typename T>
concept Named = requires
{
    T::ClassName;
};

namespace detail {

template <typename T>
struct IsRef : std::false_type {
};
template <typename T>
struct IsRef<Ref<T>> : std::true_type {
};
template <typename T>
struct IsOptional : std::false_type {
};
template <typename T>
struct IsOptional<std::optional<T>> : std::true_type {
};

/// Fields that mark their record dirty say so and tell what they hold.
template <typename F>
concept TrackedField = requires
{
    typename F::TrackedValue;
};
template <typename F>
struct FieldValue {
    using type = F;
};
template <TrackedField F>
struct FieldValue<F> {
    using type = typename F::TrackedValue;
};

template <typename T>
MemberType typeOf()
{
    using Tag = MemberType::Tag;
    if constexpr (std::is_void_v<T>)
        return {Tag::none, {}};
    else if constexpr (std::is_same_v<T, bool>)
        return {Tag::boolean, {}};
    else if constexpr (std::is_same_v<T, std::int16_t>)
        return {Tag::int16, {}};
    else if constexpr (std::is_same_v<T, std::int32_t>)
        return {Tag::int32, {}};
    else if constexpr (std::is_same_v<T, double>)
        return {Tag::real, {}};
    else if constexpr (std::is_same_v<T, Currency>)
        return {Tag::currency, {}};
    else if constexpr (std::is_same_v<T, Date>)
        return {Tag::date, {}};
    else if constexpr (std::is_same_v<T, std::string>)
        return {Tag::text, {}};
    else if constexpr (std::is_enum_v<T>)
        return {Tag::enumeration, EnumerationName<T>::value};
    else if constexpr (IsOptional<T>::value)
        return typeOf<typename T::value_type>();
    else if constexpr (IsRef<T>::value) {
        if constexpr (Named<typename T::Target>) {
            return {Tag::object, std::string(T::Target::ClassName)};
        } else {
            return {Tag::object, {}};
        }
    } else
        return {Tag::variant, {}};
}

/// `value` as a C++ argument or field of type `T`.
template <typename T>
T fromValue(const Value& value)
{
    if constexpr (IsOptional<T>::value) {
        using Held = typename T::value_type;
        const bool emptyNumber = value.isEmpty() && !std::is_same_v<Held, Value>;
        if (value.isMissing() || emptyNumber) return std::nullopt;
        return fromValue<Held>(value);
    } else if constexpr (std::is_enum_v<T>) {
        return static_cast<T>(toInt32(value));
    } else if constexpr (IsRef<T>::value) {
        const Ref<Object> object = toObject(value);
        auto typed = refCast<typename T::Target>(object);
        if (object && !typed) {
            throw Error::with(ErrorNumber::typeMismatch, std::string(object->className()) +
                                                             " where " + typeOf<T>().name +
                                                             " is needed");
        }
        return typed;
    } else {
        return convertTo<T>(value);
    }
}

template <typename T>
Value asValue(T&& value)
{
    using Plain = std::remove_cvref_t<T>;
    if constexpr (TrackedField<Plain>)
        return Value(value.get());
    else
        return Value(std::forward<T>(value));
}

/// Reruns `convert`, saying in its error which argument it was about.
template <typename Convert>
auto namingArgument(const Members& members, std::string_view member, std::string_view argument,
                    Convert convert)
{
    try {
        return convert();
    } catch (const Error& error) {
        throw Error(error.number(), error.source(),
                    error.description() + ": " +
                        (argument.empty() ? "" : std::string(argument) + " of ") +
                        members.className() + "." + std::string(member));
    }
}

/// A C++ argument made from one value. A pointer is an optional by-reference argument: null when it
/// was not given, else what the operation changed goes back into the value.
template <typename T>
class Argument {
public:
    explicit Argument(Value& value) : converted_(fromValue<T>(value)) {}
    T& pass() { return converted_; }
    void writeBack() {}

private:
    T converted_;
};

template <typename T>
class Argument<T*> {
public:
    explicit Argument(Value& value) : value_(value)
    {
        if (value.isMissing()) return;
        given_ = true;
        if constexpr (std::is_same_v<T, Value>) {
            converted_ = value;
        } else {
            // What comes in only matters where it fits; most callers hand over an empty variable.
            try {
                converted_ = fromValue<T>(value);
            } catch (const Error&) {
                converted_ = T{};
            }
            before_ = converted_;
        }
    }
    T* pass() { return given_ ? &converted_ : nullptr; }
    // A variable that the operation leaves alone keeps what it holds, in its own type.
    void writeBack()
    {
        if (!given_) return;
        if constexpr (!std::is_same_v<T, Value>) {
            if (converted_ == before_) return;
        }
        value_ = asValue(std::move(converted_));
    }

private:
    Value& value_;
    bool given_ = false;
    T converted_{};
    T before_{};
};

template <typename T>
constexpr bool isByReference = std::is_pointer_v<T>;
template <typename T>
using Pointee = std::remove_pointer_t<T>;

} // namespace detail

} // namespace qmevents
