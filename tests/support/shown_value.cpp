#include "tests/support/shown_value.h"

#include "automation/conversions.h"
#include "automation/object.h"
#include "tests/support/transport.h"

namespace qmevents::testing {

std::string shown(const Value& value)
{
    switch (value.kind()) {
    case ValueKind::null:
        return "Null";
    case ValueKind::missing:
        return "missing";
    case ValueKind::date:
        return transport.written(value.as<Date>()).iso();
    case ValueKind::object:
        return value.isNothing() ? "Nothing" : typeName(value);
    default:
        return toText(value);
    }
}

} // namespace qmevents::testing
