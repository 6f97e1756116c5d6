// Who is invited, who comes and who came: counted, filtered, chosen and changed many at a time.

import { App, set } from "../../lib/app.js";
import { saveCsv } from "../../lib/csv.js";
import { bindKey } from "../../lib/keys.js";
import { longList } from "../../lib/long_list.js";
import { confirmBox } from "../../lib/message_box.js";
import { announce, notice, reportFailure } from "../../lib/notice.js";
import { preferences, remember } from "../../lib/preferences.js";
import { onPress } from "../../lib/press.js";
import { checkBoxes, createSelection } from "../../lib/selection.js";
import { sortableHeads } from "../../lib/table.js";
import { commands } from "../addin.js";
import { withProgress } from "../bulk_run.js";
import { chooseGroups } from "../group_box.js";
import { mailTo, selectionOf } from "../participant_actions.js";
import {
    accepted, addressNames, countsOf, overCapacity, resultLine, shownRows, stateFrom, statusText,
    textOf,
} from "../participant_list.js";
import {
    addParticipants, changeParticipants, readGroups, readParticipants, readStandings,
} from "../participants.js";
import { fillMissing, layOut, rowElement } from "../participants_view.js";

const preference = "participant-list-state";
const typingPause = 200;

export const tab = {
    key: "participants",
    title: "Participants",
    async show(panel, context) {
        const { eventId, format, allowed } = context;
        const mayEdit = allowed("events/edit");
        const [remembered] = await preferences(preference);
        const state = stateFrom(location.search, remembered);
        let rows = [];
        let shown = [];
        let standings = new Map();
        let groups = [];

        const parts = layOut({ mayEdit, mayMail: allowed("mailings/send") });
        panel.replaceChildren(...parts.elements);
        parts.search.value = state.text;

        const selection = createSelection(() => showSelection());
        const updateBoxes = checkBoxes(parts.body, parts.all, selection);
        const view = longList(parts.body, parts.more, {
            make: (row) => rowElement(row, { format, mayEdit, actions, standings }),
            onShown: updateBoxes,
        });
        const showOrder = sortableHeads(parts.table, (key) => {
            const descending = state.sort === key && !state.descending;
            change({ sort: key, descending });
        });

        const actions = {
            edit: async ({ id }) => {
                await commands().EditEventParticipant(eventId, id, false);
                await context.refresh();
            },
            remove: async ({ id }) => {
                await commands().DeleteEventParticipant(eventId, id, false);
                await context.refresh();
            },
            // One tick changes one row, so the list is not read anew for it.
            attended: async (row, box) => {
                const attended = box.checked;
                const result = await changeParticipants(eventId, [row.id], { attended });
                if (result?.done !== 1) return context.refresh();
                row.attended = attended;
                showCounts();
                announce(`${row.name}: ${attended ? "attended" : "not attended"}`);
            },
            open: async ({ id }) => {
                await rememberPlace(id);
                await commands().ViewEventParticipantDonor(id);
            },
        };

        function change(changes) {
            Object.assign(state, changes);
            keepState(state);
            draw();
        }

        function draw({ keep = false } = {}) {
            shown = shownRows(rows, state);
            view.show(shown, { keep });
            updateBoxes();
            parts.table.hidden = shown.length === 0;
            parts.empty.hidden = shown.length > 0;
            parts.empty.textContent =
                rows.length === 0 ? "Nobody has been added yet." : "Nobody here matches.";
            showOrder({ key: state.sort, descending: state.descending });
            showCounts();
            showSelection();
            announce(countText(shown.length, format));
        }

        function showCounts() {
            const counts = countsOf(rows);
            for (const [key, { input, number }] of parts.strip) {
                number.textContent = format.whole(counts[key]);
                input.checked = key === state.filter;
            }
            const most = context.event.MaxCapacity;
            const reserved = [...standings.values()].length;
            const over = overCapacity(rows, most);
            parts.capacity.hidden = !most;
            parts.capacity.classList.toggle("late", over > 0);
            parts.capacity.textContent = most
                ? `Room for ${format.whole(most)}: ${format.whole(counts.accepted)} accepted, ` +
                  `${format.whole(reserved)} with a reservation` +
                  (over > 0 ? `. ${format.whole(over)} too many have accepted.` : ".")
                : "";
        }

        function showSelection() {
            const count = selection.size;
            parts.bar.hidden = rows.length === 0;
            parts.chosen.textContent =
                count === 0 ? countText(shown.length, format) : `${format.whole(count)} selected`;
            parts.selectAll.hidden = count === 0 || count >= shown.length;
            parts.selectAll.textContent = `Select all ${format.whole(shown.length)} matching`;
            parts.clear.hidden = count === 0;
            for (const button of parts.needSelection) button.hidden = count === 0;
            parts.reserve.hidden = !mayEdit || count !== 1;
        }

        const chosenRows = () => rows.filter(({ id }) => selection.has(id));

        /** Changes participants, tells the result, and shows what is stored then. */
        async function apply(ids, changes) {
            if (!(await isRoomFor(ids, changes))) return update();
            const result = await withProgress("Changing participants", (options) =>
                changeParticipants(eventId, ids, changes, options),
            );
            if (result) tell(resultLine(result.done, "changed", result.skipped, format));
            await context.refresh();
        }

        /** Asks when more would come than the event has room for. */
        async function isRoomFor(ids, { status }) {
            if (status !== accepted) return true;
            const more = rows.filter(
                (row) => ids.includes(row.id) && row.status !== accepted,
            ).length;
            return askAboutRoom(overCapacity(rows, context.event.MaxCapacity, more), more);
        }

        async function askAboutRoom(over, more) {
            if (over === 0 || more === 0) return true;
            const most = format.whole(context.event.MaxCapacity);
            const answer = await confirmBox({
                title: "More than there is room for",
                text: `The event has room for ${most}. That would be ${format.whole(over)} too many.`,
                buttons: [
                    ["no", "Do not add"],
                    ["yes", "Add anyway"],
                ],
                escape: "no",
            });
            return answer === "yes";
        }

        function tell(text) {
            parts.result.textContent = text;
            notice(text);
        }

        async function update() {
            const [found, known, offered] = await Promise.all([
                readParticipants(eventId),
                readStandings(eventId),
                readGroups(),
            ]);
            rows = found.map((row) => ({ ...row, stands: known.get(row.donorId)?.stands }));
            standings = known;
            groups = offered;
            selection.keepOnly(rows.map(({ id }) => id));
            fillGroups(parts.group, groups, rows, state.group);
            showMissing();
            draw({ keep: true });
        }

        /** Donors who have reserved but are not on the list, with a way to add them. */
        function showMissing() {
            const there = new Set(rows.map(({ donorId }) => donorId));
            const missing = [...standings.values()].filter(({ donorId }) => !there.has(donorId));
            fillMissing(parts.missing, missing, mayEdit && addMissing);
        }

        async function addMissing(donors) {
            const ids = donors.map(({ donorId }) => donorId);
            const over = overCapacity(rows, context.event.MaxCapacity, ids.length);
            if (!(await askAboutRoom(over, ids.length))) return;
            const result = await withProgress("Adding participants", (options) =>
                addParticipants(eventId, ids, { status: accepted }, options),
            );
            if (result) tell(resultLine(result.done, "added", result.skipped, format));
            await context.refresh();
        }

        wire();
        await update();
        await reachLastPlace();
        return () => update().catch(reportFailure);

        function wire() {
            let pause;
            parts.search.addEventListener("input", () => {
                clearTimeout(pause);
                pause = setTimeout(() => change({ text: parts.search.value.trim() }), typingPause);
            });
            parts.form.addEventListener("submit", (event) => {
                event.preventDefault();
                parts.body.querySelector("a.row-link, button.row-link")?.focus();
            });
            for (const [key, { input }] of parts.strip) {
                input.addEventListener("change", () => change({ filter: key }));
            }
            parts.group.addEventListener("change", () => change({ group: parts.group.value }));
            parts.selectAll.addEventListener("click", () => {
                selection.pickAll(shown.map(({ id }) => id), true);
                updateBoxes();
            });
            parts.clear.addEventListener("click", () => {
                selection.clear();
                updateBoxes();
                parts.search.focus();
            });
            parts.status.addEventListener("change", () => {
                const status = Number(parts.status.value);
                parts.status.value = "";
                apply(selection.keys, { status }).catch(reportFailure);
            });
            const runs = {
                add: async () => {
                    await commands().AddEventParticipants(eventId, false);
                    await context.refresh();
                },
                addOne: async () => {
                    await commands().AddEventParticipant(eventId, false);
                    await context.refresh();
                },
                came: () => apply(selection.keys, { attended: true }),
                notCame: () => apply(selection.keys, { attended: false }),
                groups: async () => {
                    const change = await chooseGroups(groups, selection.size);
                    if (change) await apply(selection.keys, change);
                },
                change: async () => {
                    const chosen = await selectionOf(eventId, selection.keys);
                    await commands().EditEventParticipants(eventId, chosen);
                    await context.refresh();
                },
                reserve: () => commands().AddEventParticipantReservation(selection.keys[0]),
                mailing: () => commands().SendEventMailing(eventId),
                mail: () => mailTo(chosenRows().map(({ donorId }) => donorId)),
                export: () => exportRows(selection.size > 0 ? shownRows(chosenRows(), {
                    ...state, text: "", filter: "all", group: "",
                }) : shown, context),
                badges: () => openBadges(eventId, selection.keys),
                door: () => location.assign(`/events/door-list?id=${eventId}`),
                desk: () => location.assign(`/events/attendance-desk?id=${eventId}`),
                remove: async () => {
                    const chosen = await selectionOf(eventId, selection.keys);
                    await commands().DeleteEventParticipants(eventId, chosen, false);
                    await context.refresh();
                },
            };
            for (const [name, run] of Object.entries(runs)) {
                if (parts.buttons[name]) onPress(parts.buttons[name], run);
            }
            bindKey("/", "Search participants", () => parts.search.focus());
        }

        async function rememberPlace(id) {
            await set(App.Session(`eventdetailsparticipants-lastselectedid-${eventId}`), id);
        }
        /** Back from a donor's page leads to the same row; a new visit starts at the top. */
        async function reachLastPlace() {
            const last = await App.Session(`eventdetailsparticipants-lastselectedid-${eventId}`);
            const row = shown.find(({ id }) => id === last);
            if (!row) return;
            view.reach(row);
            parts.body.querySelector(`tr[data-id="${last}"] .row-link`)?.focus();
        }
    },
};

