#include "core/setting_handler.h"

namespace qmevents {

const Members& SettingHandler::members() const
{
    static const Members table =
        answererMembers<SettingHandler>("Answers settings and attribute events.");
    return table;
}

} // namespace qmevents
