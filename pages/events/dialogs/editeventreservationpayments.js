// What was paid for a reservation: gifts of the donation module, and what was paid directly. A gift
// is added by the donation wizard, which the command starts once this window has closed.

import { App, read, set } from "../../lib/app.js";
import { startDialogPage } from "../../lib/dialog_page.js";
import { createForm } from "../../lib/form.js";
import { bindKey } from "../../lib/keys.js";
import { dueWords, standing } from "../../lib/money_words.js";
import { recordEditor } from "../../lib/record_editor.js";
import { guardUnsaved } from "../../lib/unsaved.js";
import { Currency } from "../../lib/values.js";
import { manage } from "../addin.js";
import { readPayments, standingOf } from "../reservations.js";
import { givenObject } from "./given.js";

const byId = (id) => document.getElementById(id);
const columns = ["Id", "FKEventId", "FKdonorId", "AmountPaid", "DonationPaymentsAmount",
    "Activities.TotalExpected"];
const groups = [
    {
        fields: [
            {
                name: "AmountPaid",
                label: "Paid directly",
                kind: "money",
                hint: "What was paid outside the donation module.",
            },
        ],
    },
];

startDialogPage(async ({ format, heading, close, setTitle }) => {
    const [action, reservation] = await Promise.all([
        App.Shell.Dialog("action"),
        givenObject("eventreservation", "AmountPaid"),
    ]);
    const mayEdit = action === "edit";
    setTitle(mayEdit ? "Reservation Payments" : "View Reservation Payments");
    if (heading) byId("heading").textContent = heading;
    if (!reservation) {
        byId("whose").textContent = "The reservation no longer exists.";
        byId("only-view").hidden = false;
        return;
    }
    const values = await read(reservation, columns);
    const [donor, payments] = await Promise.all([
        App.Modules.donor.DonorManage.GetSmallDonor(values.FKdonorId),
        readPayments(values.Id),
    ]);
    byId("whose").textContent = donor ? await donor.Display : "The donor no longer exists.";
    byId("standing").hidden = false;
    showPayments(payments, format);
    showStanding(standingOf(values), format);
    byId("only-view").hidden = mayEdit;
    if (!mayEdit) return document.querySelector("#only-view button").focus();

    const form = createForm(byId("record"), groups, { format });
    const editor = recordEditor({
        form,
        format,
        open: () => manage().GetEventReservation(values.Id),
        lock: () => App.Document.GetLock("event", values.FKEventId),
        save: (record) => manage().UpdateEventReservation(record, true),
        fieldOf: () => "AmountPaid",
    });
    editor.show({ AmountPaid: values.AmountPaid });
    byId("record").hidden = false;
    byId("add").focus();
    const unguard = guardUnsaved(form.isChanged);
    byId("record").addEventListener("input", () => {
        const { value } = form.fields.get("AmountPaid").read();
        if (!(value instanceof Currency)) return;
        showStanding(standing({ ...standingOf(values), direct: value }), format);
    });

    let isBusy = false;
    /** Saves what was typed, then closes; `returnAction` tells the command how to go on. */
    async function finish(returnAction) {
        if (isBusy) return;
        isBusy = true;
        try {
            if (form.isChanged()) {
                const { outcome } = await editor.submit();
                if (outcome === "gone") form.fail("The reservation was deleted by another user.");
                if (outcome !== "saved") return;
            }
            await set(App.Shell.Dialog("returnaction"), returnAction);
            unguard();
            await close(true);
        } finally {
            isBusy = false;
        }
    }
    byId("record").addEventListener("submit", (event) => {
        event.preventDefault();
        finish("");
    });
    byId("add").addEventListener("click", () => finish("addpayment"));
    bindKey("Ctrl+Enter", "Save", () => finish(""));
});

function showStanding(stands, format) {
    for (const name of ["expected", "direct", "gifts"]) {
        byId(name).textContent = format.money(stands[name].rounded());
    }
    byId("due").textContent = dueWords(stands, format);
}

function showPayments(payments, format) {
    byId("payments").hidden = payments.length === 0;
    byId("no-payments").hidden = payments.length > 0;
    for (const { DonationAmount, ActualDate, ExpectedDate, Note } of payments) {
        const row = byId("payments").tBodies[0].insertRow();
        const received = ActualDate ? format.date(ActualDate) : "not yet";
        const expected = !ActualDate && ExpectedDate ? ` (expected ${format.date(ExpectedDate)})` : "";
        row.insertCell().textContent = `${received}${expected}`;
        row.insertCell().textContent = Note;
        const amount = row.insertCell();
        amount.className = "number";
        amount.textContent = format.money(DonationAmount.rounded());
    }
}
