#pragma once

#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

#include "automation/value.h"
#include "host/web/held_objects.h"

// Values as they travel between the session and its pages: numbers, texts and yes/no as JSON has
// them, null for what is empty, {"$currency":"12.50"}, {"$date":"2026-03-07T18:00:00"},
// {"$missing":true}, objects as {"$ref":7,"$class":"cEvent"}.
namespace refhost {

/// A request that is not what it must be; the text names what is wrong.
class BadRequest : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Reads a request's body. BadRequest when it is no JSON, nested too deeply, or no object.
nlohmann::json parseBody(const std::string& body);

/// The value that `json` stands for. BadRequest when it stands for none.
qmevents::Value fromWire(const nlohmann::json& json, const HeldObjects& held);

/// Appends `text` as a JSON string; bytes that are no UTF-8 are replaced.
void appendText(std::string& out, std::string_view text);
/// Appends `value` as JSON; objects are held for `holder`.
void appendValue(std::string& out, const qmevents::Value& value, HeldObjects& held,
                 const HeldObjects::Holder& holder);

} // namespace refhost
