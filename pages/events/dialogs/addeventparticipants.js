// Adds participants from a pasted list, a file, a mailing list, a smart list or another event: first
// who is meant, then a preview, then the adding.

import { App, list, read } from "../../lib/app.js";
import { build } from "../../lib/build.js";
import { parseCsv, saveCsv } from "../../lib/csv.js";
import { startDialogPage } from "../../lib/dialog_page.js";
import { guardUnsaved } from "../../lib/unsaved.js";
import { manage } from "../addin.js";
import { withProgress } from "../bulk_run.js";
import {
    entriesOf, entryOfLine, guessMeanings, matcher, meanings, outcomes, sortOut,
} from "../donor_matching.js";
import { findDonors } from "../donors.js";
import { accepted, overCapacity, resultLine, statuses } from "../participant_list.js";
import { addParticipants, donorsThere, readGroups, readParticipants } from "../participants.js";
import { donorLists, donorsOfList } from "./donor_lists.js";
import { givenKey } from "./given.js";

const mostShown = 200;
const largestFile = 5000000;
const byId = (id) => document.getElementById(id);
const mailings = () => App.Modules.donor.MailingManage;

startDialogPage(async ({ format, heading, close }) => {
    if (heading) byId("heading").textContent = heading;
    const eventId = await givenKey("eventid");
    const stored = eventId ? await manage().GetEvent(eventId) : null;
    if (!stored) {
        byId("gone").hidden = false;
        return;
    }
    const [event, groups, participants] = await Promise.all([
        read(stored, ["Name", "MaxCapacity"]),
        readGroups(),
        readParticipants(eventId),
    ]);
    const source = setUpSource();
    byId("status").append(...statuses.map((text, value) => new Option(text, value)));
    byId("status").value = "1";
    const boxes = groups
        .filter(({ visible }) => visible)
        .map((group) => ({ group, box: build("input", { type: "checkbox" }) }));
    byId("groups").hidden = boxes.length === 0;
    byId("groups").append(
        ...boxes.map(({ group, box }) =>
            build("label", { className: "option" }, box, build("span", { text: group.name })),
        ),
    );
    const unguard = guardUnsaved(() => byId("pasted").value.trim() || !byId("adding").hidden);
    let sorted = [];
    const toAdd = () => sorted.filter(({ outcome }) => outcome === "add");
    const rejected = () => sorted.filter(({ outcome }) => outcomes[outcome].isRejected);

    async function preview() {
        byId("fault").textContent = "";
        byId("preview").disabled = true;
        try {
            const { entries, donors, problem } = await source.read();
            if (problem) {
                byId("fault").textContent = problem;
                return;
            }
            sorted = sortOut(entries, matcher(donors), await donorsThere(eventId));
            showEntries();
            byId("source").hidden = true;
            byId("adding").hidden = false;
            byId("summary").focus();
        } finally {
            byId("preview").disabled = false;
        }
    }

    function showEntries() {
        const counted = Object.entries(outcomes)
            .map(([key, { label }]) => [label, sorted.filter((one) => one.outcome === key).length])
            .filter(([, count]) => count > 0)
            .map(([label, count]) => `${format.whole(count)} ${label}`);
        byId("summary").textContent = `${counted.join(", ")}.`;
        // What needs a look stands first.
        const order = ["unclear", "unknown", "twice", "there", "add"];
        const ordered = [...sorted].sort(
            (one, other) => order.indexOf(one.outcome) - order.indexOf(other.outcome),
        );
        byId("entries").replaceChildren(
            build("ul", {}, ...ordered.slice(0, mostShown).map(entryItem)),
            ...(ordered.length > mostShown
                ? [build("p", { className: "hint", text: `and ${ordered.length - mostShown} more` })]
                : []),
        );
        byId("save-rejected").hidden = rejected().length === 0;
        showRoom();
    }

    function entryItem(entry) {
        const { cells, donor, outcome, candidates } = entry;
        const item = build("li", { className: `entry ${outcome}` },
            build("span", { text: cells.filter(Boolean).join(", ") }),
            build("span", {
                className: "faint",
                text: [donor?.Display, outcomes[outcome].label].filter(Boolean).join(": "),
            }));
        if (candidates) item.append(candidateChoice(entry));
        return item;
    }

    /** Lets the user say which of several donors a line means. */
    function candidateChoice(entry) {
        const select = build("select", {
            className: "inline",
            "aria-label": `Which donor is ${entry.cells.filter(Boolean).join(", ")}`,
        }, new Option("Choose…", ""), ...entry.candidates.map(({ Id, Display, City, Email }) =>
            new Option([Display, City, Email, `no. ${Id}`].filter(Boolean).join(", "), Id)));
        select.addEventListener("change", async () => {
            const donor = entry.candidates.find(({ Id }) => Id === Number(select.value));
            const there = await donorsThere(eventId);
            const isTaken = sorted.some((one) => one !== entry && one.donor === donor);
            const outcome = there.has(donor.Id) ? "there" : isTaken ? "twice" : "add";
            sorted = sorted.map((one) =>
                one === entry ? { cells: entry.cells, donor, outcome } : one);
            showEntries();
            byId("summary").focus();
        });
        return select;
    }

    function showRoom() {
        const count = toAdd().length;
        const isComing = Number(byId("status").value) === accepted;
        const over = isComing ? overCapacity(participants, event.MaxCapacity, count) : 0;
        byId("over").textContent = over > 0
            ? `The event has room for ${format.whole(event.MaxCapacity)}: ` +
              `${format.whole(over)} would be too many.`
            : "";
        const people = count === 1 ? "1 participant" : `${format.whole(count)} participants`;
        byId("confirm").textContent = over > 0 ? `Add ${people} anyway` : `Add ${people}`;
        byId("confirm").disabled = count === 0;
    }

    async function add() {
        byId("confirm").disabled = true;
        try {
            const options = {
                status: Number(byId("status").value),
                groups: boxes.filter(({ box }) => box.checked).map(({ group }) => group),
            };
            const ids = toAdd().map(({ donor }) => donor.Id);
            const result = await withProgress("Adding participants", (progress) =>
                addParticipants(eventId, ids, options, progress),
            );
            if (!result) return;
            unguard();
            if (result.skipped.size === 0 && rejected().length === 0) return await close(true);
            byId("adding").hidden = true;
            byId("result").hidden = false;
            byId("result-text").textContent =
                resultLine(result.done, "added", result.skipped, format);
            if (rejected().length > 0) byId("result-text").after(byId("save-rejected"));
            byId("done").focus();
        } finally {
            byId("confirm").disabled = false;
        }
    }

    function saveRejected() {
        const width = Math.max(...rejected().map(({ cells }) => cells.length));
        const columns = Array.from({ length: width }, (_, index) => ({
            label: source.heads()[index] ?? `Column ${index + 1}`,
            value: ({ cells }) => cells[index] ?? "",
        }));
        const reason = { label: "Reason", value: ({ outcome }) => outcomes[outcome].label };
        saveCsv(`${event.Name} rejected lines`, [...columns, reason], rejected());
    }

    byId("source").addEventListener("submit", (submission) => {
        submission.preventDefault();
        preview();
    });
    byId("adding").addEventListener("submit", (submission) => {
        submission.preventDefault();
        add();
    });
    byId("back").addEventListener("click", () => {
        byId("adding").hidden = true;
        byId("source").hidden = false;
        byId("preview").focus();
    });
    byId("status").addEventListener("change", showRoom);
    byId("save-rejected").addEventListener("click", saveRejected);
    byId("done").addEventListener("click", () => close(true));
    byId("source").hidden = false;
    byId("pasted").focus();
});

