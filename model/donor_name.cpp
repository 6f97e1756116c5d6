#include "model/donor_name.h"

#include <utility>

#include "core/host.h"

namespace qmevents {

std::string DonorName::of(std::int32_t donorId) const
{
    if (name_ && (askedFor_ == 0 || askedFor_ == donorId)) return *name_;
    if (donorId == 0) return {};
    const auto donor = host().modules().donor().smallDonor(donorId);
    name_ = donor ? toText(get(donor, "Display")) : std::string();
    askedFor_ = donorId;
    return *name_;
}

void DonorName::set(std::string name)
{
    name_ = std::move(name);
    askedFor_ = 0;
}

} // namespace qmevents
