// The desk at the door: type a name, press Enter, and the next.

import { read, release } from "../lib/app.js";
import { build } from "../lib/build.js";
import { bindKey } from "../lib/keys.js";
import { dueWords } from "../lib/money_words.js";
import { reportFailure } from "../lib/notice.js";
import { startPage } from "../lib/page.js";
import { guardUnsaved } from "../lib/unsaved.js";
import { manage } from "./addin.js";
import { deletedEvent, showMissing } from "./missing_event.js";
import { accepted, shownRows, statusText } from "./participant_list.js";
import { changeParticipants, readParticipants, readStandings } from "./participants.js";
import { linesText } from "./reservations.js";

const mostShown = 12;
const eventId = Number(new URLSearchParams(location.search).get("id"));
const byId = (id) => document.getElementById(id);

startPage("Events", async ({ format, allowed }) => {
    const event = eventId > 0 ? await manage().GetEvent(eventId) : null;
    if (!event) return showMissing(deletedEvent);
    const { Name } = await read(event, ["Name"]);
    release(event);
    byId("title").textContent = `${Name}: attendance`;
    document.title = `${Name}: attendance - Quillmere`;
    byId("crumb").textContent = Name;
    byId("crumb").href = `/events/event-details?id=${eventId}&tab=participants`;
    const mayEdit = allowed("events/edit");

    let rows = [];
    let standings = new Map();
    const done = [];
    const search = byId("search");

    async function update() {
        [rows, standings] = await Promise.all([
            readParticipants(eventId),
            readStandings(eventId),
        ]);
        show();
    }

    function hits() {
        const text = search.value.trim();
        return text
            ? shownRows(rows, { text, filter: "all", group: "", sort: "name" })
            : [];
    }

    function show() {
        const found = hits();
        byId("found").replaceChildren(...found.slice(0, mostShown).map(itemOf));
        const more = found.length - mostShown;
        if (more > 0) {
            byId("found").append(build("li", { className: "hint", text: `and ${more} more: type on` }));
        }
        const here = rows.filter(({ attended }) => attended).length;
        const expected = rows.filter(({ status }) => status === accepted).length;
        byId("running").textContent =
            `${format.whole(here)} here, ${format.whole(expected)} accepted`;
        byId("running").ariaBusy = String(waiting > 0);
        byId("undo").disabled = done.length === 0;
    }

    function itemOf(row) {
        const standing = standings.get(row.donorId);
        const lines = standing?.reservations.flatMap((one) => one.lines) ?? [];
        const button = build("button", {
            type: "button",
            disabled: !mayEdit,
            className: row.attended ? "here" : "primary",
            text: row.attended ? "Here ✓" : "Mark as here",
            "aria-label": `${row.attended ? "Here ✓" : "Mark as here"}: ${row.name}`,
            on: { click: () => (row.attended ? takeBack(row) : mark(row)) },
        });
        const facts = [statusText(row.status), row.groups, linesText(lines, format)]
            .filter(Boolean)
            .join(" · ");
        return build("li", { className: row.attended ? "is-here" : "" },
            build("div", {},
                build("b", { text: row.name }),
                build("span", { className: "faint", text: facts })),
            standing
                ? build("span", {
                    className: standing.stands.due.rounded().isZero ? "settled" : "due-now",
                    text: dueWords(standing.stands, format),
                })
                : null,
            button);
    }

    // One after the other, so that an undo pressed at once comes behind what it undoes.
    let waiting = 0;
    let last = Promise.resolve();
    guardUnsaved(() => waiting > 0);
    function put(row, attended) {
        row.attended = attended;
        waiting += 1;
        show();
        const mine = last.then(() => store(row, attended)).finally(() => {
            waiting -= 1;
            show();
        });
        last = mine.catch(() => {});
        return mine;
    }

    async function store(row, attended) {
        const result = await changeParticipants(eventId, [row.id], { attended });
        const reasons = [...(result?.skipped.keys() ?? [])];
        if (result?.done === 1 || reasons.some((reason) => /^already|^not here/.test(reason))) {
            return true;
        }
        say(reasons[0] ? `${row.name}: ${reasons[0]}.` : `${row.name} could not be marked.`);
        await update();
        return false;
    }

    async function mark(row) {
        search.value = "";
        search.focus();
        say(`${row.name} is here.`);
        done.push(row.id);
        if (!(await put(row, true))) forget(row);
        show();
    }

    async function takeBack(row) {
        search.focus();
        say(`${row.name} is no longer marked.`);
        forget(row);
        await put(row, false);
    }

    function forget(row) {
        const at = done.lastIndexOf(row.id);
        if (at >= 0) done.splice(at, 1);
    }

    function say(text) {
        byId("said").textContent = text;
    }

    byId("desk").addEventListener("submit", (submission) => {
        submission.preventDefault();
        if (!mayEdit) return;
        const found = hits();
        const waiting = found.filter(({ attended }) => !attended);
        if (found.length === 0) {
            say(search.value.trim() ? "Nobody of this name is on the list." : "");
        } else if (waiting.length === 1) {
            mark(waiting[0]).catch(reportFailure);
        } else if (waiting.length === 0) {
            say(found.length === 1 ? `${found[0].name} is here already.` : "All of them are here.");
        } else {
            say(`${waiting.length} match: type more, or choose below.`);
        }
    });
    search.addEventListener("input", () => {
        say("");
        show();
    });
    // Down leads into the list, Up leads back.
    document.addEventListener("keydown", (event) => {
        const step = { ArrowDown: 1, ArrowUp: -1 }[event.key];
        if (!step || event.altKey || event.ctrlKey) return;
        const stops = [search, ...byId("found").querySelectorAll("button:enabled")];
        const next = stops[stops.indexOf(document.activeElement) + step];
        if (!stops.includes(document.activeElement) || !next) return;
        event.preventDefault();
        next.focus();
    });
    byId("undo").addEventListener("click", () => {
        const row = rows.find(({ id }) => id === done.at(-1));
        if (row) takeBack(row).catch(reportFailure);
    });
    byId("undo").hidden = !mayEdit;
    bindKey("/", "Search", () => search.focus());
    bindKey("Ctrl+z", "Undo the last mark", () => byId("undo").click());
    document.addEventListener("hostrefresh", () => update().catch(reportFailure));

    await update();
    byId("desk").hidden = false;
    search.focus();
});
