#include "core/widget.h"

#include "automation/conversions.h"
#include "automation/error.h"
#include "automation/text.h"
#include "core/host.h"

namespace qmevents {
namespace {

constexpr const char* section = "events";

std::optional<std::string> wholeNumber(const std::string& text, std::int32_t least,
                                       std::int32_t most)
{
    constexpr std::size_t mostDigits = 6;
    if (text.empty() || text.size() > mostDigits) return std::nullopt;
    if (text.find_first_not_of("0123456789") != std::string::npos) return std::nullopt;
    const std::int32_t number = toInt32(Value(text));
    if (number < least || number > most) return std::nullopt;
    return std::to_string(number);
}

std::optional<std::string> yesOrNo(const std::string& text)
{
    for (const char* yes : {"1", "-1", "true", "yes", "on"}) {
        if (text::sameName(text, yes)) return "1";
    }
    for (const char* no : {"", "0", "false", "no", "off"}) {
        if (text::sameName(text, no)) return "0";
    }
    return std::nullopt;
}

std::optional<std::string> oneOf(const std::string& choices, const std::string& value)
{
    if (value.empty() || value.find_first_of("|=") != std::string::npos) return std::nullopt;
    if (("|" + choices).find("|" + value + "=") == std::string::npos) return std::nullopt;
    return value;
}

} // namespace

const char* WidgetOption::kindName() const
{
    switch (kind) {
    case Kind::number:
        return "number";
    case Kind::yesNo:
        return "yesno";
    case Kind::choice:
        break;
    }
    return "choice";
}

std::optional<std::string> WidgetOption::accept(std::string_view given) const
{
    const std::string value(text::trim(given));
    switch (kind) {
    case Kind::number:
        return wholeNumber(value, least, most);
    case Kind::yesNo:
        return yesOrNo(value);
    case Kind::choice:
        break;
    }
    return oneOf(choices, value);
}

std::string WidgetOption::refusal(const std::string& given) const
{
    const std::string rule = kind == Kind::number ? "a whole number from " + std::to_string(least) +
                                                        " to " + std::to_string(most)
                             : kind == Kind::yesNo ? std::string("yes or no")
                                                   : std::string("one of the choices");
    return '"' + std::string(caption) + "\" must be " + rule + ", not \"" + given + "\".";
}

std::string WidgetSettings::preference(const WidgetOption& option) const
{
    return "widget-" + std::string(widget_.key) + "-" + option.key;
}

std::string WidgetSettings::text(std::string_view option) const
{
    for (const auto& one : widget_.options) {
        if (one.key != option) continue;
        // One never stored reads as False; one stored by another version may not fit any more.
        const Value kept = host().document().preference(section, preference(one));
        const bool isStored = kept.isText() || (kept.isNumber() && !kept.is(ValueKind::boolean));
        return (isStored ? one.accept(toText(kept)) : std::nullopt).value_or(one.usual);
    }
    throw Error::with(ErrorNumber::invalidCall, std::string(option));
}

std::int32_t WidgetSettings::number(std::string_view option) const
{
    return toInt32(Value(text(option)));
}

void WidgetSettings::keep(const WidgetOption& option, const std::string& value) const
{
    host().document().setPreference(section, preference(option), value);
}

} // namespace qmevents
