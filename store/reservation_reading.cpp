// Reading reservations and their lines.
#include "core/reporting.h"
#include "store/child_tables.h"
#include "store/events_manage.h"
#include "store/given_key.h"
#include "store/record_loader.h"
#include "store/statement.h"

namespace qmevents {
namespace {

using Line = cEventReservationActivity;

const Table<cEventReservation>& eventColumns()
{
    using C = cEventReservation;
    static const Table<C> table{"events_event_info",
                                {column("EventName", Kind::text, &C::EventName),
                                 column("EventFKStatusId", Kind::number, &C::EventFKStatusId)}};
    return table;
}

Column<Line> donorIdColumn() { return column("FKDonorId", Kind::key, &Line::FKdonorId); }

// The reserving donor of a line; `DonorIdCheck` is null when the host has no such donor any more.
std::vector<Column<Line>> donorColumns()
{
    return {donorIdColumn(), column("DonorName", Kind::text, &Line::DonorName),
            joinedColumn<Line>("DonorIdCheck",
                               [](Line& line, const Value&) { line.DonorExists = true; })};
}

const Table<Line>& columnsByActivity()
{
    static const Table<Line> table{"donor_donors", donorColumns()};
    return table;
}

const Table<Line>& sponsorshipColumns()
{
    static const Table<Line> table = [] {
        auto columns = donorColumns();
        columns.push_back(joinedColumn<Line>("ActivityName", [](Line& line, const Value& name) {
            line.setActivityName(toText(name));
        }));
        return Table<Line>("donor_donors", std::move(columns));
    }();
    return table;
}

const Table<Line>& columnsByEvent()
{
    static const Table<Line> table{
        "events_event_activities",
        {donorIdColumn(),
         joinedColumn<Line>("ActivitySponsorship", [](Line& line, const Value& sponsorship) {
             line.setSponsorship(toBool(sponsorship));
         })}};
    return table;
}

const Table<Line>& activityColumns()
{
    static const Table<Line> table{
        "events_event_activities",
        {joinedColumn<Line>("ActivityName",
                            [](Line& line, const Value& name) {
                                StoreAccess::knownActivity(line).name = toText(name);
                            }),
         joinedColumn<Line>("ActivitySponsorship", [](Line& line, const Value& sponsorship) {
             StoreAccess::knownActivity(line).sponsorship = toBool(sponsorship);
         })}};
    return table;
}

// What was paid for each reservation of the event by gifts that still stand.
std::string paymentsByReservation(const std::string& eventKey)
{
    const DialectText sum{
        .sqlServer = "IsNull(SUM(actualAmount),0) As DonationPaymentsAmount ",
        .jet = "IIf(IsNull(SUM(actualAmount)),0,SUM(actualAmount)) As DonationPaymentsAmount "};
    return "SELECT eer.Id, " + sum.forDocument() +
           "FROM ((events_event_reservations eer "
           "INNER JOIN donor_gifts dg ON eer.Id = dg.FKReservationId) "
           "INNER JOIN donor_gifts_payments dgp ON dg.Id = dgp.giftId) "
           "WHERE eer.FKEventId=" +
           eventKey + " AND dg.deleted = 0 GROUP BY eer.Id";
}

std::string reservationsWithLines(const std::string& eventKey)
{
    const DialectText payments{
        .sqlServer = "IsNull(ReservationPayments.DonationPaymentsAmount,0) As "
                     "ReservationPayments, ",
        .jet = "IIf(IsNull(ReservationPayments.DonationPaymentsAmount),0,"
               "ReservationPayments.DonationPaymentsAmount) As ReservationPayments, "};
    return "SELECT eer.Id As ReservationId, eer.FKDonorId As ReservationDonorId, "
           "eer.ReservationDate As ReservationDate, eer.Description As ReservationDescription, "
           "eer.AmountPaid As ReservationAmountPaid, " +
           payments.forDocument() +
           "eera.Id As ReservationActivityId, eera.FKActivityId As ReservationActivityActivityId, "
           "eera.Quantity As ReservationActivityQuantity, eera.Price As ReservationActivityPrice, "
           "eera.ReservationInfo As ReservationActivityReservationInfo, "
           "eera.Notes As ReservationActivityNotes, eea.Id As ActivityId, "
           "eea.Name As ActivityName, dd.Id As DonorId, dd.Display As DonorName "
           "FROM ((((events_event_reservations eer LEFT JOIN (" +
           paymentsByReservation(eventKey) +
           ") ReservationPayments ON eer.Id = ReservationPayments.Id) "
           "LEFT JOIN events_event_reservations_activities eera ON eer.id = eera.FKReservationId) "
           "LEFT JOIN events_event_activities eea ON eera.FKActivityId = eea.Id) "
           "LEFT JOIN donor_donors dd ON eer.FKDonorId = dd.Id) "
           "WHERE eer.FKEventId=" +
           eventKey;
}

} // namespace

Ref<cEventReservations>
EventsManage::GetEventReservations(const std::optional<std::int32_t>& EventId,
                                   const std::optional<std::int32_t>& DonorId,
                                   const std::string& OrderBy)
{
    return reported([&] {
        const bool byDonor = isGiven(DonorId) && !isGiven(EventId);
        const std::int32_t key = byDonor ? *DonorId : EventId.value_or(0);
        const auto reservations = readAll<cEventReservations>(
            std::string("SELECT events_event_reservations.*, events_event_info.Name As EventName, "
                        "events_event_info.FKStatusId As EventFKStatusId "
                        "FROM events_event_reservations LEFT JOIN events_event_info "
                        "ON events_event_reservations.FKEventId = events_event_info.Id WHERE ") +
                (byDonor ? "FKDonorId=" : "FKEventId=") + literal(key, Kind::key) + " ORDER BY " +
                (OrderBy.empty() ? "ReservationDate DESC" : OrderBy),
            reservationTable(), &eventColumns());
        if (!byDonor) StoreAccess::setEvent(*reservations, key);
        return reservations;
    });
}

Ref<cEventReservation> findReservation(std::int32_t id)
{
    return readOne("SELECT * FROM events_event_reservations eer WHERE eer.Id = " +
                       literal(id, Kind::number),
                   reservationTable());
}

Ref<cEventReservation> EventsManage::GetEventReservation(std::int32_t EventReservationId)
{
    return reported([&] { return findReservation(EventReservationId); });
}

Ref<cEventReservationActivities>
EventsManage::GetEventReservationActivities(const std::optional<std::int32_t>& ReservationId,
                                            const std::optional<std::int32_t>& EventId)
{
    return reported([&] {
        if (isGiven(EventId) && !isGiven(ReservationId)) {
            return readAll<cEventReservationActivities>(
                "SELECT eera.*, eer.FKDonorId, eea.Sponsorship As ActivitySponsorship "
                "FROM (((events_event_reservations_activities eera "
                "INNER JOIN events_event_reservations eer ON eera.FKReservationId = eer.id) "
                "INNER JOIN events_event_activities eea ON eera.FKActivityID = eea.Id) "
                "LEFT JOIN donor_donors dd ON eer.FKDonorId = dd.Id) WHERE eer.FKEventId=" +
                    literal(*EventId, Kind::key),
                reservationActivityTable(), &columnsByEvent());
        }
        return readAll<cEventReservationActivities>(
            "SELECT * FROM events_event_reservations_activities WHERE FKReservationId=" +
                literal(ReservationId.value_or(0), Kind::key),
            reservationActivityTable());
    });
}

Ref<cEventReservationActivities> EventsManage::findLinesOfReservations(std::int32_t eventId)
{
    const auto lines = readAll<cEventReservationActivities>(
        "SELECT eera.*, eea.Name As ActivityName, eea.Sponsorship As ActivitySponsorship "
        "FROM ((events_event_reservations_activities eera "
        "INNER JOIN events_event_reservations eer ON eera.FKReservationId = eer.id) "
        "LEFT JOIN events_event_activities eea ON eera.FKActivityId = eea.Id) "
        "WHERE eer.FKEventId=" +
            literal(eventId, Kind::key),
        reservationActivityTable(), &activityColumns());
    // A line whose activity is gone knows that, too.
    lines->each([](const auto& line) { StoreAccess::knownActivity(*line); });
    return lines;
}

Ref<cEventReservationActivity>
EventsManage::GetEventReservationActivity(std::int32_t EventReservationActivityId)
{
    return reported([&] {
        return readOne("SELECT * FROM events_event_reservations_activities WHERE Id=" +
                           literal(EventReservationActivityId, Kind::number),
                       reservationActivityTable());
    });
}

Ref<cEventReservationActivities> findLinesOfActivity(std::int32_t activityId,
                                                     const std::string& orderBy)
{
    Statement statement(
        "SELECT eera.*, eer.FKDonorId, dd.Id As DonorIdCheck, dd.Display As DonorName "
        "FROM ((events_event_reservations_activities eera "
        "INNER JOIN events_event_reservations eer ON eera.FKReservationId = eer.id) "
        "LEFT JOIN donor_donors dd ON eer.FKDonorId = dd.Id) WHERE FKActivityId=" +
        literal(activityId, Kind::key));
    if (!orderBy.empty()) statement.add("ORDER BY " + orderBy);
    return readAll<cEventReservationActivities>(statement.text(), reservationActivityTable(),
                                                &columnsByActivity());
}

Ref<cEventReservationActivities>
EventsManage::GetEventActivityReservations(std::int32_t ActivityId, const std::string& OrderBy)
{
    return reported([&] { return findLinesOfActivity(ActivityId, OrderBy); });
}

Ref<cEventReservationActivities> EventsManage::GetEventSponsorships(std::int32_t EventId)
{
    return reported([&] {
        const auto lines = readAll<cEventReservationActivities>(
            "SELECT eera.*, eer.FKDonorId, dd.Id As DonorIdCheck, dd.Display As DonorName, "
            "eea.Name As ActivityName FROM (((events_event_reservations_activities eera "
            "INNER JOIN events_event_reservations eer ON eera.FKReservationId = eer.id) "
            "INNER JOIN events_event_activities eea ON eera.FKActivityID = eea.Id) "
            "LEFT JOIN donor_donors dd ON eer.FKDonorId = dd.Id) WHERE eer.FKEventId=" +
                literal(EventId, Kind::key) +
                " AND eea.Sponsorship <> 0 ORDER BY dd.Display, eea.Name",
            reservationActivityTable(), &sponsorshipColumns());
        lines->each([](const auto& line) { line->setSponsorship(true); });
        return lines;
    });
}

Ref<Object> EventsManage::GetEventReservationAndActivitiesRecordSet(std::int32_t EventId,
                                                                    const std::string& OrderBy,
                                                                    const std::string& FilterBy)
{
    return reported([&] {
        Statement statement(reservationsWithLines(literal(EventId, Kind::key)));
        if (!FilterBy.empty()) statement.add("AND " + FilterBy);
        if (!OrderBy.empty()) statement.add("ORDER BY " + OrderBy);
        return host().document().dataSet(statement.text());
    });
}

} // namespace qmevents
