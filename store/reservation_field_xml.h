#pragma once

#include <string>

#include "automation/collection.h"

namespace qmevents {

// The stored documents of reservation fields. Texts stand in CDATA sections, yes and no are 1 and
// 0; what is an attribute may stand as an element, in any order, and unknown things are passed
// over:
//
//   <fields><field name="" type="" visible=""><description/><defaultvalue/>
//     <list><listitem visible=""><value/></listitem></list></field></fields>
//   <fields><field name="" type=""><value/></field></fields>

/// The fields that an activity's stored document defines (cEventActivityReservationField). A
/// document that cannot be read is reported and gives nothing.
Ref<Collection> readReservationFields(const std::string& document);
/// The values that a reservation line's stored document holds (cEventReservationActivityField). A
/// document that cannot be read is reported and gives nothing.
Ref<Collection> readReservationFieldValues(const std::string& document);

/// The document of an activity's fields, empty for none. Error 5 for a text that no document can
/// hold.
std::string writeReservationFields(const Collection& fields);
/// The document of a reservation line's values, empty for none. Error 5 as above.
std::string writeReservationFieldValues(const Collection& values);

} // namespace qmevents
