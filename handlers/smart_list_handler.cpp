#include "handlers/smart_list_handler.h"

namespace qmevents {

const Members& SmartListHandler::members() const
{
    static const Members table = answererMembers<SmartListHandler>("Answers the smart lists.");
    return table;
}

} // namespace qmevents
