// Records a gift: for the reservation that the caller names, or for a donor alone.

import { all, App, ask, read, release, set, write } from "../../lib/app.js";
import { startDialogPage } from "../../lib/dialog_page.js";
import { createForm } from "../../lib/form.js";
import { bindKey } from "../../lib/keys.js";
import { dueWords } from "../../lib/money_words.js";
import { reportFailure } from "../../lib/notice.js";
import { recordEditor } from "../../lib/record_editor.js";
import { guardUnsaved } from "../../lib/unsaved.js";
import { DateTime } from "../../lib/values.js";
import { manage } from "../../events/addin.js";
import { loadLookups } from "../../events/lookups.js";
import { standingOf } from "../../events/reservations.js";

const byId = (id) => document.getElementById(id);
const donations = () => App.Modules.Donation.Donations;

const codes = { FundId: "FKFundId", CampaignId: "FKCampaignId", SourceId: "FKAppealId" };
const groups = [
    {
        fields: [
            { name: "Amount", label: "Amount", kind: "money", required: true },
            { name: "GiftDate", label: "Received on", kind: "date", required: true },
            { name: "FundId", label: "Fund", kind: "choice" },
            { name: "CampaignId", label: "Campaign", kind: "choice" },
            { name: "SourceId", label: "Appeal", kind: "choice" },
            { name: "Note", label: "Note", kind: "multiline", rows: 2, wide: true },
        ],
    },
];
const reservationColumns = ["Id", "FKEventId", "FKdonorId", "AmountPaid", "DonationPaymentsAmount",
    "Activities.TotalExpected"];

startDialogPage(async ({ session, format, close }) => {
    const [donor, reservation] = await all(
        ["donorid", "donation-reservationId"].map((name) => ask.call(App.Shell.Dialog(name))),
    );
    const paid = await readReservation(Number(reservation) || 0);
    let donorId = Number(donor) || 0;
    const lookups = await loadLookups(Object.values(codes));
    const choices = Object.fromEntries(
        Object.entries(codes).map(([name, lookup]) => [name, lookups[lookup]]),
    );
    const form = createForm(byId("gift"), groups, { format, choices });
    const editor = recordEditor({
        form,
        format,
        open: newGift,
        save: (gift) => donations().SaveGift(gift),
        fieldOf: (message) => (message.includes("amount") ? "Amount" : "GiftDate"),
    });
    editor.show({ GiftDate: new DateTime(), FundId: 0, CampaignId: 0, SourceId: 0 });
    const due = paid?.stands.due;
    form.fill({
        GiftDate: DateTime.of(session.today),
        ...(due && !due.isNegative && { Amount: due.rounded() }),
        ...paid?.codes,
    });
    let isTouched = false;
    const unguard = guardUnsaved(() => isTouched);
    byId("gift").addEventListener("input", () => {
        isTouched = true;
    });
    byId("purpose").textContent = paid
        ? ` for a reservation at ${paid.eventName}, ${dueWords(paid.stands, format)}`
        : "";
    await showDonor();

    async function newGift() {
        const gift = await donations().GetNewGift();
        await write(gift, {
            DonorId: donorId,
            EventId: paid?.eventId ?? 0,
            ReservationId: paid?.id ?? 0,
        });
        return gift;
    }

    async function showDonor() {
        const found = donorId ? await App.Modules.donor.DonorManage.GetSmallDonor(donorId) : null;
        byId("donor").textContent = found ? await found.Display : "Nobody chosen yet";
        byId("choose").hidden = Boolean(found);
        byId("gift").hidden = !found;
        if (found) form.fields.get("Amount").focus();
        else byId("choose").focus();
    }

    async function chooseDonor() {
        const dialog = await App.Modules.donor.Dialogs.NewDialog("getdonor");
        await write(dialog, { Title: "Choose a Donor", AllowNew: true, AllowAdvanced: true });
        if (await dialog.Create()) {
            donorId = await dialog.DonorId;
            await set(App.Shell.Dialog("donorid"), donorId);
            await showDonor();
        }
        release(dialog);
    }

    function review() {
        const values = form.values();
        if (!values) return;
        const facts = [...form.fields.values()]
            .map(({ name, label, text }) => [label, text(values[name])])
            .filter(([, text]) => text);
        byId("facts").replaceChildren(...facts.map(factOf));
        turn(true);
        byId("review-title").focus();
    }

    function turn(isReview) {
        byId("gift").hidden = isReview;
        byId("review").hidden = !isReview;
    }

    let isRecording = false;
    async function record() {
        if (isRecording) return;
        isRecording = true;
        byId("record").disabled = true;
        try {
            const { outcome } = await editor.submit();
            if (outcome !== "saved") {
                turn(false);
                return;
            }
            unguard();
            await close(true);
        } finally {
            isRecording = false;
            byId("record").disabled = false;
        }
    }

    byId("choose").addEventListener("click", () => chooseDonor().catch(reportFailure));
    byId("gift").addEventListener("submit", (event) => {
        event.preventDefault();
        review();
    });
    byId("change").addEventListener("click", () => {
        turn(false);
        form.fields.get("Amount").focus();
    });
    byId("record").addEventListener("click", record);
    bindKey("Ctrl+Enter", "Go on", () => (byId("review").hidden ? review() : record()));
});

function factOf([label, text]) {
    const pair = document.createElement("div");
    const term = document.createElement("dt");
    term.textContent = label;
    const value = document.createElement("dd");
    value.className = "lines";
    value.textContent = text;
    pair.append(term, value);
    return pair;
}

/** The reservation that is paid for: its event, how it stands, and where its money goes. */
async function readReservation(id) {
    const held = id ? await manage().GetEventReservation(id) : null;
    if (!held) return undefined;
    const values = await read(held, reservationColumns);
    const { rows: lines } = (await all([ask.list(held.Activities, ["FKActivityId"])]))[0];
    release(held);
    const [event, activity] = await Promise.all([
        read(manage().GetEvent(values.FKEventId), ["Name", ...Object.values(codes)]),
        lines.length > 0
            ? read(manage().GetEventActivity(lines[0].FKActivityId), Object.values(codes))
            : {},
    ]);
    return {
        id,
        eventId: values.FKEventId,
        eventName: event.Name,
        stands: standingOf(values),
        codes: Object.fromEntries(
            Object.entries(codes).map(([name, code]) => [name, activity[code] || event[code] || 0]),
        ),
    };
}
