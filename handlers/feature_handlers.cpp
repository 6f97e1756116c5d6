#include "handlers/feature_handlers.h"

namespace qmevents {

const Members& DonorHandler::members() const
{
    static const Members table =
        answererMembers<DonorHandler>("Answers the donor details page and donor deletion.");
    return table;
}

const Members& ReportHandler::members() const
{
    static const Members table =
        answererMembers<ReportHandler>("Answers the host's requests for reports.");
    return table;
}

const Members& SmartListHandler::members() const
{
    static const Members table = answererMembers<SmartListHandler>("Answers the smart lists.");
    return table;
}

const Members& MailingHandler::members() const
{
    static const Members table =
        answererMembers<MailingHandler>("Answers mailings' requests for fields.");
    return table;
}

} // namespace qmevents
