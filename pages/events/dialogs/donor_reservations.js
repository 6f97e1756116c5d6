// The reservations of one donor, at any event.

import { list, release } from "../../lib/app.js";
import { dueWords } from "../../lib/money_words.js";
import { manage } from "../addin.js";
import { standingOf } from "../reservations.js";

const columns = ["Id", "EventName", "ReservationDate", "Description", "AmountPaid",
    "DonationPaymentsAmount", "Activities.TotalExpected"];

/** The donor's reservations, the latest first. */
export async function readReservationsOfDonor(donorId) {
    const held = await manage().GetEventReservations(undefined, donorId);
    const { rows } = await list(held, columns);
    release(held);
    return rows;
}

/** "Spring gala, 3/7/2026: $40.00 due". */
export function reservationText(row, format) {
    const day = format.date(row.ReservationDate);
    return `${row.EventName}, ${day}: ${dueWords(standingOf(row), format)}`;
}

/** Shows `reservations` in `element` as a list of which one can be chosen. */
export function showReservations(element, reservations, { format, choose }) {
    if (reservations.length === 0) {
        const words = document.createElement("p");
        words.className = "hint";
        words.textContent = "The donor has no reservations.";
        element.replaceChildren(words);
        return;
    }
    const all = document.createElement("ul");
    all.className = "chooser";
    all.append(
        ...reservations.map((row) => {
            const button = document.createElement("button");
            button.type = "button";
            const name = document.createElement("span");
            name.textContent = row.EventName;
            const more = document.createElement("span");
            more.className = "faint";
            more.textContent = [
                format.date(row.ReservationDate),
                row.Description,
                dueWords(standingOf(row), format),
            ].filter(Boolean).join(" · ");
            button.append(name, more);
            button.addEventListener("click", () => choose(row.Id));
            const item = document.createElement("li");
            item.append(button);
            return item;
        }),
    );
    element.replaceChildren(all);
}
