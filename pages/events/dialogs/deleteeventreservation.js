// Asks whether a reservation may be deleted with what hangs on it, and deletes it.

import { all, App, ask, read } from "../../lib/app.js";
import { startDialogPage } from "../../lib/dialog_page.js";
import { bindKey } from "../../lib/keys.js";
import { dueWords } from "../../lib/money_words.js";
import { manage } from "../addin.js";
import { readPayments, standingOf } from "../reservations.js";
import { givenKey } from "./given.js";

const byId = (id) => document.getElementById(id);
const columns = ["FKEventId", "FKdonorId", "ReservationDate", "AmountPaid",
    "DonationPaymentsAmount", "Activities.TotalExpected"];

startDialogPage(async ({ format, close }) => {
    const [eventId, reservationId] = await Promise.all([
        givenKey("eventid"),
        givenKey("reservationid"),
    ]);
    const reservation = reservationId ? await manage().GetEventReservation(reservationId) : null;
    if (!reservation) {
        byId("gone").hidden = false;
        return;
    }
    const values = await read(reservation, columns);
    await show(values, reservationId, format);

    byId("delete").addEventListener("submit", async (submission) => {
        submission.preventDefault();
        byId("confirm").disabled = true;
        try {
            const withGifts = new FormData(byId("delete")).get("gifts") === "delete";
            const event = eventId || values.FKEventId;
            const isDeleted = await manage().DeleteEventReservation(
                event, reservationId, true, true, withGifts,
            );
            if (isDeleted) await close(true);
        } finally {
            byId("confirm").disabled = false;
        }
    });
    bindKey("Ctrl+Enter", "Delete", () => byId("delete").requestSubmit());
});

async function show(values, reservationId, format) {
    const [donor, lines, activities, payments] = await Promise.all([
        App.Modules.donor.DonorManage.GetSmallDonor(values.FKdonorId),
        all([
            ask.list(manage().GetEventReservationActivities(reservationId), [
                "FKActivityId",
                "Quantity",
            ]),
        ]),
        all([ask.list(manage().GetEventActivities(values.FKEventId), ["Id", "Name"])]),
        readPayments(reservationId),
    ]);
    byId("donor").textContent = donor ? await donor.Display : "a donor who no longer exists";
    byId("when").textContent = ` of ${format.longDate(values.ReservationDate)}`;
    byId("lines").append(
        ...lines[0].rows.map(({ FKActivityId, Quantity }) => {
            const item = document.createElement("li");
            const name = activities[0].rows.find(({ Id }) => Id === FKActivityId)?.Name;
            item.textContent = `${format.whole(Quantity)} × ${name ?? "a deleted activity"}`;
            return item;
        }),
    );
    const stands = standingOf(values);
    const direct = stands.direct.isZero
        ? ""
        : ` ${format.money(stands.direct.rounded())} was paid directly.`;
    byId("money").textContent = `It comes to ${format.money(stands.expected.rounded())}, ` +
        `${dueWords(stands, format)}.${direct}`;
    byId("gifts").hidden = payments.length === 0;
    const gifts = payments.length === 1 ? "1 payment" : `${payments.length} payments`;
    byId("gifts-legend").textContent =
        `Gifts tied to it: ${gifts}, ${format.money(stands.gifts.rounded())} received`;
    byId("delete").hidden = false;
    document.querySelector("[data-cancel]").focus();
}
