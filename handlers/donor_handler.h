#pragma once

#include "core/host_event.h"

namespace qmevents {

/// Answers the donor's details page and the deletion of donors.
class DonorHandler : public EventAnswerer {
public:
    static constexpr std::string_view ClassName = "DonorHandler";
    const Members& members() const override;

    void EventHandler(const Ref<Object>& Ev) override;
    /// Adds nothing; a place kept for figures at the top of the page.
    void RenderDonorDetailsPageSummarySections() {}
    /// Adds the section "Events Info": what the donor spent, was invited to, attended and reserved.
    void RenderDonorDetailsPageDetailSections();
    /// Adds nothing.
    void RenderDonorDetailsPageRelationshipSections() {}

    /// Says what else goes with the donor.
    void DeleteDonorValidationConfirmation(const Ref<Object>& Ev);
    /// Removes the donor from all events. `DeleteType` decides about the gifts to the donor's
    /// reservations: with 0, the host's usual deletion, which marks the donor and keeps the gifts,
    /// or where it is no number, they are only unlinked; any other number removes the donor for
    /// good, and those gifts with them. Fails when the store could not finish, so that the host
    /// does not delete a donor to whom events still refer.
    void DeleteDonor(const Ref<Object>& Ev);
    /// Says what else goes with the donors of a list.
    void DeleteDonorListConfirmation(const Ref<Object>& Ev);
    /// Removes every donor of a list from all events; their gifts are only unlinked, as a list has
    /// no `DeleteType`. Ends with the first that fails, and fails then.
    void DeleteDonorList(const Ref<Object>& Ev);
};

} // namespace qmevents
