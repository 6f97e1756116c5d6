// What can be reserved at the event.

import { list } from "../../lib/app.js";
import { times } from "../../lib/money_words.js";
import { quantityLeft, unlimited } from "../activity_fields.js";
import { commands, manage } from "../addin.js";
import { nameIn } from "../lookups.js";
import { recordTab } from "./record_tab.js";

const columns = [
    "Id",
    "Name",
    "Description",
    "ListPrice",
    "Cost",
    "QuantityAvailable",
    "QuantityInUse",
    "QuantityType",
    "Sponsorship",
    "ReservationFieldSummary",
    "FKFundId",
    "FKCampaignId",
    "FKAppealId",
];

export const tab = recordTab({
    key: "activities",
    title: "Activities",

    async load({ eventId }) {
        const { rows } = await list(manage().GetEventActivities(eventId), columns);
        return rows.map((activity) => ({
            ...activity,
            kind: activity.Sponsorship ? "Sponsorship" : "Activity",
            left: quantityLeft(activity),
            potential: times(activity.ListPrice, activity.QuantityAvailable),
        }));
    },

    describe({ eventId, allowed, lookups, format, refresh }) {
        const mayEdit = allowed("events/edit");
        const edit = ({ Id }) => commands().EditEventActivity(eventId, Id);
        const named = (key, label) => ({
            key,
            label,
            exportOnly: true,
            value: (row) => nameIn(lookups[key], row[key]),
        });
        return {
            name: ["activity", "activities"],
            columns: [
                {
                    key: "Name",
                    label: "Activity",
                    faint: ({ ReservationFieldSummary: asked }) => asked && `Asks for ${asked}`,
                },
                { key: "kind", label: "Kind" },
                { key: "ListPrice", label: "Price", number: true },
                { key: "Cost", label: "Cost", exportOnly: true },
                {
                    key: "QuantityAvailable",
                    label: "Available",
                    number: true,
                    text: (row) => (unlimited(row) ? "Unlimited" : undefined),
                    faint: ({ left }) => left > 0 && `${format.whole(left)} left`,
                },
                {
                    key: "QuantityInUse",
                    label: "Reserved",
                    number: true,
                    total: true,
                    faint: ({ left }) => left === 0 && "sold out",
                },
                { key: "left", label: "Left", exportOnly: true },
                { key: "potential", label: "Potential", number: true, total: true },
                { key: "Description", label: "Description", exportOnly: true },
                {
                    key: "ReservationFieldSummary",
                    label: "Reservation fields",
                    exportOnly: true,
                },
                named("FKFundId", "Fund"),
                named("FKCampaignId", "Campaign"),
                named("FKAppealId", "Appeal"),
            ],
            order: { key: "Name", descending: false },
            empty: "No activities yet. Reservations need at least one.",
            titleOf: ({ Name }) => Name,
            open: mayEdit ? edit : undefined,
            tools: mayEdit
                ? [
                      {
                          label: "Add activity",
                          isPrimary: true,
                          run: () => commands().AddEventActivity(eventId, "events_activities"),
                      },
                  ]
                : [],
            actions: mayEdit
                ? [
                      { label: "Edit", run: edit },
                      {
                          label: "Copy",
                          run: ({ Id }) => commands().CopyEventActivity(eventId, Id),
                      },
                      {
                          label: "Delete",
                          run: ({ Id }) =>
                              commands().DeleteEventActivity(eventId, Id).then(refresh),
                      },
                  ]
                : [],
        };
    },
});
