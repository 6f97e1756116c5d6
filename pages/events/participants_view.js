// What the participants tab is made of: its strip, tools, selection bar, table and rows.

import { build, buttonOf } from "../lib/build.js";
import { dueWords } from "../lib/money_words.js";
import { reportFailure } from "../lib/notice.js";
import { filters, statuses, statusText } from "./participant_list.js";

const mostNamed = 12;

/**
 * Shows in `element` the donors who have reserved but are `missing` on the list; `add(donors)` puts
 * some of them on it, where the user may.
 */
export function fillMissing(element, missing, add) {
    element.hidden = missing.length === 0;
    if (missing.length === 0) return;
    const isOne = missing.length === 1;
    const items = missing.slice(0, mostNamed).map((donor) =>
        build("li", {},
            build("span", { text: donor.name }),
            add && !isOne
                ? buttonOf("Add", () => add([donor]), {
                    className: "quiet",
                    "aria-label": `Add ${donor.name}`,
                })
                : null));
    const more = missing.length - items.length;
    if (more > 0) items.push(build("li", { className: "faint", text: `and ${more} more` }));
    const words = isOne
        ? "1 donor has a reservation but is not on the list:"
        : `${missing.length} donors have reservations but are not on the list:`;
    const label = isOne ? "Add as accepted" : `Add all ${missing.length} as accepted`;
    element.replaceChildren(
        build("p", { text: words }),
        build("ul", { className: "counts" }, ...items),
        ...(add ? [buttonOf(label, () => add(missing))] : []),
    );
}

/** A row of the table; `actions` are run by its buttons and its attendance box. */
export function rowElement(row, { format, mayEdit, actions, standings }) {
    const stands = standings.get(row.donorId)?.stands;
    const came = build("input", {
        type: "checkbox",
        checked: row.attended,
        disabled: !mayEdit,
        "aria-label": `${row.name} attended`,
    });
    came.addEventListener("change", () => actions.attended(row, came).catch(reportFailure));
    const quiet = (label, run) =>
        buttonOf(label, () => run(row), {
            className: "quiet",
            "aria-label": `${label} ${row.name}`,
        });
    return build(
        "tr",
        { data: { id: row.id } },
        build("td", { className: "pick-cell" },
            build("input", {
                type: "checkbox",
                className: "pick",
                "aria-label": `Select ${row.name}`,
            })),
        build("th", { scope: "row" },
            buttonOf(row.name, () => actions.open(row), { className: "row-link" })),
        build("td", { data: { label: "Status" } },
            build("span", { className: "pill", text: statusText(row.status) })),
        build("td", { data: { label: "Groups" }, text: row.groups }),
        build("td", { data: { label: "Attended" } }, came),
        build("td", { data: { label: "Reservation" }, text: stands ? dueWords(stands, format) : "" }),
        ...(mayEdit
            ? [build("td", { className: "row-actions" },
                quiet("Edit", actions.edit), quiet("Remove", actions.remove))]
            : []),
    );
}

/** The elements of the tab; nothing in them is filled or listens yet. */
export function layOut({ mayEdit, mayMail }) {
    const search = build("input", {
        type: "search",
        placeholder: "Search by name",
        autocomplete: "off",
        "aria-label": "Search participants by name",
    });
    const group = build("select", { className: "inline", "aria-label": "Group" });
    const form = build("form",
        { className: "filters", role: "search", "aria-label": "Participants" }, search, group);

    const strip = new Map();
    const labels = Object.entries(filters).map(([key, { label }]) => {
        const input = build("input", { type: "radio", name: "participant-filter", value: key });
        const number = build("b", {});
        strip.set(key, { input, number });
        return build("label", {}, input, build("span", {}, number, ` ${label}`));
    });
    const counts = build("fieldset", { className: "segments strip" },
        build("legend", { className: "visually-hidden", text: "Show" }), ...labels);

    const button = (text, className = "") => build("button", { type: "button", text, className });
    const buttons = {
        ...(mayEdit && { addOne: button("Add one donor"), add: button("Add participants", "primary") }),
        ...(mayMail && { mailing: button("Send mailing") }),
        desk: button("Attendance desk"),
        door: button("Door list"),
        export: button("Export"),
    };
    const onSelection = {
        ...(mayEdit && {
            came: button("Attended"),
            notCame: button("Not attended"),
            groups: button("Groups"),
            change: button("Change several"),
            reserve: button("Add reservation"),
        }),
        ...(mayMail && { mail: button("Mailing") }),
        badges: button("Name badges"),
        ...(mayEdit && { remove: button("Remove") }),
    };
    const status = build("select", { className: "inline", "aria-label": "Set the status" },
        new Option("Set status…", ""), ...statuses.map((text, value) => new Option(text, value)));
    const chosen = build("p", { className: "count", role: "status" });
    const selectAll = button("", "quiet");
    const clear = button("Clear selection", "quiet");
    const { reserve = button(""), ...others } = onSelection;
    const bar = build("div", { className: "selection-bar" },
        chosen, selectAll, clear,
        build("div", { className: "actions start" },
            ...(mayEdit ? [status] : []), ...Object.values(onSelection)));

    const all = build("input", { type: "checkbox", "aria-label": "Select the rows shown" });
    const head = (text, sort, className) =>
        build("th", { scope: "col", text, className, data: sort ? { sort } : {} });
    const body = build("tbody");
    const table = build("table", { className: "cards", hidden: true },
        build("caption", { className: "visually-hidden", text: "Participants" }),
        build("thead", {}, build("tr", {},
            build("th", { scope: "col", className: "pick-cell" }, all),
            head("Name", "name"), head("Status", "status"), head("Groups", "groups"),
            head("Attended", "attended"), head("Reservation", "due"),
            ...(mayEdit
                ? [build("th", { scope: "col" },
                    build("span", { className: "visually-hidden", text: "Actions" }))]
                : []))),
        body);
    const more = build("button", { type: "button", text: "Show more", hidden: true });
    const empty = build("p", { className: "empty", hidden: true });
    const capacity = build("p", { className: "capacity", hidden: true });
    const missing = build("div", { className: "banner plain", hidden: true });
    const result = build("p", { className: "visually-hidden", role: "status" });
    return {
        elements: [
            build("div", { className: "list-head" }, capacity,
                build("div", { className: "actions" }, ...Object.values(buttons))),
            missing, counts, form, bar, result, table, empty,
            build("p", { className: "more" }, more),
        ],
        buttons: { ...buttons, ...onSelection },
        needSelection: [...Object.values(others), ...(mayEdit ? [status] : [])],
        search, group, form, strip, bar, chosen, selectAll, clear, status, all, body, table, more,
        empty, capacity, missing, result, reserve,
    };
}
