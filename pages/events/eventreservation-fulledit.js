// A reservation with its lines, new or stored.

import { App, all, ask, read, release, write } from "../lib/app.js";
import { createForm } from "../lib/form.js";
import { bindKey } from "../lib/keys.js";
import { confirmBox } from "../lib/message_box.js";
import { dueWords, nothing, standing } from "../lib/money_words.js";
import { noticeLater, reportFailure } from "../lib/notice.js";
import { startPage } from "../lib/page.js";
import { recordEditor } from "../lib/record_editor.js";
import { guardUnsaved } from "../lib/unsaved.js";
import { Currency, DateTime } from "../lib/values.js";
import { readOffer } from "./activity_offer.js";
import { commands, manage } from "./addin.js";
import { donorAddress } from "./donors.js";
import { putLines, readLine, readLines } from "./line_records.js";
import { sameLine } from "./line_rules.js";
import { linesGrid } from "./lines_grid.js";
import { showMissing } from "./missing_event.js";

const query = new URLSearchParams(location.search);
const id = query.get("action") === "new" ? 0 : Number(query.get("id"));
const byId = (name) => document.getElementById(name);
const gone = "This reservation no longer exists. It may have been deleted by another user.";

const groups = [
    {
        title: "Reservation",
        fields: [
            { name: "ReservationDate", label: "Date", kind: "date", required: true },
            {
                name: "AmountPaid",
                label: "Paid directly",
                kind: "money",
                hint: "What was paid outside the donation module. Gifts are counted beside it.",
            },
            {
                name: "Description",
                label: "Description",
                kind: "multiline",
                rows: 2,
                wide: true,
            },
        ],
    },
];
const names = groups[0].fields.map(({ name }) => name);
const tooMany = /^The quantity entered exceeds the maximum/;
const fieldsByMessage = { "The reservation date is required.": "ReservationDate" };

