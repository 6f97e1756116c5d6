#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "model/event.h"
#include "store/actions.h"

namespace qmevents {

/// The commands of the user, one method each. A command checks that the action is allowed, opens a
/// dialog or moves the main view to a page, and has the document refreshed.
class WorkflowEvents : public DescribedObject {
public:
    static constexpr std::string_view ClassName = "WorkflowEvents";
    const Members& members() const override;

    /// Opens the list of events.
    void ManageEvents();
    /// Opens the full edit page for a new event, filled from `oEvent` when one is given; from a
    /// dialog page, once its window has closed.
    void CreateEvent(const std::optional<Ref<cEvent>>& oEvent, bool InDialog);
    /// Enters a new event in a dialog.
    void AddEvent();
    /// Opens the full edit page of an event.
    void EditEvent(std::int32_t EventId, const std::optional<std::string>& EventSourceType = {});
    /// Opens the details page of an event, on a tab when one is named. For a donor's reservations
    /// the tab opens filtered to that donor.
    void ViewEvent(std::int32_t EventId, const std::string& TabName, std::int32_t DonorId);
    /// Copies an event in a dialog and opens the copy's full edit page.
    void CopyEvent(std::int32_t EventId);
    /// Has an event deleted by its dialog.
    void DeleteEvent(std::int32_t EventId);
    /// Searches an event and opens its details page.
    void FindEvent();
};

} // namespace qmevents
