#include "store/refusals.h"

#include "core/reporting.h"

namespace qmevents {
namespace {

bool isAllowed(const char* right, const char* deed, const char* title)
{
    const Host app = host();
    if (app.security().isAllowed(right)) return true;
    // Two blanks behind the full stop are the text's own.
    app.shell().msgBox("Based on your current security settings, you are not authorized to " +
                           std::string(deed) + ".  Contact your database administrator",
                       title);
    return false;
}

} // namespace

bool mayUpdateEvents()
{
    return isAllowed("events/edit", "update an event", "Not Authorized To Update Event");
}

bool mayDeleteEvents()
{
    return isAllowed("events/delete", "delete an event", "Not Authorized To Delete Event");
}

bool maySendMailings()
{
    return isAllowed("mailings/send", "send mailings", "Not Authorized To Send Mailings");
}

void refuse(const std::string& message) { host().shell().errorUser(message); }

bool isGivenTo(bool given, const std::string& method, const std::string& what)
{
    if (!given) {
        host().shell().errorUnexpected("The " + method + " method requires a valid " + what);
    }
    return given;
}

std::string noLongerExists(const std::string& item)
{
    return "The selected " + item + " no longer exists." + lineBreak + deletedByAnotherUser;
}

bool codesExist(std::int32_t fundId, std::int32_t campaignId, std::int32_t appealId)
{
    struct {
        std::int32_t id;
        const char *list, *item;
    } const references[] = {{fundId, "fund", "fund"},
                            {campaignId, "campaign", "campaign"},
                            {appealId, "giftsource", "appeal"}};
    for (const auto& [id, list, item] : references) {
        if (id == 0 || host().provider().hasCode(list, id)) continue;
        refuse(noLongerExists(item));
        return false;
    }
    return true;
}

} // namespace qmevents
