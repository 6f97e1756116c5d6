#include "core/security_handler.h"

#include "core/host_zones.h"

namespace qmevents {

const Members& SecurityHandler::members() const
{
    static const Members table =
        answererMembers<SecurityHandler>("Answers the security zones event.");
    return table;
}

void SecurityHandler::EventHandler(const Ref<Object>& Ev)
{
    const HostEvent event(Ev);
    if (event.key() != "security-zones-load") return;
    const auto zone =
        SecurityZones(event.data())
            .addZone("events", "Events", "Fundraising events and all that belongs to them.");
    zone.addRight("events/view", "See events", "See events, their details, lists and reports.");
    zone.addRight("events/edit", "Enter and change events",
                  "Enter, change and copy events, and what belongs to them: activities, "
                  "participants, reservations, expenses and tasks.");
    zone.addRight("events/delete", "Delete events", "Delete a whole event.");
    zone.addRight("events/settings", "Change the lists of events",
                  "Change categories, statuses, locations, coordinators and invitation groups.");
}

} // namespace qmevents
