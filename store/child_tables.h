#pragma once

#include "model/event_activity.h"
#include "model/event_expense.h"
#include "model/event_participant.h"
#include "model/event_reservation.h"
#include "model/event_task.h"
#include "store/table.h"

namespace qmevents {

// The tables of the records that belong to an event.
const Table<cEventActivity>& activityTable();
const Table<cEventParticipant>& participantTable();
/// Memberships; a row is identified by its three keys together.
const Table<cEventParticipantGroup>& participantGroupTable();
const Table<cEventReservation>& reservationTable();
const Table<cEventReservationActivity>& reservationActivityTable();
const Table<cEventExpense>& expenseTable();
const Table<cEventTask>& taskTable();

} // namespace qmevents
