// What a file of events holds.

import { nameIn } from "./lookups.js";

const named = [
    ["FKStatusId", "Status"],
    ["FKLocationId", "Location"],
    ["FKCategoryId", "Category"],
    ["FKCoordinatorId", "Coordinator"],
    ["FKFundId", "Fund"],
    ["FKCampaignId", "Campaign"],
    ["FKAppealId", "Appeal"],
];
const plain = [
    ["Id", "Id"],
    ["Name", "Name"],
    ["StartDateTime", "Start"],
    ["EndDateTime", "End"],
];
const figures = [
    ["MaxCapacity", "Capacity"],
    ["NumberAccepted", "Accepted"],
    ["NumberReservations", "Reservations"],
];

/** The properties of an event that a file needs. */
export const exportProperties = [...plain, ...named, ...figures].map(([name]) => name);

/** The columns of the file, choices by their names in `lookups`. */
export function exportColumns(lookups) {
    const asIs = ([name, label]) => ({ label, value: (event) => event[name] });
    const byName = ([name, label]) => ({
        label,
        value: (event) => nameIn(lookups[name], event[name]),
    });
    return [...plain.map(asIs), ...named.map(byName), ...figures.map(asIs)];
}
