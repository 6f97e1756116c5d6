#pragma once

#include <optional>
#include <string>
#include <vector>

#include "automation/collection.h"
#include "host/app/session_context.h"

namespace refhost {

/// Something that a user can choose about a widget.
class WidgetOption : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "WidgetOption";
    const Members& members() const override;

    std::string Key, Caption;
    std::string Kind; ///< "number", "choice", "yesno" or "text".
    Value current;
    std::string Choices; ///< Of a choice: "value=caption|value=caption".
};

/// The options of a widget in their order.
class WidgetOptions : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "WidgetOptions";
    const Members& members() const override;

    /// Error 5 for a kind that no page can show; error 457 when the key is taken.
    void AddOption(const std::string& key, const std::string& caption, const std::string& kind,
                   const Value& value, const std::string& choices) const;
    std::int32_t Count() const { return items_->Count(); }
    Value Item(const Value& index) const { return items_->Item(index); }
    Ref<qmevents::Enumerator> NewEnum() { return items_->NewEnum(); }
    void clear() const { items_->clear(); }
    /// The option of this key; error 5 when the widget has none.
    WidgetOption& require(const std::string& key) const;

private:
    Ref<qmevents::Collection> items_ = qmevents::makeRef<qmevents::Collection>();
};

/// A box on a user's start page, drawn by the module that registered it.
class Widget : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "Widget";
    const Members& members() const override;

    std::string ModuleId, Key, Title, Description;
    std::string Operation; ///< The right that a user needs; empty for none.
    std::string Content;   ///< Markup.
    std::string Problem;   ///< Why the module refuses the options that were sent; empty if not.
    bool isShown = false;
    Ref<WidgetOptions> options = qmevents::makeRef<WidgetOptions>();

    void AddOption(const std::string& key, const std::string& caption, const std::string& kind,
                   const Value& value, const std::string& choices) const
    {
        options->AddOption(key, caption, kind, value, choices);
    }
    Value optionValue(const std::string& key) const { return options->require(key).current; }
    void setOptionValue(const std::string& key, const Value& value)
    {
        options->require(key).current = value;
        Problem.clear(); // it was about the values before
    }
};

/// Payload of the "widgets-..." events.
class WidgetPayload : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "WidgetPayload";
    const Members& members() const override;

    explicit WidgetPayload(Ref<Widget> drawn = {}) : widget(std::move(drawn)) {}
    Ref<Widget> widget; ///< Nothing while modules register theirs.
    Ref<qmevents::Collection> Widgets = qmevents::makeRef<qmevents::Collection>();
    Ref<Widget> GetNewWidget() const { return qmevents::makeRef<Widget>(); }
};

/// `App.Modules.Quillmere.Widgets`: the start page of the signed-in user.
class Widgets : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "Widgets";
    const Members& members() const override;

    explicit Widgets(SharedContext context) : context_(std::move(context)) {}

    /// Asks the modules for their widgets, anew, and gives those that the user may see: first those
    /// shown, in the user's order. A user who never chose sees all.
    Ref<qmevents::Collection> Load() const;
    /// Keeps which widgets the user sees, in this order: their keys, separated by commas.
    void Arrange(const std::string& keys) const;
    /// What the widget shows, as markup. Error 5 when there is no such widget, 70 without its
    /// right; a failure of the module is the caller's.
    std::string Content(const std::string& key) const;
    /// The widget with its options as they are kept.
    Ref<Widget> Options(const std::string& key) const;
    /// Hands what the user chose (see Widget.OptionValue) to the module; gives why it refuses, or
    /// an empty text.
    std::string SaveOptions(const Ref<Widget>& widget) const;

private:
    Ref<Widget> require(const std::string& key) const;
    std::optional<std::vector<std::string>> arrangement() const;

    SharedContext context_;
};

} // namespace refhost
