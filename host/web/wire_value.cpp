#include "host/web/wire_value.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>

#include "automation/conversions.h"
#include "automation/error.h"

namespace refhost {

using nlohmann::json;
using qmevents::Array;
using qmevents::Currency;
using qmevents::Date;
using qmevents::Value;
using qmevents::ValueKind;

namespace {

constexpr int deepestNesting = 32;

const std::string& textOf(const json& value, const char* what)
{
    if (!value.is_string()) throw BadRequest(std::string(what) + " must be a text");
    return value.get_ref<const std::string&>();
}

Value wrapped(const json& object, const HeldObjects& held)
{
    if (object.size() != 1 && !object.contains("$ref"))
        throw BadRequest("an object is no value; values have one of $ref, $date, $currency");
    if (const auto ref = object.find("$ref"); ref != object.end()) {
        if (!ref->is_number_integer()) throw BadRequest("$ref must be a whole number");
        const auto number = ref->get<std::int64_t>();
        const bool fits = number > 0 && number <= std::numeric_limits<int>::max();
        return {held.at(fits ? static_cast<int>(number) : 0)};
    }
    if (object.contains("$missing")) return qmevents::Missing{};
    if (const auto date = object.find("$date"); date != object.end()) {
        const std::string& text = textOf(*date, "$date");
        const auto parsed = Date::parseIso(text);
        if (!parsed) throw BadRequest("$date is no date: " + text);
        return *parsed;
    }
    if (const auto amount = object.find("$currency"); amount != object.end()) {
        const std::string& text = textOf(*amount, "$currency");
        Currency parsed;
        if (!Currency::parse(text, parsed)) throw BadRequest("$currency is no amount: " + text);
        return parsed;
    }
    throw BadRequest("an object is no value; values have one of $ref, $date, $currency");
}

Value number(const json& value)
{
    if (value.is_number_integer()) {
        // Numbers above the signed range read as negative here; they are doubles below.
        const bool isHuge = value.is_number_unsigned() &&
                            value.get<std::uint64_t>() > std::numeric_limits<std::int32_t>::max();
        const auto whole = isHuge ? 0 : value.get<std::int64_t>();
        if (!isHuge && whole >= std::numeric_limits<std::int32_t>::min())
            return static_cast<std::int32_t>(whole);
    }
    return value.get<double>();
}

template <typename Number>
void appendNumber(std::string& out, Number value)
{
    char digits[32];
    const auto [end, error] = std::to_chars(std::begin(digits), std::end(digits), value);
    out.append(digits, end);
}

std::string amountText(Currency amount)
{
    std::string text = amount.toString();
    const std::size_t point = text.find('.');
    if (point == std::string::npos) return text + ".00";
    if (text.size() - point == 2) text += '0';
    return text;
}

} // namespace

json parseBody(const std::string& body)
{
    const auto refuseDepth = [](int depth, json::parse_event_t, json&) {
        if (depth > deepestNesting) throw BadRequest("the body is nested too deeply");
        return true;
    };
    try {
        json parsed = json::parse(body, refuseDepth);
        if (!parsed.is_object()) throw BadRequest("the body must be a JSON object");
        return parsed;
    } catch (const json::exception&) {
        throw BadRequest("the body is no valid JSON in UTF-8");
    }
}

Value fromWire(const json& value, const HeldObjects& held)
{
    switch (value.type()) {
    case json::value_t::null:
        return {};
    case json::value_t::boolean:
        return Value(value.get<bool>());
    case json::value_t::number_integer:
    case json::value_t::number_unsigned:
    case json::value_t::number_float:
        return number(value);
    case json::value_t::object:
        return wrapped(value, held);
    case json::value_t::string: {
        const auto& text = value.get_ref<const std::string&>();
        if (text.find('\0') != std::string::npos)
            throw BadRequest("a text must not hold the character U+0000");
        return {text};
    }
    case json::value_t::array: {
        std::vector<Value> items;
        items.reserve(value.size());
        for (const json& item : value) items.push_back(fromWire(item, held));
        return {Array::list(std::move(items))};
    }
    default:
        throw BadRequest("a value is missing");
    }
}

void appendText(std::string& out, std::string_view text)
{
    const bool isPlain = std::ranges::all_of(text, [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte >= ' ' && byte < 0x7F && c != '"' && c != '\\';
    });
    if (isPlain)
        out.append(1, '"').append(text).append(1, '"');
    else
        out += json(text).dump(-1, ' ', false, json::error_handler_t::replace);
}

namespace {

// Dimension after dimension, the first one outermost.
void appendArray(std::string& out, const Array& array, std::size_t dimension, std::size_t& next,
                 HeldObjects& held, const HeldObjects::Holder& holder)
{
    out += '[';
    const std::int32_t count =
        dimension < array.dimensions.size() ? array.dimensions[dimension].count : 0;
    for (std::int32_t i = 0; i < count && next < array.items.size(); ++i) {
        if (i > 0) out += ',';
        if (dimension + 1 < array.dimensions.size())
            appendArray(out, array, dimension + 1, next, held, holder);
        else
            appendValue(out, array.items[next++], held, holder);
    }
    out += ']';
}

} // namespace

void appendValue(std::string& out, const Value& value, HeldObjects& held,
                 const HeldObjects::Holder& holder)
{
    switch (value.kind()) {
    case ValueKind::empty:
    case ValueKind::null:
        out += "null";
        break;
    case ValueKind::missing:
        out += R"({"$missing":true})";
        break;
    case ValueKind::boolean:
        out += value.as<bool>() ? "true" : "false";
        break;
    case ValueKind::int16:
        appendNumber(out, value.as<std::int16_t>());
        break;
    case ValueKind::int32:
        appendNumber(out, value.as<std::int32_t>());
        break;
    case ValueKind::real:
        if (std::isfinite(value.as<double>()))
            appendNumber(out, value.as<double>());
        else
            out += "null";
        break;
    case ValueKind::currency:
        out.append(R"({"$currency":")").append(amountText(value.as<Currency>())).append("\"}");
        break;
    case ValueKind::date: {
        std::string text = value.as<Date>().iso();
        std::ranges::replace(text, ' ', 'T');
        out.append(R"({"$date":")").append(text).append("\"}");
        break;
    }
    case ValueKind::text:
        appendText(out, value.text());
        break;
    case ValueKind::object:
        if (value.isNothing()) {
            out += "null";
            break;
        }
        out += R"({"$ref":)";
        appendNumber(out, held.hold(value.object(), holder));
        out += R"(,"$class":)";
        appendText(out, value.object()->className());
        out += '}';
        break;
    case ValueKind::array: {
        std::size_t next = 0;
        if (value.array())
            appendArray(out, *value.array(), 0, next, held, holder);
        else
            out += "[]";
        break;
    }
    }
}

} // namespace refhost
