#include "core/setting_handler.h"

#include <algorithm>
#include <span>

#include "core/host.h"
#include "core/host_deletion.h"

namespace qmevents {
namespace {

constexpr SettingEntry ownEntry{
    .key = "events-settings",
    .name = "Events",
    .description = "Categories, statuses, locations, coordinators and invitation groups of events, "
                   "and what a user sees first.",
    .script = "App.Shell.Navigate \"obsidian://events/events-settings\"",
    .right = "events/settings"};

constexpr const char* gifts[] = {"events_event_info", "events_event_activities"};
constexpr const char* tasks[] = {"events_event_tasks"};

/// An attribute of the host's: its table, the column that refers to it, and the tables with that.
struct Attribute {
    std::string_view table;
    const char* column;
    std::span<const char* const> referringTables;
};
constexpr Attribute attributes[] = {{"donor_funds", "FKFundId", gifts},
                                    {"donor_campaigns", "FKCampaignId", gifts},
                                    {"donor_list_gifts_sources", "FKAppealId", gifts},
                                    {"donor_list_assignedto", "FKAssignedToId", tasks}};

// One statement a table, all or nothing. Both databases take the same texts.
void clearReferences(const DeletionData& deletion)
{
    const std::int32_t id = deletion.entityId();
    const std::string table = deletion.entityType();
    const auto* attribute = std::ranges::find(attributes, table, &Attribute::table);
    // 0 stands for none, and to others nothing refers.
    if (id < 1 || attribute == std::end(attributes)) return;
    const std::string column = attribute->column;
    const std::string deleted = literal(id, Kind::number);
    const Document document = host().document();
    Transaction transaction(document);
    for (const std::string referring : attribute->referringTables) {
        document.execute("UPDATE " + referring + " SET " + column + " = 0 WHERE " + column + " = " +
                         deleted);
    }
    transaction.commit();
}

} // namespace

const Members& SettingHandler::members() const
{
    static const Members table =
        answererMembers<SettingHandler>("Answers settings and attribute events.");
    return table;
}

void SettingHandler::EventHandler(const Ref<Object>& Ev)
{
    const HostEvent event(Ev);
    const std::string key = event.key();
    if (key == "settings-categories") {
        SettingCategories(event.data())
            .add(host().modules().quillmere().settings().newCategory(), ownEntry);
    } else if (key == "attribute-delete") {
        clearReferences(DeletionData(event.data()));
    }
}

} // namespace qmevents
