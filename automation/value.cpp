#include "automation/value.h"

#include "automation/object.h"

namespace qmevents {

std::shared_ptr<Array> Array::list(std::vector<Value> items, std::int32_t lower)
{
    auto array = std::make_shared<Array>();
    array->dimensions.push_back({lower, static_cast<std::int32_t>(items.size())});
    array->items = std::move(items);
    return array;
}

bool Value::isNumber() const
{
    return kind() >= ValueKind::boolean && kind() <= ValueKind::currency;
}

std::string typeName(const Value& value)
{
    switch (value.kind()) {
    case ValueKind::empty:
        return "Empty";
    case ValueKind::null:
        return "Null";
    case ValueKind::missing:
        return "Error";
    case ValueKind::boolean:
        return "Boolean";
    case ValueKind::int16:
        return "Integer";
    case ValueKind::int32:
        return "Long";
    case ValueKind::real:
        return "Double";
    case ValueKind::currency:
        return "Currency";
    case ValueKind::date:
        return "Date";
    case ValueKind::text:
        return "String";
    case ValueKind::object:
        return value.object() ? std::string(value.object()->className()) : "Nothing";
    case ValueKind::array:
        return "Variant()";
    }
    return {};
}

} // namespace qmevents
