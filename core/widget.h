#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace qmevents {

/// What a user may set about a widget. A value is kept as text: digits, "1" and "0" for yes and
/// no, or one of the choices.
struct WidgetOption {
    enum class Kind { number, yesNo, choice };
    const char* key = "";
    const char* caption = "";
    Kind kind = Kind::number;
    const char* usual = "";   ///< The value of whoever has not set it.
    std::int32_t least = 0;   ///< Of a number.
    std::int32_t most = 0;    ///< Of a number.
    const char* choices = ""; ///< "value=caption|value=caption".

    /// How the host calls the kind.
    const char* kindName() const;
    /// `given` as it is kept; nothing when it is no value of this option.
    std::optional<std::string> accept(std::string_view given) const;
    /// What is wrong with `given`, as a sentence.
    std::string refusal(const std::string& given) const;
};

class WidgetSettings;

/// A widget that the events offer for the host's home page.
struct WidgetDescription {
    const char* key;
    const char* title;
    const char* description;
    const char* right; ///< Needed besides "events/view", without which nobody sees any.
    std::span<const WidgetOption> options;
    std::string (*content)(const WidgetSettings& settings);
};

/// The current user's settings of a widget, kept among the user's preferences.
class WidgetSettings {
public:
    explicit WidgetSettings(const WidgetDescription& widget) : widget_(widget) {}

    std::string text(std::string_view option) const;
    std::int32_t number(std::string_view option) const;
    bool isOn(std::string_view option) const { return text(option) == "1"; }
    void keep(const WidgetOption& option, const std::string& value) const;

private:
    std::string preference(const WidgetOption& option) const;
    const WidgetDescription& widget_;
};

// The widgets, a file each.
extern const WidgetDescription upcomingEventsWidget;
extern const WidgetDescription myTasksWidget;
extern const WidgetDescription seasonIncomeWidget;
extern const WidgetDescription recentReservationsWidget;

} // namespace qmevents
