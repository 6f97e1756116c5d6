#include <filesystem>

#include "core/root_objects.h"
#include "tests/handlers/handlers.h"
#include "workflow/dialog_catalog.h"
#include "workflow/workflow_events.h"

namespace qmevents::testing {
namespace {

class Settings : public Handlers {
protected:
    void deleteAttribute(const char* table, std::int32_t id) const
    {
        auto data = puppet("Deletion");
        data->holds("EntityType", table).holds("EntityId", id);
        raise("attribute-delete", data);
    }
};

TEST_F(Settings, AreOpenedOnTheirPage)
{
    quillmere().holds("Settings", maker("GetNewCategory"));
    const auto categories = makeRef<Collection>();
    raise("settings-categories", categories);
    const Log said = saidTo(categories);
    ASSERT_EQ(said.size(), 1u);
    EXPECT_TRUE(said[0].starts_with("Key=events-settings|Name=Events|Description=")) << said[0];
    EXPECT_TRUE(said[0].ends_with("|Script=App.Shell.Navigate \"obsidian://events/events-settings\""
                                  "|Operation=events/settings"));
}

TEST_F(Settings, ClearWhatRefersToADeletedAttribute)
{
    const auto both = [](const std::string& column) {
        return Log{"BeginTrans",
                   "UPDATE events_event_info SET " + column + " = 0 WHERE " + column + " = <3:3>",
                   "UPDATE events_event_activities SET " + column + " = 0 WHERE " + column +
                       " = <3:3>",
                   "CommitTrans"};
    };
    for (const std::int32_t type : {1, 2}) {
        host_.documentType = type;
        for (const auto& [table, statements] :
             {std::pair{"donor_funds", both("FKFundId")},
              {"donor_campaigns", both("FKCampaignId")},
              {"donor_list_gifts_sources", both("FKAppealId")},
              {"donor_list_assignedto",
               Log{"BeginTrans",
                   "UPDATE events_event_tasks SET FKAssignedToId = 0 WHERE FKAssignedToId = <3:3>",
                   "CommitTrans"}},
              {"donor_list_countries", Log{}}}) {
            deleteAttribute(table, 3);
            EXPECT_EQ(host_.takeLog(), statements) << table;
        }
    }
    deleteAttribute("donor_funds", 0);
    EXPECT_TRUE(host_.log.empty()) << "0 stands for none";
}

TEST_F(Settings, GiveAFailedClearingBackToTheHost)
{
    for (const bool within : {false, true}) {
        host_.transactionOpen = within;
        host_.failingStatement = 1;
        EXPECT_THROW(deleteAttribute("donor_campaigns", 3), Error);
        EXPECT_EQ(host_.takeLog().back().starts_with("UPDATE"), within)
            << "the host's own transaction is the host's to end";
    }
}

TEST_F(Handlers, SecurityNamesTheRightsOfEvents)
{
    const auto zones = makeRef<Collection>();
    const auto rights = makeRef<Collection>();
    auto data = puppet("Zones");
    data->holds("Zones", zones).on("GetNewZone", [&](std::span<Value>) {
        auto zone = maker("GetNewRight");
        zone->holds("Key", "").holds("Name", "").holds("Description", "").holds("Rights", rights);
        return Value(zone);
    });
    raise("security-zones-load", data);
    EXPECT_EQ(toText(get(zones->Item("events").object(), "Name")), "Events");
    std::string keys;
    for (const auto& said : saidTo(rights)) keys += said.substr(0, said.find('|')) + " ";
    EXPECT_EQ(keys, "Key=events/view Key=events/edit Key=events/delete Key=events/settings ");
}

TEST_F(Handlers, SecurityAnswersForEachKindOfItem)
{
    auto button = puppet("Button");
    button->holds("Key", "DeleteEvent");
    const struct {
        const char* question;
        Value item;
        const char* right;
    } cases[] = {{"IsPageItemAllowed", "event-details", "events/view"},
                 {"IsPageItemAllowed", "obsidian://events/event-fulledit?id=3", "events/edit"},
                 {"IsPageItemAllowed", "events\\dialogs\\AddEvent.html", "events/edit"},
                 {"IsPageItemAllowed", "events_gifts", "donations/view"},
                 {"IsButtonItemAllowed", button, "events/delete"},
                 {"IsTaskItemAllowed", "SendEventMailing", "mailings/send"},
                 {"IsTaskItemAllowed", "editeventlocation", "events/settings"},
                 {"IsMenuItemAllowed", "View Event", "events/view"},
                 {"IsMenuItemAllowed", "PrintLabels", nullptr},
                 {"IsButtonItemAllowed", Value::nothing(), nullptr},
                 {"IsPageItemAllowed", Null{}, nullptr},
                 {"IsPageItemAllowed", ".html", nullptr}};
    for (const auto& [question, item, right] : cases) {
        const auto answer = [&, &asked = question, &what = item] {
            return toBool(call(host_.root("Security"), asked, what));
        };
        host_.deniedRights.clear();
        EXPECT_TRUE(answer()) << question;
        host_.deniedRights = {"events/view",     "events/edit",   "events/delete",
                              "events/settings", "mailings/send", "donations/view"};
        EXPECT_EQ(answer(), right == nullptr) << question;
        if (right) host_.deniedRights.erase(right);
        EXPECT_TRUE(answer()) << question << " " << (right ? right : "");
    }
}

TEST_F(Handlers, SecurityGuardsEveryPageDialogAndCommand)
{
    host_.deniedRights = {"events/view", "events/edit", "events/delete", "events/settings",
                          "mailings/send"};
    std::vector<std::string> items;
    for (const auto& file : std::filesystem::directory_iterator(SOURCE_FOLDER "pages/events")) {
        if (file.path().extension() == ".html") items.push_back(file.path().stem().string());
    }
    ASSERT_GT(items.size(), 8u);
    for (const auto& dialog : dialogCatalog()) items.emplace_back(dialog.key);
    const WorkflowEvents commands;
    for (const auto& member : commands.members().all()) items.push_back(member.name);
    for (const auto& item : items) {
        // These two show nothing of an event.
        const bool open = item == "progressbar" || item == "protectedpassword";
        EXPECT_EQ(toBool(call(host_.root("Security"), "IsPageItemAllowed", item)), open) << item;
    }
}

} // namespace
} // namespace qmevents::testing
