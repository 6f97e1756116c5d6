#pragma once

#include <string>

#include "automation/collection.h"

namespace qmevents {

/// The fields that an activity's stored document defines (cEventActivityReservationField). A
/// document that cannot be read is reported and gives none.
Ref<Collection> readReservationFields(const std::string& document);

/// The values that a reservation line's stored document holds (cEventReservationActivityField). A
/// document that cannot be read is reported and gives none.
Ref<Collection> readReservationFieldValues(const std::string& document);

} // namespace qmevents
