// The lists that events are given from, as the settings page shows and edits them.

import { longestName } from "./event_fields.js";

const common = ["Name", "Description", "Visible"];

/** The further fields of a location: names as its dialog exchanges them. */
export const locationFields = [
    { name: "contactname", label: "Contact", kind: "text", most: longestName },
    { name: "phone", label: "Telephone", kind: "text", most: longestName },
    { name: "fax", label: "Fax", kind: "text", most: longestName },
    { name: "email", label: "Email", kind: "text", most: longestName },
    { name: "address", label: "Address", kind: "multiline", rows: 3, wide: true },
    { name: "notes", label: "Notes", kind: "multiline", rows: 3, wide: true },
];

/** The fields of every item's form, with `more` of one list between. */
export function listItemFields(more) {
    return [
        {
            name: "name",
            label: "Name",
            kind: "text",
            most: longestName,
            required: true,
            wide: true,
        },
        { name: "description", label: "Description", kind: "multiline", rows: 2, wide: true },
        ...more,
        {
            name: "visible",
            label: "Offered in lists",
            kind: "yesNo",
            wide: true,
            hint: "One that is not offered stays on the events that have it.",
        },
    ];
}

const locationProperties = ["ContactName", "Phone", "Fax", "Email", "Address", "Notes"];

/**
 * The lists: what an item is called, the end of the store's members for one and for all, the
 * dialog's key and its value that holds the list, the properties that the dialog edits, and the
 * field of an event that uses an item.
 */
export const lookupLists = [
    {
        key: "categories",
        title: "Categories",
        thing: "category",
        one: "EventCategory",
        all: "EventCategories",
        properties: common,
        usedBy: "FKCategoryId",
    },
    {
        key: "statuses",
        title: "Statuses",
        thing: "status",
        one: "EventStatus",
        all: "EventStatuses",
        properties: common,
        usedBy: "FKStatusId",
    },
    {
        key: "locations",
        title: "Locations",
        thing: "location",
        one: "EventLocation",
        all: "EventLocations",
        properties: [...common, ...locationProperties],
        usedBy: "FKLocationId",
    },
    {
        key: "coordinators",
        title: "Coordinators",
        thing: "coordinator",
        one: "EventCoordinator",
        all: "EventCoordinators",
        id: "FKdonorId",
        name: "Display",
        usedBy: "FKCoordinatorId",
    },
    {
        key: "groups",
        title: "Invitation groups",
        thing: "invitation group",
        one: "EventInvitationGroup",
        all: "EventInvitationGroups",
        properties: common,
    },
];

/** The words of a deletion: what it is asked about, and what becomes of the `uses` of the item. */
export function deletionText({ thing, usedBy }, name, uses, format) {
    const question = `Delete the ${thing} “${name}”?`;
    if (!uses) return `${question}\nNothing uses it.`;
    const count = format.whole(uses);
    if (!usedBy) {
        const people = uses === 1 ? "1 participant leaves" : `${count} participants leave`;
        return `${question}\n${people} the group.`;
    }
    const events = uses === 1 ? "1 event is" : `${count} events are`;
    return `${question}\n${events} left without a ${thing}.`;
}
