#include "handlers/report_handler.h"

namespace qmevents {

const Members& ReportHandler::members() const
{
    static const Members table =
        answererMembers<ReportHandler>("Answers the host's requests for reports.");
    return table;
}

} // namespace qmevents
