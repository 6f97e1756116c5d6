#pragma once

#include "model/event_activity.h"
#include "model/event_participant.h"
#include "model/event_reservation.h"
#include "store/table.h"

namespace qmevents {

// The tables of records that are read in one file and written in another.
const Table<cEventParticipant>& participantTable();
/// Memberships; a row is identified by its three keys together.
const Table<cEventParticipantGroup>& participantGroupTable();
const Table<cEventReservation>& reservationTable();
const Table<cEventReservationActivity>& reservationActivityTable();

// Reads for use inside an operation: a failure is thrown, where the store's own report it and give
// nothing, so that it is told once and never taken for a missing record.
Ref<cEventActivity> findActivity(std::int32_t id);
Ref<cEventParticipant> findParticipant(std::int32_t id);
Ref<cEventReservation> findReservation(std::int32_t id);
Ref<cEventReservationActivities> findLinesOfActivity(std::int32_t activityId,
                                                     const std::string& orderBy = {});

} // namespace qmevents
