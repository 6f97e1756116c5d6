#pragma once

#include <string>

#include "automation/collection.h"
#include "host/app/session_context.h"
#include "host/modules/donation_wizard.h"

namespace refhost {

/// Which donations are wanted.
class DonationCriteria : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "DonationCriteria";
    const Members& members() const override;

    std::string CustomWhere;   ///< A condition in SQL; empty for all.
    std::string CustomOrderBy; ///< What stands after ORDER BY; empty for the newest gift first.
};

/// One payment of a gift.
class Donation : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "Donation";
    const Members& members() const override;

    std::int32_t Id = 0; ///< Of the gift.
    std::int32_t PaymentId = 0;
    std::int32_t DonorId = 0;
    std::string DonorName;
    bool Pledge = false;
    qmevents::Currency DonationAmount; ///< What was received.
    Value ActualDate;                  ///< When it was received, or Null.
    qmevents::Currency ExpectedAmount;
    Value ExpectedDate; ///< A date, or Null.
    std::int32_t EventId = 0;
    std::int32_t ReservationId = 0;
    std::string Note;
};

/// The donations of the database. Gifts that were deleted are left out.
class Donations : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "Donations";
    const Members& members() const override;

    explicit Donations(SharedContext context)
        : wizards(qmevents::makeRef<DonationWizards>(context)), context_(std::move(context))
    {
    }
    Ref<DonationWizards> wizards;
    Ref<DonationCriteria> GetNewDonationCriteria() const;
    /// The payments of the gifts that satisfy the criteria, received or only expected.
    Ref<qmevents::Collection> GetDonationsBySearch(const Ref<DonationCriteria>& criteria) const;
    Ref<Gift> GetNewGift() const; ///< To be filled and saved.
    /// Writes a new gift; False when it is not as it must be, which the user is told.
    bool SaveGift(const Ref<Gift>& gift) const;
    /// Deletes a gift or pledge: its payments go, its row stays, marked as deleted, and what
    /// matched it is unlinked. Error 5 when there is none with this id; one that was deleted before
    /// stays so.
    void Delete(std::int32_t giftId) const;

private:
    SharedContext context_;
};

/// `App.Modules.Donation`.
class DonationModule : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "DonationModule";
    const Members& members() const override;

    explicit DonationModule(SharedContext context)
        : donations(qmevents::makeRef<Donations>(std::move(context)))
    {
    }
    Ref<Donations> donations;
};

} // namespace refhost