/** The page's first step: gives { read, heads }; `read()` gives { entries, donors } or { problem }. */
function setUpSource() {
    let rows = [];
    let donors; // where the source itself says who they are
    const chosen = () => document.querySelector('input[name="from"]:checked').value;
    const hasHeads = () => byId("has-heads").checked;
    const columnMeanings = () =>
        [...byId("mapping").querySelectorAll("select")].map(({ value }) => value);

    byId("sources").addEventListener("change", async () => {
        const from = chosen();
        for (const part of document.querySelectorAll("[data-from]")) {
            part.hidden = part.dataset.from !== from;
        }
        byId("fault").textContent = "";
        if (from === "mailing" && byId("mailing").options.length === 0) await fillMailings();
        if (from === "list" && byId("list").options.length === 0) await fillLists();
        if (from === "event" && byId("event").options.length === 0) await fillEvents();
    });
    byId("file").addEventListener("change", async () => {
        byId("fault").textContent = "";
        const [file] = byId("file").files;
        rows = [];
        if (file && file.size > largestFile) {
            byId("fault").textContent = "The file is too large to be a list of donors.";
        } else if (file) {
            rows = parseCsv(await readText(file));
        }
        showMapping();
    });
    byId("has-heads").addEventListener("change", showMapping);

    function showMapping() {
        const width = Math.max(0, ...rows.slice(0, 50).map((cells) => cells.length));
        const heads = rows[0] ?? [];
        const guessed = hasHeads() ? guessMeanings(heads) : [];
        byId("mapping").replaceChildren(
            ...Array.from({ length: width }, (_, index) => {
                const select = build("select", { id: `column-${index}` },
                    ...Object.entries(meanings).map(([key, { label }]) => new Option(label, key)));
                select.value = guessed[index] ?? (width === 1 ? "name" : "none");
                const example = rows[hasHeads() ? 1 : 0]?.[index] ?? "";
                const title = hasHeads() && heads[index] ? heads[index] : `Column ${index + 1}`;
                return build("div", { className: "field" },
                    build("label", { for: select.id, text: title }), select,
                    build("p", { className: "hint", text: example ? `for example ${example}` : "" }));
            }),
        );
    }

    async function fillMailings() {
        const { rows: found } = await list(mailings().Lists, ["Key", "Source", "CreatedBy",
            "DonorCount"]);
        byId("mailing").replaceChildren(...found.map(({ Key, Source, CreatedBy, DonorCount }) =>
            new Option(`${Source || "not started"}, by ${CreatedBy}: ${DonorCount} donors`, Key)));
    }

    async function fillLists() {
        byId("list").replaceChildren(
            ...(await donorLists()).map(({ Id, Name }) => new Option(Name, Id)),
        );
    }

    async function fillEvents() {
        const { rows: found } = await list(manage().GetEvents(), ["Id", "Name", "StartDateTime"]);
        byId("event").replaceChildren(...found.map(({ Id, Name, StartDateTime }) =>
            new Option(`${Name} (${StartDateTime.date})`, Id)));
    }

    async function entriesFrom() {
        const from = chosen();
        if (from === "paste") {
            const lines = byId("pasted").value.split(/\r?\n/).filter((line) => line.trim());
            return lines.length > 0 ? lines.map(entryOfLine) : "Paste a list first.";
        }
        if (from === "file") {
            if (rows.length === 0) return byId("fault").textContent || "Choose a file first.";
            const used = columnMeanings();
            if (used.every((meaning) => meaning === "none")) {
                return "Say which column holds the name, the e-mail address or the number.";
            }
            return entriesOf(hasHeads() ? rows.slice(1) : rows, used);
        }
        if (from === "mailing") {
            if (!byId("mailing").value) return "There is no mailing list yet.";
            const { rows: found } = await list(mailings().GetList(byId("mailing").value).Donors,
                ["Id", "Display"], { count: 1000000 });
            return found.map(({ Id, Display }) => ({ cells: [Display], id: String(Id) }));
        }
        if (from === "list") {
            if (!byId("list").value) return "No list of donors has been saved yet.";
            const listed = await donorsOfList(Number(byId("list").value));
            if (typeof listed === "string") return listed;
            donors = listed;
            return listed.map(({ Id, Display }) => ({ cells: [Display], id: String(Id) }));
        }
        if (!byId("event").value) return "There is no other event.";
        const found = await readParticipants(Number(byId("event").value));
        return found.map(({ donorId, name }) => ({ cells: [name], id: String(donorId) }));
    }

    return {
        heads: () => (chosen() === "file" && hasHeads() ? (rows[0] ?? []) : []),
        async read() {
            donors = undefined;
            const entries = await entriesFrom();
            if (typeof entries === "string") return { problem: entries };
            if (entries.length === 0) return { problem: "Nobody stands there." };
            donors ??= await findDonors({}, ["Id", "Display", "FirstName", "LastName", "Email",
                "City"]);
            return { entries, donors };
        },
    };
}

/** A file's text; one that is not UTF-8 is read as what spreadsheets here write otherwise. */
async function readText(file) {
    const bytes = await file.arrayBuffer();
    try {
        return new TextDecoder("utf-8", { fatal: true }).decode(bytes);
    } catch {
        return new TextDecoder("windows-1252").decode(bytes);
    }
}
