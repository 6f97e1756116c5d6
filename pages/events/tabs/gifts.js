// The gifts and pledges for the event, those for its reservations among them.

import { App, list, write } from "../../lib/app.js";
import { DateTime } from "../../lib/values.js";
import { recordTab } from "./record_tab.js";

const columns = [
    "Id",
    "PaymentId",
    "DonorId",
    "DonorName",
    "Pledge",
    "DonationAmount",
    "ActualDate",
    "ExpectedAmount",
    "ExpectedDate",
    "ReservationId",
    "Note",
];

const donations = () => App.Modules.Donation.Donations;

export const tab = recordTab({
    key: "gifts",
    title: "Gifts",
    right: "donations/view",

    async load({ eventId }) {
        const criteria = await donations().GetNewDonationCriteria();
        const event = await App.Provider.VToSQL(eventId, 2);
        const reservations = `SELECT Id FROM events_event_reservations WHERE FKEventId = ${event}`;
        await write(criteria, {
            CustomWhere: `FKEventId = ${event} OR FKReservationId IN (${reservations})`,
        });
        const { rows } = await list(donations().GetDonationsBySearch(criteria), columns);
        return rows.map((gift) => ({
            ...gift,
            GiftId: gift.Id,
            Id: gift.PaymentId,
            kind: gift.Pledge ? "Pledge" : "Gift",
            purpose: gift.ReservationId > 0 ? "Reservation" : "Event",
            ActualDate: gift.ActualDate ?? new DateTime(),
            ExpectedDate: gift.ExpectedDate ?? new DateTime(),
        }));
    },

    describe({ format }) {
        return {
            name: ["payment", "payments"],
            columns: [
                { key: "DonorName", label: "Donor", faint: ({ Note }) => Note },
                { key: "kind", label: "Kind" },
                { key: "purpose", label: "For" },
                dateColumn("ActualDate", "Received on", format),
                { key: "DonationAmount", label: "Received", number: true, total: true },
                dateColumn("ExpectedDate", "Expected on", format),
                { key: "ExpectedAmount", label: "Expected", number: true, total: true },
                { key: "Note", label: "Note", exportOnly: true },
                { key: "GiftId", label: "Gift id", exportOnly: true },
                { key: "DonorId", label: "Donor id", exportOnly: true },
                { key: "ReservationId", label: "Reservation id", exportOnly: true },
            ],
            order: { key: "ActualDate", descending: true },
            empty: "No gifts or pledges for this event yet.",
            titleOf: ({ DonorName }) => DonorName,
        };
    },
});

/** Seven columns leave no room for the names of days. */
function dateColumn(key, label, format) {
    return { key, label, text: (row) => format.date(row[key]) };
}
