#include "handlers/donor_handler.h"

namespace qmevents {

const Members& DonorHandler::members() const
{
    static const Members table =
        answererMembers<DonorHandler>("Answers the donor details page and donor deletion.");
    return table;
}

} // namespace qmevents
