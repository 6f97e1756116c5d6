#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace qmevents {

/// What a mailing to people of an event was made of, as far as the values that it merges depend on
/// it. The host keeps it with the list of donors, as a text that means nothing to it.
struct StartedMailing {
    std::int32_t eventId = 0;
    std::string type;             ///< "1" to "4", as the mailing was started.
    bool sponsorships = false;    ///< Type "3": lines of sponsorships count.
    bool otherLines = false;      ///< Type "3": all other lines count.
    std::string activityIds = {}; ///< Type "2": each between tildes.

    /// Whether it goes to who reserved; else it goes to participants.
    bool isAboutReservations() const { return type == "2" || type == "3"; }
    /// Whether a reservation line of this activity belongs to what was chosen.
    bool includes(std::int32_t activityId, bool sponsorship) const;

    std::string text() const;
    /// Nothing for a text that is none of ours.
    static std::optional<StartedMailing> parse(const std::string& text);
};

} // namespace qmevents
