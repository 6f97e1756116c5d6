#pragma once

#include <span>
#include <string>
#include <string_view>

#include "host/document/dialect.h"
#include "host/lists/list_fields.h"

namespace refhost {

/// A kind of list: which records it holds.
struct ListType {
    const char* name;    ///< "donors", "donations" or "pledges".
    const char* title;   ///< "Donors".
    const char* builder; ///< The type that builder files for it are written for.
    const char* source;  ///< The table, whose alias is d.
    const char* condition;
    const char* donorId;   ///< The expressions that lead from a row to its donor and its event,
    const char* eventId;   ///< unless a module's field tells the event.
    const char* operation; ///< The right that a user needs for lists of the type.
    const char* sort;      ///< The field by which a new list is sorted.
};

std::span<const ListType> listTypes();
/// The type called `name`; error 5 for another name.
const ListType& listType(std::string_view name);

/// What the host itself knows of the records of a list.
ListOffer ownOffer(const ListType& type, Dialect dialect);

} // namespace refhost
