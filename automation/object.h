#pragma once

#include <span>
#include <string_view>
#include <utility>

#include "automation/conversions.h"
#include "automation/object_base.h"
#include "automation/value.h"

namespace qmevents {

/// One walk over a collection.
class Enumerator : public Object {
public:
    /// Gives the next item; false at the end.
    virtual bool next(Value& item) = 0;

    std::string_view className() const override { return "Enumerator"; }
    MemberId memberId(std::string_view) const override { return unknownMember; }
    Value invoke(MemberId member, CallKind kind, std::span<Value> arguments) override;
};

/// Invokes the member called `name`; an unknown one is error 438 naming class and member, and
/// Nothing is error 91.
Value invokeNamed(const Ref<Object>& object, std::string_view name, CallKind kind,
                  std::span<Value> arguments);

template <typename... Arguments>
Value call(const Ref<Object>& object, std::string_view name, Arguments&&... arguments)
{
    Value values[sizeof...(Arguments) + 1] = {Value(std::forward<Arguments>(arguments))...};
    return invokeNamed(object, name, CallKind::method,
                       std::span<Value>(values, sizeof...(Arguments)));
}

template <typename... Arguments>
Value get(const Ref<Object>& object, std::string_view name, Arguments&&... arguments)
{
    Value values[sizeof...(Arguments) + 1] = {Value(std::forward<Arguments>(arguments))...};
    return invokeNamed(object, name, CallKind::get, std::span<Value>(values, sizeof...(Arguments)));
}

/// Assigns the last of `arguments`; those before it are indices. An object is assigned by
/// reference.
template <typename... Arguments>
void put(const Ref<Object>& object, std::string_view name, Arguments&&... arguments)
{
    Value values[] = {Value(std::forward<Arguments>(arguments))...};
    const bool byReference = values[sizeof...(Arguments) - 1].isObject();
    invokeNamed(object, name, byReference ? CallKind::putReference : CallKind::put, values);
}

/// Reads a member that must be an object (424 when it is something else).
template <typename... Arguments>
Ref<Object> getObject(const Ref<Object>& object, std::string_view name, Arguments&&... arguments)
{
    return toObject(get(object, name, std::forward<Arguments>(arguments)...));
}

} // namespace qmevents
