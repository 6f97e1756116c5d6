// Deleting an event with everything that belongs to it.
#include "core/reporting.h"
#include "store/donations.h"
#include "store/events_manage.h"
#include "store/refusals.h"

namespace qmevents {
namespace {

// Each private step names what it was about to delete when it is asked for an impossible id.
bool isValidId(std::int32_t eventId, const std::string& what, const std::string& idName)
{
    if (eventId >= 1) return true;
    host().shell().errorUnexpected("Could not delete " + what + " because event id is not valid (" +
                                   idName + "=" + std::to_string(eventId) + ")");
    return false;
}

void deleteDonations(std::int32_t eventId)
{
    if (!isValidId(eventId, "event donations", "Eventid")) return;
    const std::string id = std::to_string(eventId);
    deleteDonationsOf(
        {"SELECT Id FROM donor_gifts WHERE FKEventId= " + id,
         "SELECT donor_gifts.Id FROM donor_gifts INNER JOIN events_event_reservations "
         "ON donor_gifts.FKReservationId = events_event_reservations.Id "
         "WHERE donor_gifts.FKReservationId <> 0 AND events_event_reservations.FKEventId= " +
             id});
}

void unlinkDonations(std::int32_t eventId)
{
    const std::string id = std::to_string(eventId);
    const DialectText unlinkReservations{
        .sqlServer = "UPDATE donor_gifts SET FKReservationId = 0 FROM donor_gifts "
                     "INNER JOIN events_event_reservations "
                     "ON donor_gifts.FKReservationId = events_event_reservations.Id "
                     "WHERE events_event_reservations.FKEventId = " +
                     id,
        .jet = "UPDATE donor_gifts INNER JOIN events_event_reservations "
               "ON donor_gifts.FKReservationId = events_event_reservations.Id "
               "SET FKReservationId = 0 WHERE events_event_reservations.FKEventId = " +
               id};
    const Document document = host().document();
    document.execute("UPDATE donor_gifts SET FKEventId = 0 WHERE FKEventId = " + id);
    document.execute(unlinkReservations.forDocument());
}

DialectText deleteReservationLines(const std::string& eventId)
{
    const std::string from =
        "FROM events_event_reservations_activities LEFT JOIN events_event_reservations "
        "ON events_event_reservations_activities.FKReservationId = events_event_reservations.Id "
        "WHERE events_event_reservations.FKEventId = " +
        eventId;
    return {.sqlServer = "DELETE events_event_reservations_activities " + from,
            .jet = "DELETE DISTINCTROW events_event_reservations_activities.* " + from};
}

void deleteChildren(std::int32_t eventId)
{
    const std::string id = std::to_string(eventId);
    const auto deleteFrom = [&](const char* table) {
        return "DELETE FROM " + std::string(table) + " WHERE FKEventId = " + id;
    };
    struct {
        const char* what;
        std::vector<std::string> statements;
    } const steps[] = {
        {"event activities", {deleteFrom("events_event_activities")}},
        {"event participants",
         {deleteFrom("events_event_participants_groups"), deleteFrom("events_event_participants")}},
        {"event reservations",
         {deleteReservationLines(id).forDocument(), deleteFrom("events_event_reservations")}},
        {"event expenses", {deleteFrom("events_event_expenses")}},
        {"event tasks", {deleteFrom("events_event_tasks")}},
    };
    const Document document = host().document();
    for (const auto& step : steps) {
        if (!isValidId(eventId, step.what, "Eventid")) continue;
        for (const auto& statement : step.statements) document.execute(statement);
    }
}

} // namespace

bool EventsManage::DeleteEvent(std::int32_t EventId, bool DeleteAssociations)
{
    return reported([&] {
        if (!mayDeleteEvents() || !isValidId(EventId, "event", "eventid")) return false;
        const Host app = host();
        const RecordLock lock = lockEvent(EventId);
        Transaction transaction(app.document());
        app.modules().actions().deleteAssignmentsOf("Event", EventId);
        if (DeleteAssociations) {
            deleteDonations(EventId);
        } else {
            unlinkDonations(EventId);
        }
        deleteChildren(EventId);
        app.document().execute("DELETE FROM events_event_info WHERE Id = " +
                               std::to_string(EventId));
        app.document().forceUpdate();
        transaction.commit();
        return true;
    });
}

} // namespace qmevents
