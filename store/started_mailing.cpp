#include "store/started_mailing.h"

#include <vector>

#include "automation/conversions.h"

namespace qmevents {
namespace {

constexpr char separator = '|';

std::vector<std::string> partsOf(const std::string& text)
{
    std::vector<std::string> parts{""};
    for (const char c : text) {
        if (c == separator) {
            parts.emplace_back();
        } else {
            parts.back() += c;
        }
    }
    return parts;
}

} // namespace

bool StartedMailing::includes(std::int32_t activityId, bool sponsorship) const
{
    if (type == "3") return sponsorship ? sponsorships : otherLines;
    return type == "2" &&
           activityIds.find("~" + std::to_string(activityId) + "~") != std::string::npos;
}

std::string StartedMailing::text() const
{
    std::string text = std::to_string(eventId) + separator + type;
    text += separator + std::string(sponsorships ? "1" : "0");
    text += separator + std::string(otherLines ? "1" : "0");
    return text + separator + activityIds;
}

std::optional<StartedMailing> StartedMailing::parse(const std::string& text)
{
    const auto parts = partsOf(text);
    constexpr std::size_t parted = 5;
    constexpr double mostId = 2147483647;
    if (parts.size() != parted) return std::nullopt;
    const auto id = parseNumber(parts[0]);
    if (!id || *id < 1 || *id > mostId) return std::nullopt;
    return StartedMailing{static_cast<std::int32_t>(*id), parts[1], parts[2] == "1",
                          parts[3] == "1", parts[4]};
}

} // namespace qmevents
