#include "host/cli/json_text.h"

#include <limits>
#include <ostream>

#include "automation/conversions.h"
#include "automation/error.h"
#include "automation/object.h"

namespace refhost {
namespace {

using qmevents::Currency;
using qmevents::Date;
using qmevents::ErrorNumber;
using qmevents::Value;
using qmevents::ValueKind;

std::string isoText(Date date)
{
    std::string text = date.iso();
    text[10] = 'T';
    return text;
}

Json objectJson(const qmevents::Ref<qmevents::Object>& object)
{
    if (!object) return nullptr;
    Json json{{"$class", object->className()}};
    for (const char* name : {"Id", "Key", "Count"}) {
        if (object->memberId(name) == qmevents::unknownMember) continue;
        try {
            const Value value = qmevents::get(object, name);
            if (!value.isObject()) json[name] = toJson(value);
        } catch (const qmevents::Error&) {
            // The object is shown as far as it lets itself be seen.
        }
    }
    return json;
}

Json arrayJson(const qmevents::Array& array)
{
    Json json = Json::array();
    for (const Value& item : array.items) json.push_back(toJson(item));
    return json;
}

} // namespace

Json toJson(const Value& value)
{
    switch (value.kind()) {
    case ValueKind::empty:
    case ValueKind::null:
        return nullptr;
    case ValueKind::missing:
        return {{"$missing", true}};
    case ValueKind::boolean:
        return value.as<bool>();
    case ValueKind::int16:
        return value.as<std::int16_t>();
    case ValueKind::int32:
        return value.as<std::int32_t>();
    case ValueKind::real:
        return value.as<double>();
    case ValueKind::currency:
        return {{"$currency", value.as<Currency>().toString()}};
    case ValueKind::date:
        return {{"$date", isoText(value.as<Date>())}};
    case ValueKind::text:
        return value.text();
    case ValueKind::object:
        return objectJson(value.object());
    case ValueKind::array:
        return arrayJson(*value.array());
    }
    return nullptr;
}

Value fromJson(const Json& json)
{
    if (json.is_null()) return qmevents::Null{};
    if (json.is_boolean()) return json.get<bool>();
    if (json.is_string()) return json.get<std::string>();
    if (json.is_number()) {
        const auto number = json.get<double>();
        constexpr double most = std::numeric_limits<std::int32_t>::max();
        const bool whole = json.is_number_integer() && number >= -most && number <= most;
        return whole ? Value(json.get<std::int32_t>()) : Value(number);
    }
    if (json.is_array()) {
        std::vector<Value> items;
        for (const Json& item : json) items.push_back(fromJson(item));
        return qmevents::Array::list(std::move(items));
    }
    if (json.contains("$currency") && json["$currency"].is_string()) {
        return qmevents::toCurrency(Value(json["$currency"].get<std::string>()));
    }
    if (json.contains("$date") && json["$date"].is_string()) {
        if (const auto date = Date::parseIso(json["$date"].get<std::string>())) return *date;
    }
    throw qmevents::Error::with(ErrorNumber::typeMismatch,
                                "no value can be made of " + json.dump());
}

void JsonLines::write(const Json& line)
{
    out_ << line.dump(-1, ' ', false, Json::error_handler_t::replace) << '\n';
}

} // namespace refhost
