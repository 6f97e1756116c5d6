#include "host/document/objects/stored_value.h"

#include "automation/conversions.h"
#include "automation/error.h"

namespace refhost {

using qmevents::Value;
using qmevents::ValueKind;

std::optional<StoredValue> stored(const Value& value)
{
    switch (value.kind()) {
    case ValueKind::empty:
    case ValueKind::null:
    case ValueKind::missing:
        return std::nullopt;
    case ValueKind::boolean:
        return StoredValue{"boolean", qmevents::toText(value)};
    case ValueKind::int16:
    case ValueKind::int32:
        return StoredValue{"integer", qmevents::toText(value)};
    case ValueKind::real:
        return StoredValue{"double", qmevents::toText(value)};
    case ValueKind::currency:
        return StoredValue{"currency", qmevents::toText(value)};
    case ValueKind::date:
        return StoredValue{"date", value.as<qmevents::Date>().iso()};
    case ValueKind::text:
        return StoredValue{"text", value.text()};
    case ValueKind::object:
    case ValueKind::array:
        break;
    }
    throw qmevents::Error::with(qmevents::ErrorNumber::typeMismatch,
                                qmevents::typeName(value) + " cannot be kept");
}

Value restored(const StoredValue& stored)
{
    const Value text(stored.text);
    if (stored.type == "boolean") return Value(qmevents::toBool(text));
    if (stored.type == "integer") return Value(qmevents::toInt32(text));
    if (stored.type == "double") return Value(qmevents::toDouble(text));
    if (stored.type == "currency") return Value(qmevents::toCurrency(text));
    if (stored.type == "date") {
        return Value(qmevents::Date::parseIso(stored.text).value_or(qmevents::Date()));
    }
    return text;
}

} // namespace refhost
