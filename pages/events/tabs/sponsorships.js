// Who sponsors the event, and with what.

import { list } from "../../lib/app.js";
import { times } from "../../lib/money_words.js";
import { commands, manage } from "../addin.js";
import { recordTab } from "./record_tab.js";

const columns = [
    "Id",
    "FKReservationId",
    "FKdonorId",
    "DonorName",
    "DonorExists",
    "ActivityName",
    "Quantity",
    "Price",
    "Notes",
];

export const tab = recordTab({
    key: "sponsorships",
    title: "Sponsorships",

    async load({ eventId }) {
        const { rows } = await list(manage().GetEventSponsorships(eventId), columns);
        return rows.map((line) => ({
            ...line,
            donor: line.DonorExists ? line.DonorName : "A former donor",
            amount: times(line.Price, line.Quantity),
        }));
    },

    describe({ eventId, allowed }) {
        const open = ({ FKReservationId }) =>
            commands().EditEventReservation(eventId, FKReservationId);
        return {
            name: ["sponsorship", "sponsorships"],
            columns: [
                { key: "donor", label: "Sponsor", faint: ({ Notes }) => Notes },
                { key: "ActivityName", label: "Sponsorship" },
                { key: "Quantity", label: "Quantity", number: true, total: true },
                { key: "Price", label: "Price", number: true },
                { key: "amount", label: "Amount", number: true, total: true },
                { key: "Notes", label: "Notes", exportOnly: true },
                { key: "FKReservationId", label: "Reservation id", exportOnly: true },
                { key: "FKdonorId", label: "Donor id", exportOnly: true },
            ],
            order: { key: "donor", descending: false },
            empty: "No sponsorships have been reserved yet.",
            titleOf: ({ donor, ActivityName }) => `${ActivityName} of ${donor}`,
            actions: allowed("events/edit") ? [{ label: "Reservation", run: open }] : [],
        };
    },
});
