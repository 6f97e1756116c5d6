#pragma once

#include <string>

namespace qmevents {

/// Tells the user why an action is refused ("Request Is Not Valid") and has the document refreshed.
void showRefusal(const std::string& reason);
/// The same unless the reason is blank: such a refusal is silent.
void showRefusalIfExplained(const std::string& reason);

} // namespace qmevents
