// The fields of an activity as its form shows them, and how many of it are left.

import { longestName } from "./event_fields.js";

const countedOnly = 1;

/** Whether units of an activity are counted without being limited. */
export function unlimited({ QuantityType }) {
    return QuantityType === countedOnly;
}

/** Units that can still be reserved; undefined where there is no limit. */
export function quantityLeft(activity) {
    if (unlimited(activity)) return undefined;
    return Math.max(activity.QuantityAvailable - activity.QuantityInUse, 0);
}

/** The two ways to count, as choices. */
export const quantityTypes = [
    { id: 0, name: "Limited", visible: true },
    { id: countedOnly, name: "Unlimited", visible: true },
];

export const activityGroups = [
    {
        title: "Activity",
        fields: [
            {
                name: "Name",
                label: "Activity name",
                kind: "text",
                most: longestName,
                required: true,
                wide: true,
            },
            { name: "Description", label: "Description", kind: "multiline", wide: true },
            {
                name: "Sponsorship",
                label: "This is a sponsorship",
                kind: "yesNo",
                hint: "Counted apart from tickets and other items.",
            },
        ],
    },
    {
        title: "Price and quantity",
        fields: [
            { name: "ListPrice", label: "Price", kind: "money" },
            {
                name: "Cost",
                label: "Cost",
                kind: "money",
                hint: "What one unit costs the organisation.",
            },
            {
                name: "QuantityType",
                label: "Quantity",
                kind: "choice",
                none: "Limited",
            },
            { name: "QuantityAvailable", label: "Units on offer", kind: "whole" },
        ],
    },
    {
        title: "Gifts",
        fields: [
            {
                name: "FKFundId",
                label: "Fund",
                kind: "choice",
                hint: "Payments for this activity go here.",
            },
            { name: "FKCampaignId", label: "Campaign", kind: "choice" },
            { name: "FKAppealId", label: "Appeal", kind: "choice" },
        ],
    },
];
