#include "model/event_figures.h"

#include <algorithm>
#include <string>

#include "core/host.h"
#include "core/record_reader.h"

namespace qmevents {
namespace {

template <typename T>
struct FigureColumn {
    const char* column;
    T EventFigures::*figure;
};

// The view's columns, in the order in which they are asked for.
constexpr const char* figuresQuery =
    "SELECT PotentialRevenue, ExpectedRevenue, ActualRevenue, OutstandingRevenue, ExpenseTotal, "
    "NetAmount, SponsorshipsOrdered, SponsorshipsRevenue, NumberReservations, NumberActivities, "
    "NumberSponsorshipActivities, NumberParticipants, NumberInvited, NumberAccepted, "
    "NumberDeclined, NumberAttended, DonationsTotal, PledgesExpectedTotal, PledgesReceivedTotal "
    "FROM vw_events_events WHERE Id=";

constexpr FigureColumn<Currency> amounts[] = {
    {"PotentialRevenue", &EventFigures::PotentialRevenue},
    {"ExpectedRevenue", &EventFigures::ExpectedRevenue},
    {"PledgesExpectedTotal", &EventFigures::PledgesExpected},
    {"PledgesReceivedTotal", &EventFigures::PledgesReceived},
    {"ActualRevenue", &EventFigures::ReservationsRevenue},
    {"DonationsTotal", &EventFigures::DonationsRevenue},
    {"OutstandingRevenue", &EventFigures::OutstandingRevenue},
    {"ExpenseTotal", &EventFigures::TotalExpenses},
    {"NetAmount", &EventFigures::NetRevenue},
    {"SponsorshipsRevenue", &EventFigures::SponsorshipsRevenue},
};
constexpr FigureColumn<std::int32_t> counts[] = {
    {"SponsorshipsOrdered", &EventFigures::NumberSponsorshipsReserved},
    {"NumberReservations", &EventFigures::NumberReservations},
    {"NumberActivities", &EventFigures::NumberActivities},
    {"NumberSponsorshipActivities", &EventFigures::NumberSponsorships},
    {"NumberParticipants", &EventFigures::NumberParticipants},
    {"NumberInvited", &EventFigures::NumberInvited},
    {"NumberAccepted", &EventFigures::NumberAccepted},
    {"NumberDeclined", &EventFigures::NumberDeclined},
    {"NumberAttended", &EventFigures::NumberAttended},
};

// Every gift payment of the event with the names around it: the statistics need a few of the
// columns, the event's gift list shows the others.
std::string giftQuery(std::int32_t eventId)
{
    const std::string yes = literal(true, Kind::yesNo);
    const DialectText received{
        .sqlServer = "CASE WHEN NOT IsDate(donor_gifts_payments.actualDate)=0 THEN " + yes +
                     " ELSE 0 END As PaymentReceived, ",
        .jet = "IIf(IsDate(donor_gifts_payments.actualDate)," + yes + ",0) As PaymentReceived, "};
    return "SELECT donor_gifts.*, donor_gifts_payments.*, dd.Display As DonorName, " +
           received.forDocument() +
           "donor_gifts.id as Id, donor_gifts_payments.id as paymentId, "
           "dfp.value AS PaymentFund, dfg.value AS GiftFund, donor_campaigns.value AS Campaign, "
           "donor_list_gifts_sources.value AS Appeal, MatchingDonor.id AS MatchingDonorId, "
           "MatchingDonor.display AS MatchingDonor, "
           "MatchedDonor.id AS MatchedDonorId, MatchedDonor.display AS MatchedDonor, "
           "'gift' As listtype, donor_gifts_payments.actualAmount As creditamount, "
           "donor_gifts_payments.id AS creditPaymentId, donor_gifts.donorId AS creditDonorId "
           "FROM (((((((((((donor_gifts "
           "INNER JOIN donor_gifts_payments ON donor_gifts.id = donor_gifts_payments.giftId) "
           "LEFT JOIN donor_donors dd ON donor_gifts.donorId = dd.id) "
           "LEFT JOIN donor_funds dfp ON donor_gifts_payments.FKFund = dfp.id) "
           "LEFT JOIN donor_funds dfg ON donor_gifts.FKFund = dfg.id) "
           "LEFT JOIN donor_campaigns ON donor_gifts.FKCampaign = donor_campaigns.id) "
           "LEFT JOIN donor_list_gifts_sources "
           "ON donor_gifts.FKSource = donor_list_gifts_sources.id) "
           "LEFT JOIN donor_gifts AS MatchingGift "
           "ON donor_gifts_payments.FKMatch = MatchingGift.id) "
           "LEFT JOIN donor_donors AS MatchingDonor ON MatchingGift.donorId = MatchingDonor.id) "
           "LEFT JOIN donor_gifts_payments AS MatchedPayment "
           "ON donor_gifts.FKMatch = MatchedPayment.id) "
           "LEFT JOIN donor_gifts AS MatchedGift ON MatchedPayment.giftId = MatchedGift.id) "
           "LEFT JOIN donor_donors AS MatchedDonor ON MatchedGift.DonorId = MatchedDonor.Id) "
           "WHERE (donor_gifts.FKEventId = " +
           std::to_string(eventId) +
           ") And (donor_gifts.Deleted = 0) "
           "ORDER BY donor_gifts.created DESC, donor_gifts.id DESC, "
           "donor_gifts_payments.expectedDate DESC";
}

// The rows of one pledge follow each other; their expected amounts make one pledge.
class PendingPledge {
public:
    explicit PendingPledge(DonationStatistics& statistics) : statistics_(statistics) {}
    void add(Currency expected)
    {
        pending_ = true;
        amount_ += expected;
    }
    void close()
    {
        if (!pending_) return;
        statistics_.totalPledged += amount_;
        statistics_.largestPledge = std::max(statistics_.largestPledge, amount_);
        ++statistics_.numberPledges;
        amount_ = {};
        pending_ = false;
    }

private:
    DonationStatistics& statistics_;
    Currency amount_;
    bool pending_ = false;
};

} // namespace

void EventFigures::load(std::int32_t eventId)
{
    const RecordReader row(figuresQuery + literal(eventId, Kind::key));
    if (row.atEnd()) return;
    for (const auto& [column, figure] : amounts) {
        this->*figure = row.column(column).valueOr(Currency());
    }
    for (const auto& [column, figure] : counts) { this->*figure = row.column(column).valueOr(0); }
    PledgesOutstanding = PledgesExpected - PledgesReceived;
    TotalExpected = ExpectedRevenue + PledgesExpected;
    CurrentRevenue = ReservationsRevenue + DonationsRevenue;
}

void DonationStatistics::load(std::int32_t eventId)
{
    donationRecordSet = host().document().dataSet(giftQuery(eventId));
    RecordReader rows(donationRecordSet);
    if (rows.atEnd()) return;

    const auto giftId = rows.column("giftId");
    const auto isReceived = rows.column("PaymentReceived");
    const auto isPledge = rows.column("pledge");
    const auto credit = rows.column("creditamount");
    const auto expected = rows.column("expectedAmount");
    PendingPledge pledge(*this);
    std::int32_t previousGift = 0;
    for (; !rows.atEnd(); rows.next()) {
        const auto gift = giftId.valueOr(0);
        if (gift != previousGift) pledge.close();
        previousGift = gift;
        hasDonations = true;
        if (isReceived.valueOr(false)) {
            const auto amount = credit.valueOr(Currency());
            receivedAmount += amount;
            ++numberDonations;
            largestDonation = std::max(largestDonation, amount);
        }
        if (isPledge.valueOr(false)) pledge.add(expected.valueOr(Currency()));
    }
    pledge.close();
    if (numberDonations > 0) averageDonation = receivedAmount.dividedBy(numberDonations);
    if (numberPledges > 0) averagePledge = totalPledged.dividedBy(numberPledges);
    call(donationRecordSet, "MoveFirst");
}

} // namespace qmevents