function countText(count, format) {
    return count === 1 ? "1 participant" : `${format.whole(count)} participants`;
}

function keepState(state) {
    const address = new URL(location.href);
    for (const name of addressNames) address.searchParams.delete(name);
    const text = textOf(state);
    for (const [name, value] of new URLSearchParams(text)) address.searchParams.set(name, value);
    history.replaceState(history.state, "", address);
    remember(preference, text);
}

function fillGroups(select, groups, rows, chosen) {
    const used = new Set(rows.flatMap(({ groupNames }) => groupNames));
    const offered = groups.filter(({ name, visible }) => visible || used.has(name));
    select.replaceChildren(
        new Option("All groups", ""),
        ...offered.map(({ name }) => new Option(name, name)),
    );
    select.value = offered.some(({ name }) => name === chosen) ? chosen : "";
}

function exportRows(rows, { event, format }) {
    saveCsv(`${event.Name} participants`, [
        { label: "Participant id", value: ({ id }) => id },
        { label: "Donor id", value: ({ donorId }) => donorId },
        { label: "Name", value: ({ name }) => name },
        { label: "Status", value: ({ status }) => statusText(status) },
        { label: "Groups", value: ({ groups }) => groups },
        { label: "Attended", value: ({ attended }) => attended },
        { label: "Expected", value: ({ stands }) => stands?.expected },
        { label: "Paid", value: ({ stands }) => stands?.paid },
        { label: "Due", value: ({ stands }) => stands?.due },
    ], rows);
    announce(`${countText(rows.length, format)} exported`);
}

function openBadges(eventId, ids) {
    sessionStorage.setItem(`badges-${eventId}`, JSON.stringify(ids));
    location.assign(`/events/name-badges?id=${eventId}`);
}
