#include "core/widgets.h"

#include <string>
#include <utility>
#include <vector>

#include "core/host.h"
#include "core/host_widget.h"
#include "core/widget.h"

namespace qmevents {
namespace {

constexpr const char* moduleId = "events";
constexpr const char* viewRight = "events/view";

// In the order in which the host offers them.
constexpr const WidgetDescription* widgets[] = {&upcomingEventsWidget, &myTasksWidget,
                                                &seasonIncomeWidget, &recentReservationsWidget};

const WidgetDescription* find(const Widget& widget)
{
    const std::string key = widget.key();
    for (const auto* one : widgets) {
        if (key == one->key) return one;
    }
    return nullptr; // another module's
}

void registerWidgets(const WidgetEvent& data)
{
    for (const auto* one : widgets) {
        const Widget widget = data.newWidget();
        widget.setModuleId(moduleId);
        widget.setKey(one->key);
        widget.setTitle(one->title);
        widget.setDescription(one->description);
        widget.setOperation(one->right);
        data.add(widget, one->key);
    }
}

std::string contentOf(const WidgetDescription& widget)
{
    const HostSecurity security = host().security();
    if (!security.isAllowed(viewRight) || !security.isAllowed(widget.right)) return {};
    return widget.content(WidgetSettings(widget));
}

WidgetEvent payload() { return host().modules().widgetEvent(); }

} // namespace

void showWidgets(const HostEvent&)
{
    const WidgetEvent data = payload();
    const Widget widget = data.widget();
    if (!widget) return registerWidgets(data);
    if (const auto* description = find(widget)) widget.setContent(contentOf(*description));
}

void offerWidgetOptions(const HostEvent&)
{
    const Widget widget = payload().widget();
    const auto* description = widget ? find(widget) : nullptr;
    if (!description) return;
    const WidgetSettings settings(*description);
    for (const auto& option : description->options) {
        widget.addOption(option.key, option.caption, option.kindName(), settings.text(option.key),
                         option.choices);
    }
}

void keepWidgetOptions(const HostEvent&)
{
    const Widget widget = payload().widget();
    const auto* description = widget ? find(widget) : nullptr;
    if (!description) return;
    std::vector<std::pair<const WidgetOption*, std::string>> accepted;
    for (const auto& option : description->options) {
        const Value given = widget.optionValue(option.key);
        if (given.isEmpty() || given.isNull()) continue; // stays as it is
        const std::string text = toText(given);
        const auto value = option.accept(text);
        if (!value) return widget.setProblem(option.refusal(text));
        accepted.emplace_back(&option, *value);
    }
    const WidgetSettings settings(*description);
    for (const auto& [option, value] : accepted) settings.keep(*option, value);
}

} // namespace qmevents
