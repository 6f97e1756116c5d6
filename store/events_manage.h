#pragma once

#include <optional>
#include <string>

#include "model/event.h"
#include "model/event_activity.h"
#include "model/event_expense.h"
#include "model/event_participant.h"
#include "model/event_reservation.h"
#include "model/event_task.h"
#include "model/events_criteria.h"
#include "model/reservation_fields.h"
#include "store/actions.h"
#include "store/started_mailing.h"

namespace qmevents {

/// The event store: reads, searches, validates, saves and deletes events and what belongs to them,
/// and tells which actions on them are valid. Failures are reported through the host's shell
/// where they happen and give an empty or false result.
class EventsManage : public DescribedObject, public EventSource {
public:
    static constexpr std::string_view ClassName = "EventsManage";
    const Members& members() const override;

    Ref<cEventsCriteria> GetNewEventsCriteria();
    Ref<cEvent> GetNewEvent();
    /// The event, or nothing when there is none.
    Ref<cEvent> GetEvent(std::int32_t EventId);
    Ref<cEvents> GetEvents();
    Ref<cEvents> GetEventsBySearch(const Ref<cEventsCriteria>& SearchClass);
    std::int32_t GetEventReservationActivitiesCount(std::int32_t EventId) override;

    // What belongs to events. A collection is empty when there is nothing in it, a single read
    // gives nothing when there is no such record. Of several optional keys the first that is given
    // and not 0 decides.
    Ref<Object> childrenOf(EventChild child, std::int32_t eventId) override;
    Ref<cEventActivities> GetEventActivities(std::int32_t EventId);
    Ref<cEventActivity> GetEventActivity(std::int32_t EventActivityId);
    Ref<cEventActivity> findActivity(std::int32_t activityId) override;
    Ref<cEventExpenses> GetEventExpenses(std::int32_t EventId); ///< Newest first.
    Ref<cEventExpense> GetEventExpense(std::int32_t EventExpenseId);
    Ref<cEventTasks> GetEventTasks(std::int32_t EventId); ///< The one due last first.
    /// The current user's open tasks, earliest due first. `DateString` is a further condition in
    /// SQL.
    Ref<cEventTasks> GetEventsTasksByDate(const std::string& DateString);
    Ref<cEventTask> GetEventTask(std::int32_t EventTaskId);

    /// The participants of an event with the names of their groups, or else those that a donor is.
    Ref<cEventParticipants> GetEventParticipants(const std::optional<std::int32_t>& EventId,
                                                 const std::optional<std::int32_t>& DonorId = {});
    /// A participant by its own key, or else the donor as a participant of the event.
    Ref<cEventParticipant>
    GetEventParticipant(const std::optional<std::int32_t>& EventParticipantId,
                        const std::optional<std::int32_t>& EventId = {},
                        const std::optional<std::int32_t>& DonorId = {});
    Ref<cEventParticipantGroups>
    GetEventParticipantInvitationGroups(std::int32_t EventId,
                                        const std::optional<std::int32_t>& DonorId = {}) override;

    /// The reservations of an event, or else of a donor; latest first unless `OrderBy` says
    /// otherwise.
    Ref<cEventReservations> GetEventReservations(const std::optional<std::int32_t>& EventId,
                                                 const std::optional<std::int32_t>& DonorId = {},
                                                 const std::string& OrderBy = {});
    Ref<cEventReservation> GetEventReservation(std::int32_t EventReservationId);
    Ref<cEventReservationActivities>
    GetEventReservationActivities(const std::optional<std::int32_t>& ReservationId,
                                  const std::optional<std::int32_t>& EventId = {}) override;
    Ref<cEventReservationActivities> findLinesOfReservations(std::int32_t eventId) override;
    Ref<cEventReservationActivity>
    GetEventReservationActivity(std::int32_t EventReservationActivityId);
    Ref<cEventReservationActivities>
    GetEventActivityReservations(std::int32_t ActivityId, const std::string& OrderBy = {}) override;
    /// The lines of an event's sponsorship activities, by donor and activity.
    Ref<cEventReservationActivities> GetEventSponsorships(std::int32_t EventId);
    /// The host's record set of an event's reservations, one row a line and one for each
    /// reservation without lines. `FilterBy` is a further condition in SQL.
    Ref<Object> GetEventReservationAndActivitiesRecordSet(std::int32_t EventId,
                                                          const std::string& OrderBy = {},
                                                          const std::string& FilterBy = {});

    // New records, clean and unsaved.
    Ref<cEventActivity> GetNewEventActivity(std::int32_t EventId = 0);
    Ref<cEventActivityReservationField> GetNewEventActivityReservationField();
    Ref<cEventExpense> GetNewEventExpense(std::int32_t EventId = 0);
    Ref<cEventTask> GetNewEventTask(std::int32_t EventId = 0);
    Ref<cEventReservation> GetNewEventReservation(std::int32_t EventId = 0);
    Ref<cEventReservationActivity> GetNewEventReservationActivity();
    Ref<cEventReservationActivityField> GetNewEventReservationActivityField();
    Ref<cEventParticipants> GetNewEventParticipants();
    Ref<cEventParticipant> GetNewEventParticipant(std::int32_t EventId = 0,
                                                  std::int32_t DonorId = 0);

    // Saving. Each operation needs the right "events/edit", holds the event's lock, and tells
    // whether the record was written; what was wrong has been shown. Validating gives true when all
    // rules hold; else the first broken one has been shown.

