#include "core/security_handler.h"

namespace qmevents {

const Members& SecurityHandler::members() const
{
    static const Members table =
        answererMembers<SecurityHandler>("Answers the security zones event.");
    return table;
}

} // namespace qmevents
