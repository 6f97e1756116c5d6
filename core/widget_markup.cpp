#include "core/widget_markup.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "automation/text.h"

namespace qmevents::markup {
namespace {

std::string element(const char* name, const std::string& content)
{
    return "<" + std::string(name) + ">" + content + "</" + name + ">";
}

// Whole hundredths are enough for a bar, and say the same in every locale.
std::string number(Currency value)
{
    const auto hundredths = static_cast<std::int64_t>(std::llround(value.toDouble() * 100));
    std::string text = std::to_string(hundredths / 100);
    if (const auto rest = hundredths % 100; rest != 0) {
        text += "." + std::to_string(100 + rest).substr(1);
    }
    return text;
}

} // namespace

std::string words(const std::string& text) { return text::escapeMarkup(text); }
std::string strong(const std::string& markup) { return element("strong", markup); }
std::string small(const std::string& markup) { return element("small", markup); }

std::string commandLink(const std::string& call, const std::string& name)
{
    return "<a href=\"javascript:App.Modules.Events.Objects('Workflow').Events." + call + ";\">" +
           words(name) + "</a>";
}

std::string eventLink(std::int32_t eventId, const std::string& tab, const std::string& name)
{
    return commandLink("ViewEvent(" + std::to_string(eventId) + ",'" + tab + "')", name);
}

std::string percent(Currency part, Currency whole)
{
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max() / 100 - 1;
    std::int64_t times = part.scaled() / whole.scaled();
    std::int64_t rest = part.scaled() % whole.scaled();
    if (rest < 0) {
        rest += whole.scaled();
        --times;
    }
    // A hundredfold of the largest amounts has no room; their last digits matter to nobody.
    const std::int64_t hundredths = rest <= most
                                        ? rest * 100 / whole.scaled()
                                        : std::min<std::int64_t>(rest / (whole.scaled() / 100), 99);
    return std::to_string(std::clamp(times, -most, most) * 100 + hundredths) + "%";
}

std::string meter(Currency part, Currency whole)
{
    return "<meter min=\"0\" max=\"" + number(whole) + "\" value=\"" +
           number(std::clamp(part, Currency(), whole)) + "\">" + percent(part, whole) + "</meter>";
}

void Table::row(const std::vector<std::string>& cells)
{
    std::string row;
    for (const auto& cell : cells) row += element("td", cell);
    rows_ += element("tr", row);
}

std::string Table::text(const std::string& empty) const
{
    return element("table", rows_.empty() ? element("tr", element("td", empty)) : rows_);
}

} // namespace qmevents::markup
