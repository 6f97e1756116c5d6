#include "model/event_source.h"

#include "core/context.h"

namespace qmevents {

EventSource& EventSource::ofRoot()
{
    const auto store = getObject(Context::current().root(), "EventsManage");
    auto* source = dynamic_cast<EventSource*>(store.get());
    if (!source) {
        throw Error::with(ErrorNumber::typeMismatch,
                          "the Events root's EventsManage is not the add-in's own");
    }
    return *source; // the root keeps its store
}

} // namespace qmevents