startPage("Events", async ({ session, format, allowed }) => {
    const start = await startValues(session);
    if (!start) {
        showMissing(gone, { title: "Reservation not found" });
        return;
    }
    const { eventId, eventName } = start;
    let { donorId, lines: loadedLines } = start;
    let isNew = id === 0;
    let refused = [];

    const form = createForm(byId("reservation"), groups, { format });
    const grid = linesGrid(byId("lines"), { format, onChange: showStanding, onDetails });
    const common = { form, save, format, fieldOf };
    const newEditor = () =>
        recordEditor({ ...common, open: () => manage().GetNewEventReservation(eventId) });
    const storedEditor = () =>
        recordEditor({
            ...common,
            open: () => manage().GetEventReservation(id),
            lock: () => App.Document.GetLock("event", eventId),
        });
    let editor = isNew ? newEditor() : storedEditor();

    editor.show(isNew ? { ReservationDate: new DateTime() } : start.values);
    if (isNew) form.fill(start.values);
    grid.show(loadedLines, await readOffer(eventId, id));
    if (isNew && loadedLines.length === 0) grid.add();
    let linesBefore = grid.state;
    let donorBefore = donorId;
    showHead(start, isNew);
    await showDonor();
    byId("reservation").hidden = false;
    byId("reservation").addEventListener("input", showStanding);
    showStanding();
    const isChanged = () =>
        form.isChanged() || grid.state !== linesBefore || donorId !== donorBefore;
    const unguard = guardUnsaved(isChanged);

    function showStanding() {
        const { value } = form.fields.get("AmountPaid").read();
        const direct = value instanceof Currency ? value : nothing;
        const stands = standing({ expected: grid.expected(), direct, gifts: start.gifts });
        for (const name of ["expected", "direct", "gifts"]) {
            byId(name).textContent = format.money(stands[name].rounded());
        }
        byId("due").textContent = dueWords(stands, format);
        if (!grid.isEmpty) byId("lines-fault").textContent = "";
    }

    async function showDonor() {
        const donor = donorId
            ? await App.Modules.donor.DonorManage.GetSmallDonor(donorId)
            : undefined;
        const name = donor ? await donor.Display : "";
        byId("donor").hidden = !donor;
        byId("donor").textContent = name;
        byId("donor").href = donorAddress(donorId);
        byId("no-donor").hidden = Boolean(donor);
        byId("no-donor").textContent = donorId
            ? "The donor no longer exists."
            : "Nobody chosen yet.";
        byId("choose-donor").textContent = donor ? "Choose another donor" : "Choose a donor";
        byId("donor-fault").textContent = "";
    }

    async function chooseDonor() {
        const dialog = await App.Modules.donor.Dialogs.NewDialog("getdonor");
        await write(dialog, {
            Title: "Select Event Reservation Donor",
            Heading: "Find Event Reservation Donor",
            AllowNew: true,
            ShowAll: true,
            AllowAdvanced: true,
        });
        if (await dialog.Create()) {
            donorId = await dialog.DonorId;
            await showDonor();
        }
        release(dialog);
    }

    /** Edits a line in its dialog, on a reservation in memory that holds what the page shows. */
    async function onDetails(lineEditor) {
        const lines = grid.read();
        if (!lines) return;
        const at = grid.indexOf(lineEditor);
        const working = isNew
            ? await manage().GetNewEventReservation(eventId)
            : await manage().GetEventReservation(id);
        if (!working) return showGone();
        const held = await putLines(working, lines);
        await commands().EditEventReservationActivity(held[at], working);
        const after = await readLine(held[at]);
        if (!sameLine(after, lines[at])) grid.replace(lineEditor, { ...after, id: lines[at].id });
        release(working, ...held);
    }

    /** Puts the lines into `record`, which is as it is stored now, and saves it. */
    async function save(record) {
        const lines = grid.read();
        if (!lines) return false;
        if (!isNew) {
            const stored = await readLines(record);
            if (!sameLines(stored, loadedLines)) {
                const choice = await askAboutLines(stored);
                if (choice === "edit") return false;
                loadedLines = stored;
                if (choice === "theirs") {
                    grid.show(stored, await readOffer(eventId, id));
                    linesBefore = grid.state;
                    return storeRecord(record, stored);
                }
            }
        }
        return storeRecord(record, lines);
    }

    async function storeRecord(record, lines) {
        await putLines(record, lines);
        if (isNew || donorId !== donorBefore) await write(record, { FKdonorId: donorId });
        const isSaved = await manage().UpdateEventReservation(record, true);
        if (!isSaved) await reloadIfWrittenInPart(record);
        return isSaved;
    }

    /** A new reservation that was refused half-way has its row already: it is shown as written. */
    async function reloadIfWrittenInPart(record) {
        if (!isNew) return;
        const written = await record.Id;
        if (!written) return;
        unguard();
        noticeLater("Only a part could be saved. This is what was written.");
        const query = new URLSearchParams({ id: written, action: "edit", eventid: eventId });
        location.replace(`/events/eventreservation-fulledit?${query}`);
    }

    function fieldOf(message) {
        refused.push(message);
        return fieldsByMessage[message.split(/\r?\n/)[0].trim()];
    }

    function askAboutLines(stored) {
        const content = document.createElement("div");
        content.className = "conflicts";
        const offered = (title, lines) => {
            const part = document.createElement("section");
            const heading = document.createElement("h3");
            heading.textContent = title;
            const list = document.createElement("ul");
            list.append(
                ...lines.map((line) => {
                    const item = document.createElement("li");
                    const { name } = start.activities.get(line.activityId) ?? { name: "?" };
                    const price = format.money(line.price);
                    item.textContent = `${format.whole(line.quantity)} × ${name} at ${price}`;
                    return item;
                }),
            );
            part.append(heading, list);
            return part;
        };
        content.append(
            offered("Saved meanwhile by someone else", stored),
            offered("On this page", grid.read() ?? []),
        );
        return confirmBox({
            title: "The activities were changed by someone else",
            content,
            buttons: [
                ["mine", "Save mine"],
                ["theirs", "Take theirs"],
                ["edit", "Go on editing"],
            ],
        });
    }

    async function submit() {
        byId("lines-fault").textContent = "";
        if (!donorId) {
            byId("donor-fault").textContent = "Choose the donor who reserves.";
            byId("choose-donor").focus();
            return;
        }
        if (grid.isEmpty) {
            byId("lines-fault").textContent = "Reservation must include at least one activity.";
            byId("add-line").focus();
            return;
        }
        if (!grid.read()) return;
        setSaving(true);
        refused = [];
        try {
            const { outcome, record } = await editor.submit();
            if (outcome === "gone") showGone();
            if (outcome === "saved") await leave(record);
            if (refused.some((message) => tooMany.test(message))) {
                if (grid.placeRefusal(await readOffer(eventId, id))) form.clear();
            }
        } finally {
            setSaving(false);
        }
    }

    async function leave(record) {
        release(record);
        unguard();
        noticeLater("Reservation saved.");
        // A new one is shown where the list would leave it out for another donor's sake.
        const tab = query.get("tabname") || "events_reservations";
        await commands().ViewEvent(eventId, tab, isNew ? donorId : 0);
    }

    /** Deleted meanwhile: what was typed can still become a new reservation. */
    function showGone() {
        byId("banner-text").textContent =
            "This reservation was deleted by another user meanwhile. " +
            "What you entered is still here.";
        byId("banner").hidden = false;
        byId("save-as-new").hidden = false;
        byId("save").hidden = true;
        byId("save-as-new").focus();
    }

    byId("save-as-new").addEventListener("click", async () => {
        const typed = form.values();
        const lines = grid.read();
        if (!typed || !lines) return;
        isNew = true;
        editor = newEditor();
        editor.show({ ReservationDate: new DateTime() });
        form.fill(typed);
        grid.show(lines.map((line) => ({ ...line, id: 0 })), await readOffer(eventId, 0));
        await submit();
    });
    byId("choose-donor").addEventListener("click", () => chooseDonor().catch(reportFailure));
    byId("add-line").addEventListener("click", () => grid.add().focus());
    byId("reservation").addEventListener("submit", (event) => {
        event.preventDefault();
        submit();
    });
    const back = `/events/event-details?id=${eventId}&tab=reservations`;
    byId("cancel").href = back;
    byId("crumb").href = back;
    byId("crumb").textContent = eventName;
    if (allowed("events/edit")) bindKey("Ctrl+Enter", "Save", submit);
    else showReadOnly();
});

