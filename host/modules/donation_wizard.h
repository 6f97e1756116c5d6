#pragma once

#include <string>

#include "host/app/session_context.h"

namespace refhost {

/// A gift that is being recorded: received at once, in one payment.
class Gift : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "Gift";
    const Members& members() const override;

    std::int32_t Id = 0; ///< 0 before it is saved.
    std::int32_t DonorId = 0;
    qmevents::Currency Amount;
    qmevents::Date GiftDate;
    std::int32_t FundId = 0, CampaignId = 0, SourceId = 0;
    std::int32_t EventId = 0, ReservationId = 0;
    std::string Note;
};

/// Writes a new gift with its payment, both or neither. What is wrong with it has been shown to the
/// user when the answer is False. Error 70 without the right to change records, 5 for one that was
/// saved before.
bool saveGift(const SharedContext& context, Gift& gift);

/// `App.Modules.Donation.Donations.Wizards`.
class DonationWizards : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "DonationWizards";
    const Members& members() const override;

    explicit DonationWizards(SharedContext context) : context_(std::move(context)) {}
    /// Has the user record a gift, for the donor and the reservation in the dialog values "donorid"
    /// and "donation-reservationId". Afterwards the page that started it stands there as before
    /// when "donation-return-to-caller" is "true"; else the donor's page is shown. True when a
    /// gift was recorded.
    bool StartDonationWizard() const;

private:
    SharedContext context_;
};

} // namespace refhost
