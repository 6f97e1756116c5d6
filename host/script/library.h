#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "automation/conversions.h"
#include "automation/value.h"

namespace refhost::script {

/// What a script's built-in functions remember between calls.
struct LibraryState {
    std::uint32_t random = 0x50000; ///< The same numbers in each run, unless Randomize is called.
    double lastRandom = 0;
};

/// The arguments of one call of a built-in function. Conversion failures name no argument: the
/// line of the script does.
class Arguments {
public:
    Arguments(std::span<const qmevents::Value> values, LibraryState& state)
        : values_(values), state_(state)
    {
    }

    std::size_t size() const { return values_.size(); }
    bool given(std::size_t index) const
    {
        return index < values_.size() && !values_[index].isMissing();
    }
    const qmevents::Value& operator[](std::size_t index) const { return values_[index]; }
    const qmevents::Value& last() const { return values_.back(); }

    std::string text(std::size_t index) const { return qmevents::toText(values_[index]); }
    std::string text(std::size_t index, std::string_view omitted) const
    {
        return given(index) ? text(index) : std::string(omitted);
    }
    double number(std::size_t index) const { return qmevents::toDouble(values_[index]); }
    std::int32_t whole(std::size_t index) const { return qmevents::toInt32(values_[index]); }
    std::int32_t whole(std::size_t index, std::int32_t omitted) const
    {
        return given(index) ? whole(index) : omitted;
    }
    /// A whole number that counts something: error 5 below `least`.
    std::size_t count(std::size_t index, std::int32_t least = 0) const;
    bool flag(std::size_t index, bool omitted) const
    {
        return given(index) ? qmevents::toBool(values_[index]) : omitted;
    }
    LibraryState& state() const { return state_; }

private:
    std::span<const qmevents::Value> values_;
    LibraryState& state_;
};

/// A function that every script can call.
struct Builtin {
    enum class Takes : std::uint8_t {
        values,   ///< Objects count as their default members' values.
        nullable, ///< The same, and the result is Null when an argument is Null.
        objects,  ///< Arguments as they are.
    };
    std::string_view name;
    std::size_t least = 0, most = 0; ///< Number of arguments.
    Takes takes = Takes::values;
    qmevents::Value (*function)(const Arguments&) = nullptr;
};

/// The built-in function called `name`, or null.
const Builtin* findBuiltin(std::string_view name);
/// The built-in constant called `name`, or null.
const qmevents::Value* findConstant(std::string_view name);

qmevents::Value callBuiltin(const Builtin& builtin, std::span<qmevents::Value> arguments,
                            LibraryState& state);

std::span<const Builtin> textFunctions();
std::span<const Builtin> numberFunctions();
std::span<const Builtin> dateFunctions();
std::span<const Builtin> valueFunctions();
std::span<const Builtin> formatFunctions();

} // namespace refhost::script
