#include "handlers/mailing_handler.h"

namespace qmevents {

const Members& MailingHandler::members() const
{
    static const Members table =
        answererMembers<MailingHandler>("Answers mailings' requests for fields.");
    return table;
}

} // namespace qmevents
