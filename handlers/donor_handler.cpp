#include "handlers/donor_handler.h"

#include <vector>

#include "automation/conversions.h"
#include "core/host.h"
#include "core/host_deletion.h"
#include "core/record_reader.h"
#include "handlers/donor_section.h"
#include "store/events_manage.h"

namespace qmevents {
namespace {

constexpr const char* listOfDonors = "donors";

// The store has told the user what went wrong; this keeps the host from going on.
void removeFromEvents(std::int32_t donorId, bool deleteGifts)
{
    if (eventsManage()->DeleteDonorFromEvents(donorId, deleteGifts)) return;
    throw Error(ErrorNumber::internal, "The donor could not be removed from all events and has "
                                       "therefore not been deleted (donor id " +
                                           std::to_string(donorId) + ").");
}

} // namespace

const Members& DonorHandler::members() const
{
    using C = DonorHandler;
    static const Members table =
        describe<C>("Answers the donor details page and donor deletion.")
            .method("EventHandler", &C::EventHandler, {arg("Ev")}, "Answers a host event.")
            .method("RenderDonorDetailsPageSummarySections",
                    &C::RenderDonorDetailsPageSummarySections, "Adds nothing to the summary.")
            .method("RenderDonorDetailsPageDetailSections",
                    &C::RenderDonorDetailsPageDetailSections, "Adds the section \"Events Info\".")
            .method("RenderDonorDetailsPageRelationshipSections",
                    &C::RenderDonorDetailsPageRelationshipSections,
                    "Adds nothing to the relationships.")
            .method("DeleteDonorValidationConfirmation", &C::DeleteDonorValidationConfirmation,
                    {arg("Ev")}, "Says what else goes with a donor.")
            .method("DeleteDonor", &C::DeleteDonor, {arg("Ev")}, "Removes a donor from all events.")
            .method("DeleteDonorListConfirmation", &C::DeleteDonorListConfirmation, {arg("Ev")},
                    "Says what else goes with a list of donors.")
            .method("DeleteDonorList", &C::DeleteDonorList, {arg("Ev")},
                    "Removes a list of donors from all events.");
    return table;
}

void DonorHandler::EventHandler(const Ref<Object>& Ev)
{
    const HostEvent event(Ev);
    const std::string key = event.key();
    if (key == "donor-detailspage-summarysections") {
        RenderDonorDetailsPageSummarySections();
    } else if (key == "donor-detailspage-tabinit") {
        const std::string tab = toText(event.dataValue());
        if (tab == "detail") RenderDonorDetailsPageDetailSections();
        if (tab == "relationship") RenderDonorDetailsPageRelationshipSections();
    } else if (key == "donor-delete-validate-and-confirm") {
        DeleteDonorValidationConfirmation(Ev);
    } else if (key == "donor-delete") {
        DeleteDonor(Ev);
    } else if (key == "donor-delete-smartlist-confirm") {
        DeleteDonorListConfirmation(Ev);
    } else if (key == "donor-delete-smartlist") {
        DeleteDonorList(Ev);
    }
}

void DonorHandler::RenderDonorDetailsPageDetailSections()
{
    addEventsSection(host().modules().quillmere().donorPage());
}

void DonorHandler::DeleteDonorValidationConfirmation(const Ref<Object>& Ev)
{
    DeletionData(HostEvent(Ev).data())
        .addConfirmationMessage(
            "All events participation and reservation information will no longer be available.");
}

void DonorHandler::DeleteDonor(const Ref<Object>& Ev)
{
    const DeletionData deletion(HostEvent(Ev).data());
    const Value type = deletion.deleteType();
    removeFromEvents(deletion.entityId(), isNumeric(type) && toInt32(type) != 0);
}

void DonorHandler::DeleteDonorListConfirmation(const Ref<Object>& Ev)
{
    const DeletionData deletion(HostEvent(Ev).data());
    if (deletion.entityType() != listOfDonors) return;
    deletion.addConfirmationMessage("All events participation and reservation information for "
                                    "these donors will no longer be available.");
}

void DonorHandler::DeleteDonorList(const Ref<Object>& Ev)
{
    const DeletionData deletion(HostEvent(Ev).data());
    if (deletion.entityType() != listOfDonors) return;
    // Read to the end first: the list may be a query over the very records that go.
    std::vector<std::int32_t> ids;
    RecordReader list("SELECT Id FROM " + deletion.userdata());
    if (!list.atEnd()) {
        const auto id = list.column("id");
        for (; !list.atEnd(); list.next()) ids.push_back(id.valueOr<std::int32_t>(0));
    }
    for (const std::int32_t id : ids) removeFromEvents(id, false);
}

} // namespace qmevents
