#include "store/child_tables.h"

#include "store/audit.h"
#include "store/reservation_field_xml.h"

namespace qmevents {
namespace {

// The column of a document with reservation fields or their values.
template <typename C>
Column<C> fieldDocument(Ref<Collection> (*readFields)(const std::string&))
{
    return {"ReservationInfo", Kind::text, Written::always,
            [](const C& record) { return Value(StoreAccess::storedFields(record)); },
            [readFields](C& record, const Value& value) {
                std::string document = toText(value);
                if (document.empty()) return;
                StoreAccess::loadFields(record, readFields(document), document);
            }};
}

template <typename C>
Table<C> audited(std::string name, std::vector<Column<C>> columns)
{
    addAuditColumns(columns);
    return Table<C>(std::move(name), std::move(columns));
}

} // namespace

const Table<cEventActivity>& activityTable()
{
    using C = cEventActivity;
    static const auto table =
        audited<C>("events_event_activities",
                   {
                       column("FKEventId", Kind::key, &C::FKEventId),
                       // Bracketed in updates only.
                       column<C>("Name", Kind::text, &C::Name, Written::onInsert),
                       column<C>("[Name]", Kind::text, &C::Name, Written::onUpdate),
                       column("Description", Kind::text, &C::Description),
                       column("ListPrice", Kind::number, &C::ListPrice),
                       column("Cost", Kind::number, &C::Cost),
                       column("QuantityAvailable", Kind::number, &C::QuantityAvailable),
                       column("Sponsorship", Kind::yesNo, &C::Sponsorship),
                       fieldDocument<C>(readReservationFields),
                       column("QuantityType", Kind::number, &C::QuantityType),
                       column("FKFundId", Kind::key, &C::FKFundId),
                       column("FKCampaignId", Kind::key, &C::FKCampaignId),
                       column("FKAppealId", Kind::key, &C::FKAppealId),
                   });
    return table;
}

const Table<cEventParticipant>& participantTable()
{
    using C = cEventParticipant;
    static const auto table =
        audited<C>("events_event_participants", {
                                                    column("FKEventId", Kind::key, &C::FKEventId),
                                                    column("FKDonorId", Kind::key, &C::FKdonorId),
                                                    column("Status", Kind::number, &C::Status),
                                                    column("Notes", Kind::text, &C::Notes),
                                                    column("Attended", Kind::yesNo, &C::Attended),
                                                });
    return table;
}

const Table<cEventParticipantGroup>& participantGroupTable()
{
    using C = cEventParticipantGroup;
    static const Table<C> table{
        "events_event_participants_groups",
        {
            column("FKEventId", Kind::key, &C::FKEventId),
            column("FKDonorId", Kind::key, &C::FKdonorId),
            column("FKInvitationGroupId", Kind::key, &C::FKInvitationGroupId),
        }};
    return table;
}

const Table<cEventReservation>& reservationTable()
{
    using C = cEventReservation;
    static const auto table = audited<C>(
        "events_event_reservations", {
                                         column("FKEventId", Kind::key, &C::FKEventId),
                                         column("FKDonorId", Kind::key, &C::FKdonorId),
                                         column("ReservationDate", Kind::date, &C::ReservationDate),
                                         column("Description", Kind::text, &C::Description),
                                         column("AmountPaid", Kind::number, &C::AmountPaid),
                                     });
    return table;
}

const Table<cEventReservationActivity>& reservationActivityTable()
{
    using C = cEventReservationActivity;
    static const auto table =
        audited<C>("events_event_reservations_activities",
                   {
                       column("FKReservationId", Kind::key, &C::FKReservationId),
                       column("FKActivityId", Kind::key, &C::FKActivityId),
                       column("Quantity", Kind::number, &C::Quantity),
                       column("Price", Kind::number, &C::Price),
                       column("Notes", Kind::text, &C::Notes),
                       fieldDocument<C>(readReservationFieldValues),
                   });
    return table;
}

const Table<cEventExpense>& expenseTable()
{
    using C = cEventExpense;
    static const auto table =
        audited<C>("events_event_expenses", {
                                                column("FKEventId", Kind::key, &C::FKEventId),
                                                column("ExpenseDate", Kind::date, &C::ExpenseDate),
                                                column("Description", Kind::text, &C::Description),
                                                column("Amount", Kind::number, &C::Amount),
                                            });
    return table;
}

const Table<cEventTask>& taskTable()
{
    using C = cEventTask;
    static const auto table = audited<C>(
        "events_event_tasks", {
                                  column("FKEventId", Kind::key, &C::FKEventId),
                                  column("Name", Kind::text, &C::Name),
                                  column("Notes", Kind::text, &C::Notes),
                                  column("DueDateTime", Kind::date, &C::DueDateTime),
                                  column("Completed", Kind::yesNo, &C::Completed),
                                  column("FKAssignedToId", Kind::key, &C::FKAssignedToId),
                              });
    return table;
}

} // namespace qmevents
