#pragma once

#include "core/host_donor_page.h"

namespace qmevents {

/// Adds the section "Events Info" to the details tab of a donor's page: money spent, invitations,
/// events attended and reservations of that donor. Texts from the database are escaped.
void addEventsSection(const DonorPage& page);

} // namespace qmevents
