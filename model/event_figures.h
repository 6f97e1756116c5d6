#pragma once

#include <cstdint>

#include "automation/currency.h"
#include "automation/object.h"

namespace qmevents {

/// An event's totals, read at once from the view `vw_events_events`.
struct EventFigures {
    Currency PotentialRevenue;
    Currency ExpectedRevenue;
    Currency PledgesExpected;
    Currency PledgesReceived;
    Currency PledgesOutstanding; ///< Expected less received pledges.
    Currency TotalExpected;      ///< Expected revenue and expected pledges.
    Currency ReservationsRevenue;
    Currency CurrentRevenue; ///< Received on reservations and by donations.
    Currency DonationsRevenue;
    Currency OutstandingRevenue;
    Currency TotalExpenses;
    Currency NetRevenue;
    Currency SponsorshipsRevenue;
    std::int32_t NumberSponsorshipsReserved = 0;
    std::int32_t NumberReservations = 0;
    std::int32_t NumberActivities = 0;
    std::int32_t NumberSponsorships = 0;
    std::int32_t NumberParticipants = 0;
    std::int32_t NumberInvited = 0;
    std::int32_t NumberAccepted = 0;
    std::int32_t NumberDeclined = 0;
    std::int32_t NumberAttended = 0;
    std::int32_t NumberReservationActivities = 0;

    /// Fills in what the view holds for the event; zeros stay where it has no row.
    void load(std::int32_t eventId);
};

/// What was given and pledged for an event, worked out from the host's gift tables.
struct DonationStatistics {
    bool hasDonations = false;
    Currency receivedAmount;
    std::int32_t numberDonations = 0;
    Currency averageDonation;
    Currency largestDonation;
    Currency totalPledged;
    std::int32_t numberPledges = 0;
    Currency averagePledge;
    Currency largestPledge;
    Ref<Object> donationRecordSet; ///< At its first row again, for the event's gift list.

    void load(std::int32_t eventId);
};

} // namespace qmevents