    /// Writes the event's row under the event's lock; true when it was written.
    bool UpdateEvent(const Ref<cEvent>& EventObject, bool Validate = true, bool ForceUpdate = true);
    bool ValidateEvent(const Ref<cEvent>& EventObject);
    bool UpdateEventActivity(const Ref<cEventActivity>& EventActivity, bool Validate = true);
    bool ValidateEventActivity(const Ref<cEventActivity>& EventActivity);
    bool UpdateEventExpense(const Ref<cEventExpense>& EventExpense, bool Validate = true);
    bool ValidateEventExpense(const Ref<cEventExpense>& EventExpense);
    bool UpdateEventTask(const Ref<cEventTask>& EventTask, bool Validate = true);
    bool ValidateEventTask(const Ref<cEventTask>& EventTask);
    /// Validates the participant, writes it and replaces its invitation groups. A new one is told
    /// in the donor's history.
    bool UpdateEventParticipant(const Ref<cEventParticipant>& EventParticipant);
    bool ValidateEventParticipant(const Ref<cEventParticipant>& EventParticipant);
    /// Saves the new and the changed participants of the collection under one lock, as
    /// participants of the event, and lets the host handle its input in between. Stops at the first
    /// that cannot be saved.
    bool AddEventParticipants(std::int32_t EventId,
                              const Ref<cEventParticipants>& EventParticipants);
    /// Writes the reservation and then its lines by their state. A new one is told in the donor's
    /// history.
    bool UpdateEventReservation(const Ref<cEventReservation>& EventReservation,
                                bool Validate = true);
    bool ValidateEventReservation(const Ref<cEventReservation>& EventReservation);
    /// Writes one line of a stored reservation.
    bool
    UpdateEventReservationActivity(const Ref<cEventReservationActivity>& EventReservationActivity,
                                   bool Validate = true);
    bool ValidateEventReservationActivity(
        const Ref<cEventReservationActivity>& EventReservationActivity);

    /// Deletes the event and all that belongs to it in one transaction. Its gifts are deleted when
    /// `DeleteAssociations` is set, else only unlinked.
    bool DeleteEvent(std::int32_t EventId, bool DeleteAssociations);

    // Deleting what belongs to an event, statement by statement under the event's lock; needs the
    // right "events/edit". `AddDeleteInteraction` tells it in the donor's history.

    /// Deletes the activity and the reservation lines that use it.
    bool DeleteEventActivity(std::int32_t EventId, std::int32_t EventActivityId);
    bool DeleteEventExpense(std::int32_t EventId, std::int32_t EventExpenseId);
    bool DeleteEventTask(std::int32_t EventId, std::int32_t EventTaskId);
    bool DeleteEventParticipant(std::int32_t EventId, std::int32_t EventParticipantId,
                                bool AddDeleteInteraction = true, bool LockEvent = true);
    /// The reservation's gifts are deleted when `DeleteDonations` is set, else only unlinked.
    bool DeleteEventReservation(std::int32_t EventId, std::int32_t EventReservationId,
                                bool AddDeleteInteraction = true, bool LockEvent = true,
                                bool DeleteDonations = false);
    bool DeleteEventReservationActivity(std::int32_t EventId,
                                        std::int32_t EventReservationActivityId);
    /// Removes every trace of a donor whom the host deletes; a repeated call goes on where one that
    /// failed ended.
    bool DeleteDonorFromEvents(std::int32_t DonorId, bool DeleteDonations);

    /// Makes a list of the host's mailings out of a part of the event's people, each once, and
    /// starts a mailing to it. `EventMailingType`: "1" participants with one of the statuses, "2"
    /// who reserved one of the activities, "3" who reserved sponsorships or other activities, "4"
    /// participants in one of the invitation groups. Statuses and activity ids stand between
    /// tildes.
    bool StartEventMailingProcess(std::int32_t EventId, const std::string& EventMailingType,
                                  const std::string& ParticipantStatuses,
                                  const Ref<Object>& InvitationGroups,
                                  bool EventReservationSponsorship,
                                  bool EventReservationNonSponsorship,
                                  const std::string& EventActivityIds);
    /// The mailing to the list of this key, while it is the latest that was started.
    std::optional<StartedMailing> startedMailing(const std::string& listKey) const
    {
        return listKey == startedList_ ? started_ : std::nullopt;
    }

    // Whether the action makes sense now. Fills in the reason when it does not, and the record (a
    // new one for Create) when it does.
    bool IsValidEventAction(std::int32_t EventId, EventsActions Action,
                            std::string* errormessage = nullptr,
                            Ref<cEvent>* EventObject = nullptr);
    bool IsValidEventReservationAction(std::int32_t EventReservationId, EventsActions Action,
                                       std::string* errormessage = nullptr,
                                       Ref<cEventReservation>* EventReservationObject = nullptr);
    bool IsValidEventActivityAction(std::int32_t EventActivityId, EventsActions Action,
                                    std::string* errormessage = nullptr,
                                    Ref<cEventActivity>* EventActivityObject = nullptr);
    bool IsValidEventExpenseAction(std::int32_t EventExpenseId, EventsActions Action,
                                   std::string* errormessage = nullptr,
                                   Ref<cEventExpense>* EventExpenseObject = nullptr);
    bool IsValidEventParticipantAction(std::int32_t EventParticipantId, EventsActions Action,
                                       std::string* errormessage = nullptr,
                                       Ref<cEventParticipant>* EventParticipantObject = nullptr);
    bool IsValidEventTaskAction(std::int32_t EventTaskId, EventsActions Action,
                                std::string* errormessage = nullptr,
                                Ref<cEventTask>* EventTaskObject = nullptr);
    /// Whether a reservation line uses the activity.
    bool EventActivityInUse(std::int32_t EventId, std::int32_t EventActivityId);

private:
    std::string startedList_; // its key
    std::optional<StartedMailing> started_;
};

/// The store behind the add-in's root object.
Ref<EventsManage> eventsManage();

} // namespace qmevents
