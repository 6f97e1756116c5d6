// The list of events.

import { saveCsv } from "../lib/csv.js";
import { bindKey } from "../lib/keys.js";
import { keepPlace, returnToPlace } from "../lib/list_place.js";
import { announce, reportFailure } from "../lib/notice.js";
import { startPage } from "../lib/page.js";
import { onPress } from "../lib/press.js";
import { preferences, remember } from "../lib/preferences.js";
import { arrowKeys, sortableHeads } from "../lib/table.js";
import { commands } from "./addin.js";
import { exportColumns, exportProperties } from "./event_export.js";
import { eventFilters } from "./event_filters.js";
import { eventRows, figureColumns, rowColumns } from "./event_rows.js";
import {
    addressOfState,
    filterFields,
    pageSize,
    spans,
    stateFromAddress,
} from "./event_search.js";
import { findEvents } from "./find_events.js";
import { loadLookups } from "./lookups.js";

const typingPause = 200;
const preference = "events-view";
const mostExported = 100000;

const byId = (id) => document.getElementById(id);
const table = byId("events");
const body = table.tBodies[0];

startPage("Events", async ({ session, format, allowed }) => {
    const [lookups, [kept]] = await Promise.all([
        loadLookups(Object.values(filterFields)),
        preferences(preference),
    ]);
    const state = stateFromAddress(location.search || kept);
    const rows = eventRows(body, { format, allowed, lookups, onLeave: keepPlace });
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
        const found = await findEvents(state, rowColumns, { ...session, start });
        if (mine !== latest) return;
        const made = found.rows.map(rows.make);
        if (added) body.append(...made);
        else replaceRows(made);
        showState(found.hasMore, added);
        if (found.rows.length > 0) {
            const counted = await findEvents(state, figureColumns, { ...session, start });
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
        keepState();
        load().catch(reportFailure);
    }

    /** The address holds all of the state; what was searched for is not kept for another day. */
    function keepState() {
        history.replaceState(null, "", location.pathname + addressOfState(state));
        remember(preference, addressOfState({ ...state, text: "", shown: pageSize }));
    }

    /** All events that match, not only those read so far. */
    async function exportAll() {
        const all = { ...state, shown: mostExported };
        const found = await findEvents(all, exportProperties, session);
        saveCsv("Events", exportColumns(lookups), found.rows);
        announce(`${found.rows.length} events exported`);
    }

    byId("search").value = state.text;
    document.querySelector(`input[name="span"][value="${state.span}"]`).checked = true;

    const showFilters = eventFilters(
        { panel: byId("filter-panel"), toggle: byId("filter-toggle"), chips: byId("chips") },
        { lookups, format, onChange: (filters) => change({ filters }) },
    );
    showFilters(state.filters);

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
        keepState();
        load({ added: true }).catch(reportFailure);
    });
    document.addEventListener("hostrefresh", () => load().catch(reportFailure));

    onPress(byId("add"), () => commands().AddEvent());
    onPress(byId("new-full"), () => commands().CreateEvent());
    onPress(byId("find"), () => commands().FindEvent());
    onPress(byId("export"), exportAll);
    byId("print").addEventListener("click", () => print());
    const mayEdit = allowed("events/edit");
    byId("add").hidden = !mayEdit;
    byId("new-full").hidden = !mayEdit;
    bindKey("/", "Search", () => byId("search").focus());
    if (mayEdit) bindKey("n", "Add an event", () => byId("add").click());
    arrowKeys(body);
    // Until here, what is typed or pressed would have been lost.
    for (const id of ["actions", "filters"]) byId(id).hidden = false;

    await load();
    returnToPlace(body);
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

const among = {
    upcoming: " among upcoming events",
    past: " among past events",
    season: " among this season's events",
    all: "",
};

function emptyText({ text, filters, span }) {
    if (Object.keys(filters).length > 0) return "Nothing matches these filters.";
    if (text) return `Nothing matches “${text}”${among[span]}.`;
    if (span === "all") return "No events yet.";
    return span === "upcoming" ? "No events ahead." : "No events in this time.";
}
