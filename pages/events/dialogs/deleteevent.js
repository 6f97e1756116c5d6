// Asks whether an event may be deleted with all that hangs on it, and deletes it.

import { App, read } from "../../lib/app.js";
import { startDialogPage } from "../../lib/dialog_page.js";
import { bindKey } from "../../lib/keys.js";
import { manage } from "../addin.js";

const byId = (id) => document.getElementById(id);
const childCounts = [
    ["NumberActivities", "activity", "activities"],
    ["NumberParticipants", "participant", "participants"],
    ["NumberReservations", "reservation", "reservations"],
    ["Expenses.Count", "expense", "expenses"],
    ["Tasks.Count", "task", "tasks"],
];
const moneyFigures = ["CurrentRevenue", "receivedAmount", "totalPledged", "TotalExpenses"];
const columns = [
    "Name",
    "StartDateTime",
    "hasDonations",
    "ReservationsRevenue",
    "numberDonations",
    "numberPledges",
    ...moneyFigures,
    ...childCounts.map(([property]) => property),
];

startDialogPage(async ({ format, close }) => {
    const eventId = await App.Shell.Dialog("eventid");
    const event = await manage().GetEvent(eventId);
    if (!event) {
        byId("gone").hidden = false;
        return;
    }
    show(await read(event, columns), format);
    byId("delete").addEventListener("submit", async (submission) => {
        submission.preventDefault();
        if (!isNameTyped()) return;
        byId("confirm").disabled = true;
        try {
            const withGifts = new FormData(byId("delete")).get("gifts") === "delete";
            if (await manage().DeleteEvent(eventId, withGifts)) await close(true);
        } finally {
            byId("confirm").disabled = false;
        }
    });
    bindKey("Ctrl+Enter", "Delete", () => byId("delete").requestSubmit());
});

function show(values, format) {
    byId("name").textContent = values.Name;
    byId("when").textContent = ` on ${format.longDate(values.StartDateTime)}`;
    const counts = childCounts.filter(([property]) => values[property] > 0);
    byId("counts").append(
        ...counts.map(([property, one, many]) => {
            const item = document.createElement("li");
            const count = document.createElement("b");
            count.textContent = format.whole(values[property]);
            item.append(count, ` ${values[property] === 1 ? one : many}`);
            return item;
        }),
    );
    byId("children").hidden = counts.length === 0;
    byId("gifts").hidden = !values.hasDonations && values.ReservationsRevenue.isZero;
    byId("gifts-legend").textContent = giftsText(values, format);

    const hasMoney = moneyFigures.some((property) => !values[property].isZero);
    byId("typed").hidden = !hasMoney;
    byId("delete").hidden = false;
    (hasMoney ? byId("typed-name") : document.querySelector("[data-cancel]")).focus();
}

/** "Gifts tied to ...: 3 payments of $450.00 received and 1 pledge of $200.00". */
function giftsText({ receivedAmount, numberDonations, totalPledged, numberPledges }, format) {
    const counted = (count, thing, amount) =>
        `${format.whole(count)} ${thing}${count === 1 ? "" : "s"} of ${format.money(amount)}`;
    const parts = [
        numberDonations > 0 && `${counted(numberDonations, "payment", receivedAmount)} received`,
        numberPledges > 0 && counted(numberPledges, "pledge", totalPledged),
    ].filter(Boolean);
    const tied = "Gifts tied to the event or its reservations";
    return parts.length > 0 ? `${tied}: ${parts.join(" and ")}` : tied;
}

/**
 * Whether the event's name was typed where that is asked for, give or take case and blanks; says so
 * if not.
 */
function isNameTyped() {
    if (byId("typed").hidden) return true;
    const plain = (text) => text.trim().replace(/\s+/g, " ").toLowerCase();
    const control = byId("typed-name");
    const name = byId("name").textContent;
    const matches = plain(control.value) === plain(name);
    byId("typed-fault").textContent = matches ? "" : `Type “${name}” to delete it.`;
    control.setAttribute("aria-invalid", String(!matches));
    if (!matches) control.focus();
    return matches;
}
