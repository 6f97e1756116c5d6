#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "model/event.h"
#include "model/event_activity.h"
#include "model/event_participant.h"
#include "model/event_reservation.h"
#include "model/reservation_fields.h"

namespace qmevents {

/// The commands of the user, one method each. A command checks that the action is allowed, opens a
/// dialog or moves the main view to a page, and has what is shown read again: it refreshes the
/// document, or sets `ForceUpdate` where the calling page reloads its own lists. A `ForceUpdate`
/// becomes true when something was saved or a refusal was shown, and is else left as it was.
///
/// A command without an event (id 0 or none) has the user search one first, and one without a donor
/// has the user choose or enter one; cancelling either ends it without change.
class WorkflowEvents : public DescribedObject {
public:
    static constexpr std::string_view ClassName = "WorkflowEvents";
    const Members& members() const override;

    // Events.

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

    // Participants.

    /// Adds donors from a list or a query, which the dialog page reads and saves.
    void AddEventParticipants(std::int32_t EventId, bool* ForceUpdate);
    /// Adds one donor, and then opens the event's participants when `NavigateToEvent` is set.
    void AddEventParticipant(std::int32_t EventId, bool* ForceUpdate, std::int32_t DonorId,
                             bool NavigateToEvent);
    /// Changes a participant in a dialog.
    void EditEventParticipant(std::int32_t EventId, std::int32_t ParticipantId, bool* ForceUpdate);
    /// Removes a participant after asking.
    void DeleteEventParticipant(std::int32_t EventId, std::int32_t ParticipantId,
                                bool* ForceUpdate);
    /// Has a selection of participants changed by its dialog.
    void EditEventParticipants(std::int32_t EventId, const Ref<cEventParticipants>& Participants);
    /// Has a selection of participants removed by its dialog.
    void DeleteEventParticipants(std::int32_t EventId, const Ref<cEventParticipants>& Participants,
                                 bool* ForceUpdate);
    /// Adds a reservation of the participant.
    void AddEventParticipantReservation(std::int32_t ParticipantId);
    /// Opens the host's page of the participant's donor.
    void ViewEventParticipantDonor(std::int32_t ParticipantId);

    // Reservations and payments.

    /// Starts a reservation at an event that has activities. `DonorId` becomes the donor chosen.
    /// The details page of the event will open on the tab named.
    void AddEventReservation(std::int32_t EventId, std::int32_t* DonorId,
                             const std::string& TabName);
    /// Opens the full edit page for a new reservation, filled from `oEventReservation` when one is
    /// given; from a dialog page, once its window has closed. `CheckActivities` demands that the
    /// event has activities.
    void CreateEventReservation(std::int32_t EventId,
                                const std::optional<Ref<cEventReservation>>& oEventReservation,
                                const std::string& TabName, bool CheckActivities, bool InDialog);
    /// Opens the full edit page of a reservation.
    void EditEventReservation(std::int32_t EventId, std::int32_t EventReservationId);
    /// Has a reservation deleted by its dialog.
    void DeleteEventReservation(std::int32_t EventId, std::int32_t EventReservationId,
                                std::int32_t DonorId);
    /// Shows the payments of a reservation for change. When the user asks for another payment, the
    /// host's donation wizard records it.
    void EditEventReservationPayments(std::int32_t EventId, std::int32_t EventReservationId);
    /// Shows the payments of a reservation.
    void ViewEventReservationPayments(std::int32_t EventId, std::int32_t EventReservationId);

    // Lines of a reservation in memory, which are saved with it.

    /// Adds a line in a dialog.
    void AddEventReservationActivity(const Ref<cEventReservation>& EventReservation);
    /// Changes a line in a dialog.
    void
    EditEventReservationActivity(const Ref<cEventReservationActivity>& EventReservationActivity,
                                 const Ref<cEventReservation>& EventReservation);
    /// Takes out the line with this key, without asking.
    void DeleteEventReservationActivity(std::int32_t EventReservationActivityId,
                                        const Ref<cEventReservation>& EventReservation);

    // Activities.

    /// Opens the full edit page for a new activity.
    void AddEventActivity(std::int32_t EventId, const std::string& TabName);
    /// Opens the full edit page of an activity.
    void EditEventActivity(std::int32_t EventId, std::int32_t ActivityId);
    /// Deletes an activity after asking. One that is reserved is refused.
    void DeleteEventActivity(std::int32_t EventId, std::int32_t ActivityId);
    /// Opens the full edit page for a new activity that is a copy, fields included.
    void CopyEventActivity(std::int32_t EventId, std::int32_t ActivityId);

    // Reservation fields of an activity in memory, which are saved with it.

    /// Adds a field in a dialog.
    void AddEventActivityReservationField(const Ref<cEventActivity>& EventActivity);
    /// Has a field changed by its dialog.
    void EditEventActivityReservationField(
        const Ref<cEventActivityReservationField>& EventActivityReservationField);
    /// Takes out the field at a position or under a key, without asking. Refused for an activity
    /// that is reserved.
    void DeleteEventActivityReservationField(const Value& EventActivityReservationFieldId,
                                             const Ref<cEventActivity>& EventActivity);
    /// Has the choices of a field changed by their dialog.
    void EditEventActivityReservationFieldItems(
        const Ref<cEventActivityReservationField>& EventActivityReservationField,
        const Ref<cEventActivity>& EventActivity);

    // Expenses and tasks, each entered and changed in a dialog and deleted after asking.

    void AddEventExpense(std::int32_t EventId, bool* ForceUpdate);
    void EditEventExpense(std::int32_t EventId, std::int32_t ExpenseId);
    void DeleteEventExpense(std::int32_t EventId, std::int32_t ExpenseId);
    void AddEventTask(std::int32_t EventId, bool* ForceUpdate);
    void EditEventTask(std::int32_t EventId, std::int32_t TaskId);
    void DeleteEventTask(std::int32_t EventId, std::int32_t TaskId);
    /// Marks a task as done.
    void CompleteEventTask(std::int32_t EventId, std::int32_t TaskId);

    // Mailings and the reports on a single event.

    /// Starts a mailing to a part of the event's people, whom the user chooses in a dialog.
    void SendEventMailing(std::int32_t EventId);
    void ShowParticipantReport(std::int32_t EventId);
    void ShowReservationByActivityReport(std::int32_t EventId);
    void ShowReservationReport(std::int32_t EventId);
    void ShowActivityReservationReport(std::int32_t EventId);
    void ShowActivitySummaryReport(std::int32_t EventId);
    void ShowSummaryReport(std::int32_t EventId);
};

} // namespace qmevents
