#include "core/general_handler.h"

#include "automation/text.h"
#include "core/host.h"
#include "core/host_text.h"
#include "core/reference_repair.h"
#include "core/schema_installer.h"
#include "core/widgets.h"

namespace qmevents {
namespace {

constexpr std::int32_t menuItemFlags = 8192;
constexpr std::int32_t viewEventCommand = 10001;
constexpr const char* viewEventText = "View Event";

bool concernsAnEvent(const Ref<Object>& interaction)
{
    return text::upper(textOrNone(get(interaction, "group"))) == "EVENT";
}

// Hosts send back the number or the text of the menu item.
bool isViewEvent(const Value& command)
{
    return isNumeric(command) ? toInt32(command) == viewEventCommand
                              : textOrNone(command) == viewEventText;
}

void addToMenu(const HostEvent& event)
{
    if (!concernsAnEvent(getObject(event.data(), "Interaction"))) return;
    call(getObject(event.data(), "ContextMenu"), "AppendItem", menuItemFlags, viewEventText,
         viewEventCommand);
}

void runMenuCommand(const HostEvent& event)
{
    const auto interaction = getObject(event.data(), "Interaction");
    if (!concernsAnEvent(interaction) || !isViewEvent(get(event.data(), "Command"))) return;
    call(host().modules().events().commands(), "ViewEvent", toInt32(get(interaction, "Reference")));
}

// The page that the user wants to begin with: the events, or the host's own.
void showSignInPage()
{
    const Host app = host();
    const Value page = app.document().preference("events", "signin-page");
    if (!page.isText() || !text::sameName(page.text(), "events")) return;
    if (app.security().isAllowed("events/view")) {
        app.shell().navigate("obsidian://events/events-view");
    }
}

void signIn(const HostEvent&)
{
    if (!checkSchema()) return;
    repairReferences();
    showSignInPage();
}

struct Answer {
    std::string_view key;
    void (*run)(const HostEvent&);
};
// Keys of the group that are not listed are accepted and ignored.
constexpr Answer answers[] = {
    {"application-signin", signIn},
    {"interaction-menu", addToMenu},
    {"interaction-command", runMenuCommand},
    {"widgets-load", showWidgets},
    {"widgets-content", showWidgets},
    {"widgets-options", offerWidgetOptions},
    {"widgets-options-action", keepWidgetOptions},
};

} // namespace

void GeneralHandler::EventHandler(const Ref<Object>& hostEvent)
{
    const HostEvent event(hostEvent);
    const std::string key = event.key();
    for (const auto& answer : answers) {
        if (answer.key == key) answer.run(event);
    }
}

const Members& GeneralHandler::members() const
{
    static const Members table = answererMembers<GeneralHandler>(
        "Answers sign-in, sign-out, interaction and widget events.");
    return table;
}

} // namespace qmevents
