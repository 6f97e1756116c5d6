// Reading what belongs to an event.
#include "automation/error.h"
#include "store/events_manage.h"

namespace qmevents {

Ref<Object> EventsManage::childrenOf(EventChild, std::int32_t)
{
    throw Error::with(ErrorNumber::noSuchMember, "the event's children cannot be read yet");
}

} // namespace qmevents
