// Who has reserved what, what was paid and what is due.

import { saveCsv } from "../../lib/csv.js";
import { dueWords, standingOfAll } from "../../lib/money_words.js";
import { reportFailure } from "../../lib/notice.js";
import { preferences, remember } from "../../lib/preferences.js";
import { orderPreference, recordTable } from "../../lib/record_table.js";
import { commands } from "../addin.js";
import { linesText, readAnswers, readReservations } from "../reservations.js";

const tabName = "events_reservations";
const typingPause = 200;

/** Which reservations are shown, by the state of their money. */
const states = {
    all: { label: "All", holds: () => true },
    due: { label: "With money due", holds: ({ due }) => !due.isNegative && !due.rounded().isZero },
    paid: { label: "Paid in full", holds: ({ due }) => due.rounded().isZero },
    over: { label: "Paid too much", holds: ({ due }) => due.rounded().isNegative },
};

export const tab = {
    key: "reservations",
    title: "Reservations",
    async show(panel, context) {
        const { eventId, format, allowed } = context;
        const filterName = `reservation-list-filter-${eventId}`;
        const [filter, sortBy, lastOrder] = await preferences(
            filterName,
            `reservation-list-sortby-${eventId}`,
            orderPreference("reservations"),
        );
        const state = { text: /^name~(.*)$/s.exec(filter)?.[1] ?? "", money: "all" };
        let rows = [];

        const filters = filterBar(state, () => {
            remember(filterName, state.text ? `name~${state.text}` : "");
            draw();
        });
        const holder = document.createElement("div");
        panel.replaceChildren(filters, holder);
        const mayEdit = allowed("events/edit");
        const show = recordTable(holder, {
            name: ["reservation", "reservations"],
            fileName: () => `${context.event.Name} reservations`,
            format,
            columns: columnsFor(format),
            order: { key: "donor", descending: false },
            remembered: sortBy || lastOrder,
            empty: "No reservations to show.",
            titleOf: ({ donor }) => `the reservation of ${donor}`,
            summary: (shown) => dueWords(standingOfAll(shown), format),
            open: mayEdit ? ({ Id }) => run("EditEventReservation", Id) : undefined,
            tools: [
                {
                    label: "Export answers",
                    run: () => exportAnswers(rows, context),
                    needsRows: true,
                },
                ...(mayEdit
                    ? [{ label: "Add reservation", isPrimary: true, run: addReservation }]
                    : []),
            ],
            actions: [
                { label: "Payments", run: payments },
                { label: "Letter", run: ({ Id }) => openConfirmation(Id) },
                { label: "Delete", run: deleteReservation, right: true },
            ].filter(({ right }) => !right || mayEdit),
        });

        function draw() {
            const words = state.text.toLocaleLowerCase().split(/\s+/).filter(Boolean);
            const { holds } = states[state.money];
            show(
                rows.filter((row) => {
                    const name = row.donor.toLocaleLowerCase();
                    return words.every((word) => name.includes(word)) && holds(row);
                }),
            );
        }

        async function update() {
            rows = await readReservations(eventId);
            draw();
        }

        async function run(command, reservationId) {
            await commands()[command](eventId, reservationId);
        }
        async function addReservation() {
            await commands().AddEventReservation(eventId, 0, tabName);
        }
        async function payments({ Id }) {
            const command = mayEdit
                ? "EditEventReservationPayments"
                : "ViewEventReservationPayments";
            await run(command, Id);
            await context.refresh();
        }
        async function deleteReservation({ Id, donorId }) {
            await commands().DeleteEventReservation(eventId, Id, donorId);
            await context.refresh();
        }
        function openConfirmation(id) {
            location.assign(`/events/reservation-confirmation?id=${id}&eventid=${eventId}`);
        }

        await update();
        return () => update().catch(reportFailure);
    },
};

function columnsFor(format) {
    return [
        {
            key: "donor",
            label: "Donor",
            value: ({ sortName }) => sortName,
            text: ({ donor }) => donor,
            faint: ({ description }) => description,
        },
        { key: "donorId", label: "Donor id", exportOnly: true },
        { key: "date", label: "Date", text: ({ date }) => format.date(date) },
        {
            key: "activities",
            label: "Activities",
            value: ({ lines }) => linesText(lines, format),
            wide: true,
        },
        { key: "description", label: "Description", exportOnly: true },
        { key: "expected", label: "Expected", number: true, total: true },
        { key: "direct", label: "Paid directly", number: true, total: true },
        { key: "gifts", label: "Gifts", number: true, total: true },
        { key: "paid", label: "Paid in all", exportOnly: true },
        {
            key: "due",
            label: "Due",
            number: true,
            total: true,
            text: (row) => dueWords(row, format),
            mark: ({ due }) => (due.rounded().isZero ? "settled" : ""),
        },
    ];
}

/** A line for each activity reserved, an answer to each reservation field in a column of its own. */
async function exportAnswers(rows, { event }) {
    const lines = rows.flatMap((row) => row.lines.map((line) => ({ row, line })));
    const answers = await readAnswers(lines.map(({ line }) => line));
    const answersOf = ({ line }) => answers.get(line.Id) ?? [];
    const names = [...new Set(lines.flatMap((one) => answersOf(one).map(({ Name }) => Name)))];
    saveCsv(`${event.Name} activities reserved`, [
        { label: "Line id", value: ({ line }) => line.Id },
        { label: "Reservation id", value: ({ row }) => row.Id },
        { label: "Donor id", value: ({ row }) => row.donorId },
        { label: "Donor", value: ({ row }) => row.donor },
        { label: "Date", value: ({ row }) => row.date },
        { label: "Activity", value: ({ line }) => line.activity },
        { label: "Quantity", value: ({ line }) => line.Quantity },
        { label: "Price", value: ({ line }) => line.Price },
        ...names.map((name) => ({
            label: name,
            value: (one) => answersOf(one).find(({ Name }) => Name === name)?.Value ?? "",
        })),
        { label: "Notes", value: ({ line }) => line.Notes },
    ], lines);
}

function filterBar(state, onChange) {
    const form = document.createElement("form");
    form.className = "filters";
    form.setAttribute("role", "search");
    form.setAttribute("aria-label", "Reservations");
    const search = document.createElement("input");
    Object.assign(search, { type: "search", placeholder: "Search by donor", value: state.text });
    search.setAttribute("aria-label", "Search reservations by donor");
    search.autocomplete = "off";
    const money = document.createElement("select");
    money.setAttribute("aria-label", "Show");
    money.className = "inline";
    money.append(...Object.entries(states).map(([key, { label }]) => new Option(label, key)));
    const clear = document.createElement("button");
    Object.assign(clear, { type: "button", className: "quiet", textContent: "Show all" });
    const showClear = () => {
        clear.hidden = !state.text && state.money === "all";
    };
    showClear();
    form.append(search, money, clear);
    clear.addEventListener("click", () => {
        Object.assign(state, { text: "", money: "all" });
        search.value = "";
        money.value = "all";
        changed();
        search.focus();
    });
    function changed() {
        showClear();
        onChange();
    }

    let pause;
    search.addEventListener("input", () => {
        clearTimeout(pause);
        pause = setTimeout(() => {
            state.text = search.value.trim();
            changed();
        }, typingPause);
    });
    money.addEventListener("change", () => {
        state.money = money.value;
        changed();
    });
    form.addEventListener("submit", (event) => event.preventDefault());
    return form;
}
