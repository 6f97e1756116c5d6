#include "host/security/security_zones.h"

#include "automation/describe.h"

namespace refhost {

using qmevents::describe;

namespace {

struct HostRight {
    const char *zone, *zoneName, *zoneDescription;
    const char *key, *name, *description;
};
constexpr HostRight hostRights[] = {
    {"donations", "Donors and gifts", "What donors gave and pledged.", "donations/view",
     "See gifts", "See amounts that donors gave or pledged, and what events brought in."},
    {"mailings", "Mailings", "Letters to lists of donors.", "mailings/send", "Send mailings",
     "Start mailings, write their letters and delete their lists."},
    {"settings", "Settings", "What all users share.", "settings/edit", "Change settings",
     "Keep funds, campaigns, appeals and assignees, and the start of fiscal years."},
    {"security", "Security", "Who may do what.", "security/edit", "Give rights",
     "Add users, set their passwords, and give and take rights."},
};

} // namespace

const Members& SecurityRight::members() const
{
    static const Members table =
        describe<SecurityRight>("A right that users can be given.")
            .property("Key", &SecurityRight::Key, "Its name, such as \"events/edit\".")
            .property("Name", &SecurityRight::Name, "What the user sees.")
            .property("Description", &SecurityRight::Description, "What it allows.");
    return table;
}

const Members& SecurityZone::members() const
{
    static const Members table =
        describe<SecurityZone>("The rights of one part of the system.")
            .property("Key", &SecurityZone::Key, "The key among the zones.")
            .property("Name", &SecurityZone::Name, "What the user sees.")
            .property("Description", &SecurityZone::Description, "What it is about.")
            .readOnly("Rights", &SecurityZone::Rights, "Its rights, by their keys.")
            .method("GetNewRight", &SecurityZone::GetNewRight, "A new right, to be added.");
    return table;
}

const Members& SecurityZones::members() const
{
    static const Members table =
        describe<SecurityZones>("Where modules add their rights.")
            .readOnly("Zones", &SecurityZones::Zones, "The zones, by their keys.")
            .method("GetNewZone", &SecurityZones::GetNewZone, "A new zone, to be added.")
            .method("GetNewRight", &SecurityZones::GetNewRight, "A new right, to be added.");
    return table;
}

void SecurityZones::addHostZones() const
{
    for (const HostRight& one : hostRights) {
        const auto zone = GetNewZone();
        zone->Key = one.zone;
        zone->Name = one.zoneName;
        zone->Description = one.zoneDescription;
        const auto right = GetNewRight();
        right->Key = one.key;
        right->Name = one.name;
        right->Description = one.description;
        zone->Rights->append(Value(right), one.key);
        Zones->append(Value(zone), one.zone);
    }
}

std::string SecurityZones::spelled(const std::string& right) const
{
    Value item;
    for (const auto walk = Zones->NewEnum(); walk->next(item);) {
        const auto zone = qmevents::refCast<SecurityZone>(item.object());
        if (!zone || !zone->Rights->contains(right)) continue;
        const Value& found = zone->Rights->at(std::string_view(right));
        if (const auto known = qmevents::refCast<SecurityRight>(found.object())) return known->Key;
    }
    return {};
}

} // namespace refhost