/** What the page starts with; nothing when there is no such reservation or event. */
async function startValues(session) {
    const given = await openReservation();
    if (!given) return undefined;
    const columns = [...names, "FKEventId", "FKdonorId", "DonationPaymentsAmount"];
    const values = await read(given, columns);
    const eventId = values.FKEventId || Number(query.get("eventid"));
    const event = eventId > 0 ? await manage().GetEvent(eventId) : null;
    if (!event) return undefined;
    const [eventName, lines, activities] = await Promise.all([
        event.Name,
        readLines(given),
        readOffer(eventId, id),
    ]);
    release(given, event);
    if (id === 0 && values.ReservationDate.isZero) {
        values.ReservationDate = DateTime.of(session.today);
    }
    return {
        values: Object.fromEntries(names.map((name) => [name, values[name]])),
        eventId,
        eventName,
        donorId: values.FKdonorId,
        gifts: values.DonationPaymentsAmount,
        lines,
        activities,
    };
}

/** The reservation that is stored, the one that a command has begun, or a new one. */
async function openReservation() {
    if (id > 0) return manage().GetEventReservation(id);
    if (query.get("action") !== "new") return undefined;
    const [begun] = await all([ask.call(App.Session("eventreservation"))]);
    if (query.get("persist") === "eventreservation" && begun) return begun;
    return manage().GetNewEventReservation(Number(query.get("eventid")));
}

function sameLines(one, other) {
    return (
        one.length === other.length &&
        one.every((line) => {
            const match = other.find(({ id: key }) => key === line.id);
            return match && sameLine(line, match);
        })
    );
}

function showHead({ eventName }, isNew) {
    const title = isNew ? "New reservation" : "Edit reservation";
    byId("title").textContent = title;
    byId("event").textContent = eventName;
    document.title = `${title} - Quillmere`;
}

function setSaving(isSaving) {
    byId("save").disabled = isSaving;
    byId("save").textContent = isSaving ? "Saving…" : "Save reservation";
}

function showReadOnly() {
    byId("banner-text").textContent = "You may look at this reservation, but not change it.";
    byId("banner").hidden = false;
    for (const name of ["save", "choose-donor", "add-line"]) byId(name).hidden = true;
}
