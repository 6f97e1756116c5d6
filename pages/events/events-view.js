// The list of events.

import { bindKey } from "../lib/keys.js";
import { announce, reportFailure } from "../lib/notice.js";
import { startPage } from "../lib/page.js";
import { arrowKeys, rowFrom, sortableHeads } from "../lib/table.js";
import { commands } from "./addin.js";
import { addressOfState, pageSize, spans, stateFromAddress } from "./event_search.js";
import { findEvents } from "./find_events.js";
import { loadLookups, nameIn } from "./lookups.js";

const columns = ["Id", "Name", "StartDateTime", "FKStatusId", "FKLocationId", "MaxCapacity"];
const figures = ["Id", "NumberAccepted", "NumberReservations"];
const typingPause = 200;

const byId = (id) => document.getElementById(id);
const table = byId("events");
const body = table.tBodies[0];

startPage("Events", async ({ session, format, allowed }) => {
    const state = stateFromAddress(location.search);
    const lookups = loadLookups(["FKStatusId", "FKLocationId"]);
    const rows = rowMaker(format, allowed, lookups);
    let latest = 0;

    const showOrder = sortableHeads(table, (key) => {
        const again = state.sort === key;
        change({ sort: key, descending: again ? !state.descending : false });
    });

    /** Reads what the state asks for; `added` keeps the rows that are there and adds to them. */
    async function load({ added = false } = {}) {
        latest += 1;
        const mine = latest;
        const start = added ? body.rows.length : 0;
        const { today } = session;
        const found = await findEvents(state, columns, { today, start });
        const made = await Promise.all(found.rows.map(rows.make));
        if (mine !== latest) return;
        if (added) body.append(...made);
        else replaceRows(made);
        showState(found.hasMore, added);
        if (found.rows.length > 0) {
            const counted = await findEvents(state, figures, { today, start });
            if (mine === latest) rows.addFigures(counted.rows);
        }
    }

    function showState(hasMore, added) {
        const count = body.rows.length;
        table.hidden = count === 0;
        byId("more").hidden = !hasMore;
        byId("empty").hidden = count > 0;
        byId("empty").textContent = emptyText(state);
        showOrder({ key: state.sort, descending: state.descending });
        announce(count === 0 ? emptyText(state) : `${count}${hasMore ? " or more" : ""} events`);
        if (added) body.rows[count - 1]?.scrollIntoView({ block: "nearest" });
    }

    function change(changes) {
        Object.assign(state, { shown: pageSize }, changes);
        remember();
        load().catch(reportFailure);
    }

    function remember() {
        history.replaceState(null, "", location.pathname + addressOfState(state));
    }

    byId("search").value = state.text;
    document.querySelector(`input[name="span"][value="${state.span}"]`).checked = true;

    let pause;
    byId("search").addEventListener("input", ({ target }) => {
        clearTimeout(pause);
        pause = setTimeout(() => change({ text: target.value.trim() }), typingPause);
    });
    byId("filters").addEventListener("submit", (event) => {
        event.preventDefault();
        body.querySelector("a.row-link")?.focus();
    });
    byId("filters").addEventListener("change", ({ target }) => {
        if (target.name !== "span") return;
        change({ span: target.value, sort: "start", descending: spans[target.value].descending });
    });
    byId("more").addEventListener("click", () => {
        state.shown += pageSize;
        remember();
        load({ added: true }).catch(reportFailure);
    });
    document.addEventListener("hostrefresh", () => load().catch(reportFailure));

    byId("add").addEventListener("click", () => {
        commands().AddEvent();
    });
    byId("new-full").addEventListener("click", () => {
        commands().CreateEvent();
    });
    byId("find").addEventListener("click", () => {
        commands().FindEvent();
    });
    const mayEdit = allowed("events/edit");
    byId("add").hidden = !mayEdit;
    byId("new-full").hidden = !mayEdit;
    bindKey("/", "Search", () => byId("search").focus());
    if (mayEdit) bindKey("n", "Add an event", () => byId("add").click());
    arrowKeys(body);

    await load();
});

/** New rows in place of the old; the focus stays on the same event's row, or on its place. */
function replaceRows(made) {
    const focused = document.activeElement.closest?.("tr[data-id]");
    const { id } = focused?.dataset ?? {};
    const place = focused ? focused.sectionRowIndex : -1;
    body.replaceChildren(...made);
    if (!focused) return;
    const row =
        body.querySelector(`tr[data-id="${id}"]`) ?? body.rows[place] ?? [...body.rows].at(-1);
    (row?.querySelector("a.row-link") ?? byId("search")).focus();
}

function rowMaker(format, allowed, lookups) {
    const template = byId("event-row");
    const actions = [
        {
            label: "Edit",
            right: "events/edit",
            run: (id) => {
                commands().EditEvent(id);
            },
        },
        {
            label: "Delete",
            right: "events/delete",
            run: (id) => {
                commands().DeleteEvent(id);
            },
        },
    ].filter(({ right }) => allowed(right));

    async function make(event) {
        const { FKStatusId, FKLocationId } = await lookups;
        const row = rowFrom(template, {
            name: event.Name,
            start: format.longDate(event.StartDateTime),
            time: format.time(event.StartDateTime) || "no time set",
            status: nameIn(FKStatusId, event.FKStatusId),
            location: nameIn(FKLocationId, event.FKLocationId),
            capacity: event.MaxCapacity ? `up to ${format.whole(event.MaxCapacity)}` : "",
        });
        row.dataset.id = event.Id;
        row.dataset.capacity = event.MaxCapacity;
        const link = row.querySelector("a.row-link");
        link.href = `/events/event-details?id=${event.Id}`;
        link.addEventListener("click", (click) => {
            if (click.ctrlKey || click.metaKey || click.shiftKey) return;
            click.preventDefault();
            commands().ViewEvent(event.Id);
        });
        row.querySelector(".row-actions").append(
            ...actions.map(({ label, run }) => {
                const button = document.createElement("button");
                button.type = "button";
                button.className = "quiet";
                button.textContent = label;
                button.setAttribute("aria-label", `${label} ${event.Name}`);
                button.addEventListener("click", () => run(event.Id));
                return button;
            }),
        );
        return row;
    }

    /** Accepted and reserved per event, as they take longer to count. */
    function addFigures(counted) {
        for (const { Id, NumberAccepted, NumberReservations } of counted) {
            const row = body.querySelector(`tr[data-id="${Id}"]`);
            if (!row) continue;
            const most = Number(row.dataset.capacity);
            row.querySelector('[data-cell="capacity"]').textContent = acceptedText(
                format,
                NumberAccepted,
                most,
            );
            row.querySelector('[data-cell="reserved"]').textContent = reservationsText(
                format,
                NumberReservations,
            );
        }
    }

    return { make, addFigures };
}

function acceptedText(format, accepted, most) {
    if (most) return `${format.whole(accepted)} of ${format.whole(most)} accepted`;
    return accepted ? `${format.whole(accepted)} accepted` : "";
}

function reservationsText(format, count) {
    if (count === 0) return "";
    return count === 1 ? "1 reservation" : `${format.whole(count)} reservations`;
}

const among = {
    upcoming: " among upcoming events",
    past: " among past events",
    season: " among this season's events",
    all: "",
};

function emptyText({ text, span }) {
    if (text) return `Nothing matches “${text}”${among[span]}.`;
    if (span === "all") return "No events yet.";
    return span === "upcoming" ? "No events ahead." : "No events in this time.";
}
