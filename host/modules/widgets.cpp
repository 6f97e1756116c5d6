#include "host/modules/widgets.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "automation/describe.h"
#include "host/document/objects/document.h"
#include "host/security/security.h"

namespace refhost {

using qmevents::arg;
using qmevents::Collection;
using qmevents::describe;
using qmevents::Error;
using qmevents::ErrorNumber;
using qmevents::makeRef;
using qmevents::optional;

namespace {

constexpr const char* section = "home";
constexpr const char* preference = "widgets";

std::vector<std::string> splitKeys(std::string_view keys)
{
    std::vector<std::string> parts;
    while (!keys.empty()) {
        const std::string_view part = keys.substr(0, keys.find(','));
        if (!qmevents::text::trim(part).empty()) parts.emplace_back(qmevents::text::trim(part));
        keys.remove_prefix(std::min(part.size() + 1, keys.size()));
    }
    return parts;
}

constexpr const char* aboutAddOption =
    "Adds an option: its kind is \"number\", \"choice\", \"yesno\" or \"text\"; choices are "
    "\"value=caption|value=caption\".";

std::vector<qmevents::Parameter> addOptionParameters()
{
    return {arg("Key"), arg("Caption"), arg("Kind"), optional("Value", Value()),
            optional("Choices", "")};
}

} // namespace

const Members& WidgetOption::members() const
{
    static const Members table =
        describe<WidgetOption>("Something that a user can choose about a widget.")
            .readOnly("Key", &WidgetOption::Key, "The key among the options.")
            .readOnly("Caption", &WidgetOption::Caption, "What the user sees.")
            .readOnly("Kind", &WidgetOption::Kind, "\"number\", \"choice\", \"yesno\" or \"text\".")
            .readOnly("Value", &WidgetOption::current, "What is chosen.")
            .readOnly("Choices", &WidgetOption::Choices, "\"value=caption|value=caption\".");
    return table;
}

const Members& WidgetOptions::members() const
{
    static const Members table =
        describe<WidgetOptions>("The options of a widget in their order.")
            .readOnly("Count", &WidgetOptions::Count, "Number of options.")
            .readOnly("Item", &WidgetOptions::Item, {arg("Index")}, "By position or by key.")
            .asDefault()
            .method("AddOption", &WidgetOptions::AddOption, addOptionParameters(), aboutAddOption)
            .enumerator("NewEnum", &WidgetOptions::NewEnum);
    return table;
}

void WidgetOptions::AddOption(const std::string& key, const std::string& caption,
                              const std::string& kind, const Value& value,
                              const std::string& choices) const
{
    constexpr std::array<std::string_view, 4> kinds{"number", "choice", "yesno", "text"};
    if (std::ranges::find(kinds, kind) == kinds.end()) {
        throw Error::with(ErrorNumber::invalidCall,
                          "there is no kind of option called " + kind + ": " + key);
    }
    const auto option = makeRef<WidgetOption>();
    option->Key = key;
    option->Caption = caption;
    option->Kind = kind;
    option->current = value;
    option->Choices = choices;
    items_->append(Value(option), key);
}

WidgetOption& WidgetOptions::require(const std::string& key) const
{
    return *qmevents::refCast<WidgetOption>(items_->at(std::string_view(key)).object());
}

const Members& Widget::members() const
{
    static const Members table =
        describe<Widget>("A box on a user's start page.")
            .property("ModuleId", &Widget::ModuleId, "The module that draws it.")
            .property("Key", &Widget::Key, "The key among the widgets.")
            .property("Title", &Widget::Title, "The heading.")
            .property("Description", &Widget::Description, "What it shows, for choosing it.")
            .property("Operation", &Widget::Operation, "The right that a user needs.")
            .property("Content", &Widget::Content, "What it shows, as markup.")
            .property("Problem", &Widget::Problem, "Why the options that were sent are refused.")
            .readOnly("IsShown", &Widget::isShown, "Whether the user has it on the start page.")
            .readOnly("Options", &Widget::options, "What a user can choose about it.")
            .method("AddOption", &Widget::AddOption, addOptionParameters(), aboutAddOption)
            .property("OptionValue", &Widget::optionValue, &Widget::setOptionValue, {arg("Key")},
                      "What is chosen of an option.");
    return table;
}

const Members& WidgetPayload::members() const
{
    static const Members table =
        describe<WidgetPayload>("A widget that is drawn, or the widgets that modules register.")
            .readOnly("widget", &WidgetPayload::widget,
                      "The widget; Nothing while modules register theirs.")
            .readOnly("Widgets", &WidgetPayload::Widgets, "Where modules add theirs.")
            .method("GetNewWidget", &WidgetPayload::GetNewWidget, "A new widget, to be added.");
    return table;
}

const Members& Widgets::members() const
{
    static const Members table =
        describe<Widgets>("The start page of the signed-in user.")
            .method("Load", &Widgets::Load,
                    "The widgets that the user may see, those shown first and in order.")
            .method("Arrange", &Widgets::Arrange, {arg("Keys")},
                    "Keeps which widgets are shown, and their order: keys separated by commas.")
            .method("Content", &Widgets::Content, {arg("Key")}, "What a widget shows, as markup.")
            .method("Options", &Widgets::Options, {arg("Key")}, "A widget with its options.")
            .method("SaveOptions", &Widgets::SaveOptions, {arg("Widget")},
                    "Hands the options to the module; gives why it refuses, or an empty text.");
    return table;
}

Ref<Collection> Widgets::Load() const
{
    const auto payload = makeRef<WidgetPayload>();
    context_->raise("widgets-load", Value(payload));
    std::vector<Ref<Widget>> allowed;
    const Security security(context_);
    Value item;
    for (const auto walk = payload->Widgets->NewEnum(); walk->next(item);) {
        auto widget = qmevents::refCast<Widget>(item.object());
        if (widget && security.IsAllowed(widget->Operation)) allowed.push_back(std::move(widget));
    }
    const auto chosen = arrangement();
    const auto placeOf = [&](const Ref<Widget>& widget) {
        return std::ranges::find_if(*chosen, [&](const std::string& key) {
            return qmevents::text::sameName(key, widget->Key);
        });
    };
    for (const auto& widget : allowed) {
        widget->isShown = !chosen || placeOf(widget) != chosen->end();
    }
    if (chosen) std::ranges::stable_sort(allowed, {}, placeOf);
    const auto widgets = makeRef<Collection>();
    for (const auto& widget : allowed) widgets->append(Value(widget), widget->Key);
    return widgets;
}

void Widgets::Arrange(const std::string& keys) const
{
    // The comma in front tells a start page without widgets from one that was never arranged.
    std::string kept = ",";
    for (const std::string& key : splitKeys(keys)) kept += key + ",";
    Document(context_).setPreference(section, preference, Value(kept));
}

std::optional<std::vector<std::string>> Widgets::arrangement() const
{
    const Value kept = Document(context_).preference(section, preference);
    if (!kept.isText()) return std::nullopt;
    return splitKeys(kept.text());
}

Ref<Widget> Widgets::require(const std::string& key) const
{
    const auto payload = makeRef<WidgetPayload>();
    context_->raise("widgets-load", Value(payload));
    Ref<Widget> widget;
    if (payload->Widgets->contains(key)) {
        widget = qmevents::refCast<Widget>(payload->Widgets->at(std::string_view(key)).object());
    }
    if (!widget) throw Error::with(ErrorNumber::invalidCall, "there is no widget called " + key);
    if (!Security(context_).IsAllowed(widget->Operation)) {
        throw Error::with(ErrorNumber::permissionDenied, "you may not see " + widget->Title);
    }
    return widget;
}

std::string Widgets::Content(const std::string& key) const
{
    const auto widget = require(key);
    context_->raise("widgets-content", Value(makeRef<WidgetPayload>(widget)));
    return widget->Content;
}

Ref<Widget> Widgets::Options(const std::string& key) const
{
    const auto widget = require(key);
    widget->options->clear();
    context_->raise("widgets-options", Value(makeRef<WidgetPayload>(widget)));
    return widget;
}

std::string Widgets::SaveOptions(const Ref<Widget>& widget) const
{
    if (!widget) throw Error::with(ErrorNumber::objectNotSet, "the widget");
    require(widget->Key);
    widget->Problem.clear();
    context_->raise("widgets-options-action", Value(makeRef<WidgetPayload>(widget)));
    return widget->Problem;
}

} // namespace refhost
