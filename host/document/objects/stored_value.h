#pragma once

#include <optional>
#include <string>

#include "automation/value.h"

namespace refhost {

/// A value as preferences keep it: the name of its type and a text that does not depend on the
/// locale.
struct StoredValue {
    std::string type;
    std::string text;
};

/// Nothing for an empty or null value; error 13 for an object or an array.
std::optional<StoredValue> stored(const qmevents::Value& value);
qmevents::Value restored(const StoredValue& stored);

} // namespace refhost
