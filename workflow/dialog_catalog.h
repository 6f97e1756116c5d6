#pragma once

#include <span>
#include <string_view>

#include "automation/object_base.h"

namespace qmevents {

/// How a dialog's value travels between its property and its page.
enum class Exchange {
    input,         ///< Property to page.
    requiredInput, ///< The same; an empty one is reported.
    object,        ///< An object by reference, which the page edits in place.
    requiredObject,
    output,      ///< Page to property, read-only for callers.
    inputOutput, ///< Both ways.
};

/// One value of a dialog: the property that callers use and the name that its page uses.
struct DialogValue {
    std::string_view property;
    std::string_view pageName;
    Exchange exchange;
    bool isId = false; ///< A record's identifier: starts as 0 and is read back as a whole number.
    Ref<Object> (*whenNothing)() = nullptr; ///< What the page gets in place of no object.
};

/// Which of the three headings a dialog has and sends to its page.
enum class Headings {
    all,            ///< Title, Heading and Description.
    noDescription,  ///< Title, Heading and Description; the description is not sent.
    ownDescription, ///< "description" carries the item's own.
    titleOnly,      ///< Only Title.
};

/// One dialog: its key, which is also its content page, its class, and what it exchanges.
struct DialogDescription {
    std::string_view key;
    std::string_view className;
    Headings headings;
    std::span<const DialogValue> values;
    std::string_view purpose;
};

/// The dialogs that the factory makes, in its order.
std::span<const DialogDescription> dialogCatalog();

/// The result list of an event search, which is made by the find dialog rather than by key.
const DialogDescription& eventsResultsDialog();

} // namespace qmevents
