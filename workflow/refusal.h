#pragma once

#include <string>

namespace qmevents {

/// How the message about a refused action ends.
enum class RefusalEnding {
    newLine,  ///< "Click OK to continue." on a line of its own.
    sameLine, ///< Two blanks and the same words right behind the reason.
};

/// Tells the user why an action is refused ("Request Is Not Valid") and has the document refreshed.
void showRefusal(const std::string& reason, RefusalEnding ending = RefusalEnding::newLine);
/// The same unless the reason is blank: such a refusal is silent. Whether it was shown.
bool showRefusalIfExplained(const std::string& reason);

} // namespace qmevents
