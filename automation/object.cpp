#include "automation/object.h"

#include <string>

#include "automation/error.h"

namespace qmevents {

Ref<Enumerator> Object::enumerate()
{
    try {
        const Value result = invoke(enumeratorMember, CallKind::get, {});
        if (result.isObject()) {
            if (auto walk = refCast<Enumerator>(result.object())) return walk;
        }
    } catch (const Error& error) {
        if (!error.is(ErrorNumber::noSuchMember)) throw;
    }
    throw Error::with(ErrorNumber::notACollection, className());
}

Value Enumerator::invoke(MemberId, CallKind, std::span<Value>)
{
    throw Error::with(ErrorNumber::noSuchMember, "an enumerator has no members");
}

Value invokeNamed(const Ref<Object>& object, std::string_view name, CallKind kind,
                  std::span<Value> arguments)
{
    if (!object) throw Error::with(ErrorNumber::objectNotSet, name);
    const MemberId member = object->memberId(name);
    if (member == unknownMember) {
        throw Error::with(ErrorNumber::noSuchMember,
                          std::string(object->className()) + "." + std::string(name));
    }
    return object->invoke(member, kind, arguments);
}

} // namespace qmevents
