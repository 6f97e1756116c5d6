#include "host/web/table_reader.h"

#include <utility>

#include "automation/error.h"
#include "automation/object.h"
#include "host/web/wire_value.h"

namespace refhost {

using qmevents::CallKind;
using qmevents::Error;
using qmevents::ErrorNumber;
using qmevents::Object;
using qmevents::Ref;
using qmevents::Value;

namespace {

Object& objectIn(const Value& value, const std::string& path)
{
    const Ref<Object> object = qmevents::toObject(value);
    if (!object) throw Error::with(ErrorNumber::objectNotSet, path);
    return *object;
}

} // namespace

Column::Column(std::string_view path) : path_(path)
{
    constexpr std::size_t mostParts = 8;
    while (true) {
        const std::size_t dot = path.find('.');
        const std::string_view name = path.substr(0, dot);
        if (name.empty() || parts_.size() == mostParts)
            throw BadRequest("\"" + path_ + "\" names no property");
        parts_.push_back({std::string(name)});
        if (dot == std::string_view::npos) break;
        path.remove_prefix(dot + 1);
    }
}

Value Column::readPart(Part& part, Object& object)
{
    const auto* described = dynamic_cast<const qmevents::DescribedObject*>(&object);
    const qmevents::Members* members = described ? &described->members() : nullptr;
    if (!members || members != part.boundTo) {
        part.id = object.memberId(part.name);
        part.boundTo = members;
    }
    if (part.id == qmevents::unknownMember) {
        throw Error::with(ErrorNumber::noSuchMember,
                          std::string(object.className()) + "." + part.name);
    }
    return object.invoke(part.id, CallKind::get, {});
}

Value Column::read(const Ref<Object>& object)
{
    Value value = object;
    for (Part& part : parts_) {
        if (!value.isObject())
            throw Error::with(ErrorNumber::objectRequired, path_ + ": " + part.name);
        if (value.isNothing()) return qmevents::Null{};
        value = readPart(part, *value.object());
    }
    return value;
}

void Column::write(const Ref<Object>& object, Value value)
{
    Value owner = object;
    for (std::size_t i = 0; i + 1 < parts_.size(); ++i)
        owner = readPart(parts_[i], objectIn(owner, path_));
    const CallKind kind = value.isObject() ? CallKind::putReference : CallKind::put;
    invokeNamed(qmevents::toObject(owner), parts_.back().name, kind, std::span<Value>(&value, 1));
}

std::vector<Value> itemsOf(const Value& list, const std::string& member)
{
    if (list.is(qmevents::ValueKind::array))
        return list.array() ? list.array()->items : std::vector<Value>();
    const Ref<Object> collection = qmevents::toObject(list);
    if (!member.empty()) return itemsOf(qmevents::get(collection, member), {});
    if (!collection) throw Error::with(ErrorNumber::objectNotSet, "the list");
    std::vector<Value> items;
    const auto walk = collection->enumerate();
    for (Value item; walk->next(item);) items.push_back(item);
    return items;
}

} // namespace refhost
