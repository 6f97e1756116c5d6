#pragma once

#include <string>
#include <string_view>

#include "host/shell/front_end.h"

namespace refhost {

/// The browser path of a page of the host: "obsidian://events/event-details?id=5" is
/// "/events/event-details?id=5". Always begins with exactly one slash.
std::string browserPath(std::string_view address);

/// The host's address of a browser path; an address stays as it is and nothing stays empty.
std::string hostAddress(std::string_view path);

/// Where the page of a dialog window is: "/events/dialogs/addevent?window=1".
std::string dialogPath(const DialogWindow& window);

} // namespace refhost
