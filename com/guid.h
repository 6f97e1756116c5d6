#pragma once

#include <string>
#include <string_view>

#include "com/platform.h"
#include "com/text.h"

namespace qmevents::com {

/// An id of com/class_ids.h as registries write it: "{88D769E4-...}".
inline std::wstring braced(std::string_view id) { return L"{" + wide(id) + L"}"; }

/// An id of com/class_ids.h; all zeros for a text that is none.
inline GUID guidOf(std::string_view id)
{
    GUID guid{};
    CLSIDFromString(braced(id).c_str(), &guid);
    return guid;
}

} // namespace qmevents::com
