#include "workflow/refusal.h"

#include "automation/text.h"
#include "core/reporting.h"

namespace qmevents {

void showRefusal(const std::string& reason, RefusalEnding ending)
{
    const Host app = host();
    const std::string lines = text::replaceAll(reason, "</br>", lineBreak);
    // The two endings differ in the host's messages, too.
    const std::string separator = ending == RefusalEnding::newLine ? lineBreak : "  ";
    app.shell().msgBox(lines + separator + "Click OK to continue.", "Request Is Not Valid");
    app.document().forceUpdate();
}

bool showRefusalIfExplained(const std::string& reason)
{
    if (text::trim(reason).empty()) return false;
    showRefusal(reason);
    return true;
}

} // namespace qmevents
