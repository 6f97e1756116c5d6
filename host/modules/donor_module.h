#pragma once

#include <string>

#include "host/app/session_context.h"
#include "host/modules/donor_search.h"

namespace refhost {

/// What a list shows of a donor.
class SmallDonor : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "SmallDonor";
    const Members& members() const override;

    std::int32_t Id = 0;
    std::string Display;
    std::string EntityType;
};

/// A donor with address.
class Donor : public SmallDonor {
public:
    static constexpr std::string_view ClassName = "Donor";
    const Members& members() const override;

    std::string FirstName, LastName, Email, Phone, Address, City, PostalCode;
    Value Created; ///< A date, or Null.

    void read(const Cursor& row);
};

/// Error 70 when the user may not delete donors.
void requireDonorDeletion(const SharedContext& context);
/// Marks the donors that satisfy `condition` deleted.
void markDonorsDeleted(const SharedContext& context, const std::string& condition);

/// Reads, finds and keeps donors; those marked deleted are gone.
class DonorManage : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "DonorManage";
    const Members& members() const override;

    explicit DonorManage(SharedContext context) : context_(std::move(context)) {}
    Ref<Donor> GetDonor(std::int32_t id) const; ///< Nothing when there is no such donor.
    Ref<SmallDonor> GetSmallDonor(std::int32_t id) const;
    Ref<DonorCriteria> GetNewDonorCriteria() const;
    Ref<qmevents::Collection> GetDonorsBySearch(const Ref<DonorCriteria>& criteria) const;
    Ref<Donor> GetNewDonor() const; ///< A person without a name.
    /// Writes a new or changed donor; False when it is not as it must be, which the user is told.
    bool UpdateDonor(const Ref<Donor>& donor) const;
    /// Asks the user, with what the modules have to say about it, then deletes the donor with what
    /// the modules keep about them: all of it or nothing. False when the user declines, or when a
    /// module has told the user why it could not. Errors: 5 when there is no such donor, 70 without
    /// the right to delete.
    bool DeleteDonor(std::int32_t id) const;

private:
    SharedContext context_;
};

} // namespace refhost
