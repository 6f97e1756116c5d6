#pragma once

#include <optional>
#include <vector>

#include "host/demo/donors.h"

namespace refhost::demo {

/// Draws donors: the generous more often, and nobody before the day when the donor became known.
class Urn {
public:
    explicit Urn(const std::vector<Donor>& donors) : donors_(donors)
    {
        for (std::size_t index = 0; index < donors.size(); ++index) {
            lots_.insert(lots_.end(), static_cast<std::size_t>(donors[index].generosity), index);
        }
    }

    const std::vector<Donor>& donors() const { return donors_; }

    /// A donor known on `day`, by position; nothing when a few draws find none.
    std::optional<std::size_t> draw(Random& random, qmevents::Date day) const
    {
        for (int attempt = 0; attempt < 20 && !lots_.empty(); ++attempt) {
            const std::size_t index = random.pick(lots_);
            if (donors_[index].since <= day) return index;
        }
        return std::nullopt;
    }

private:
    const std::vector<Donor>& donors_;
    std::vector<std::size_t> lots_;
};

} // namespace refhost::demo
