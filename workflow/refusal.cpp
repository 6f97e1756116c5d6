#include "workflow/refusal.h"

#include "automation/text.h"
#include "core/reporting.h"

namespace qmevents {

void showRefusal(const std::string& reason)
{
    const Host app = host();
    const std::string lines = text::replaceAll(reason, "</br>", lineBreak);
    app.shell().msgBox(lines + lineBreak + "Click OK to continue.", "Request Is Not Valid");
    app.document().forceUpdate();
}

void showRefusalIfExplained(const std::string& reason)
{
    if (!text::trim(reason).empty()) showRefusal(reason);
}

} // namespace qmevents
