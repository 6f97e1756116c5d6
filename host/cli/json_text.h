#pragma once

#include <iosfwd>

#include <nlohmann/json.hpp>

#include "automation/value.h"

namespace refhost {

using Json = nlohmann::ordered_json;

/// A value for the output: null for Empty, Null and Nothing, numbers, texts, {"$currency":"12.5"},
/// {"$date":"2026-03-07T18:00:00"}, lists, and an object as its class and whatever it has of Id,
/// Key and Count.
Json toJson(const qmevents::Value& value);
/// A value of an answers file; the same forms, objects apart. Error 13 for any other.
qmevents::Value fromJson(const Json& json);

/// Writes one JSON object a line. Bytes that are no valid UTF-8 become replacement characters.
class JsonLines {
public:
    explicit JsonLines(std::ostream& out) : out_(out) {}
    void write(const Json& line);

private:
    std::ostream& out_;
};

} // namespace refhost
