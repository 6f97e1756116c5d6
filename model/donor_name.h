#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace qmevents {

/// The display name of the donor that a record is about: the one that was given, or else that of
/// the host, asked for once as long as the donor stays the same.
class DonorName {
public:
    /// The name, for a record that is about `donorId`; empty for donor 0 and for one whom the host
    /// does not know.
    std::string of(std::int32_t donorId) const;
    /// Gives the name; the host is not asked any more, whoever the donor is.
    void set(std::string name);

private:
    mutable std::optional<std::string> name_;
    mutable std::int32_t askedFor_ = 0; // the donor whose name it is; 0 when it was given
};

} // namespace qmevents
