// A list of records in a panel: its tools, its table, its sum; sorted, exported and printed as it
// is shown.

import { saveCsv } from "./csv.js";
import { announce } from "./notice.js";
import { remember } from "./preferences.js";
import { onPress } from "./press.js";
import { sorted } from "./sorting.js";
import { arrowKeys, sortableHeads } from "./table.js";
import { Currency, DateTime } from "./values.js";

/**
 * Sets up a list in `panel`:
 * - `name`: what one is called and what several are: ["expense", "expenses"];
 * - `fileName()`: what an exported file is called;
 * - `columns`: each { key, label } with, where it differs from the row's value of that name,
 *   `value(row)`, and where it is not shown as every value of its type is, `text(row)`.
 *   `faint(row)` is a second line, `mark(row)` a class for the cell, `total` adds the values up, `exportOnly`
 *   keeps a column out of sight;
 * - `order`: { key, descending } at first, and `remembered`, the text that an earlier visit left;
 * - `tools`: buttons over the list, each { label, run, isPrimary };
 * - `actions`: buttons of a row, each { label, run(row), isShown(row) }; `open(row)` is run by the
 *   row's name;
 * - `titleOf(row)`: what a row is called where its buttons are read out;
 * - `empty`: what an empty list says; `summary(rows)`: words beside the count.
 *
 * Gives a function that shows rows, each with its `Id`.
 */
export function recordTable(panel, description) {
    const { name, columns, format, tools = [], order, remembered } = description;
    const [, several] = name;
    const parts = layOut(panel, description);
    const state = orderFrom(new URLSearchParams(location.search).get(several), columns) ??
        orderFrom(remembered, columns) ?? { ...order };
    let rows = [];

    const showOrder = sortableHeads(parts.table, (key) => {
        const descending = state.key === key && !state.descending;
        Object.assign(state, { key, descending });
        keepOrder(several, state);
        draw();
    });
    const actions = [
        ...tools,
        { label: "Export", run: exportRows, needsRows: true },
        { label: "Print", run: () => print(), needsRows: true },
    ].map((tool) => toolButton(tool));
    parts.tools.append(...actions.map(({ button }) => button));
    arrowKeys(parts.body);

    function inOrder() {
        const byKey = (key) => columns.find((column) => column.key === key);
        const others = columns.filter(({ key }) => key !== state.key);
        const values = [byKey(state.key), ...others].map(valueOf);
        return sorted(rows, [...values, ({ Id }) => Id], state);
    }

    function draw() {
        const focused = focusedPlace(parts.body);
        parts.body.replaceChildren(...inOrder().map((row) => rowOf(row, description)));
        parts.table.hidden = rows.length === 0;
        parts.empty.hidden = rows.length > 0;
        for (const { button, needsRows } of actions) {
            if (needsRows) button.hidden = rows.length === 0;
        }
        drawTotals(parts.foot, rows, description);
        parts.count.textContent = countText(rows, description);
        showOrder(state);
        restoreFocus(parts.body, focused);
    }

    function exportRows() {
        const all = [{ label: "Id", value: ({ Id }) => Id }];
        for (const column of columns) all.push({ label: column.label, value: valueOf(column) });
        saveCsv(description.fileName(), all, inOrder());
        announce(`${countText(rows, description)} exported`);
    }

    return (shown) => {
        rows = shown;
        draw();
    };
}

/** "5 expenses"; "1 expense, $40.00 in all" where the description has more to say. */
function countText(rows, { name: [one, several], format, summary }) {
    const count = rows.length === 1 ? `1 ${one}` : `${format.whole(rows.length)} ${several}`;
    const more = rows.length > 0 ? summary?.(rows) : "";
    return [count, more].filter(Boolean).join(", ");
}

function valueOf({ key, value }) {
    return value ?? ((row) => row[key]);
}

/** A value as people read it. */
export function shownText(value, format) {
    if (value instanceof Currency) return format.money(value.rounded());
    if (value instanceof DateTime) return format.dateTime(value, format.longDate);
    if (typeof value === "number") return format.whole(value);
    if (typeof value === "boolean") return value ? "Yes" : "No";
    return value ?? "";
}

function isNumeric(value) {
    return value instanceof Currency || typeof value === "number";
}

function layOut(panel, { name: [, several], columns, actions = [], empty }) {
    const head = document.createElement("div");
    head.className = "list-head";
    const count = document.createElement("p");
    count.className = "count";
    count.setAttribute("role", "status");
    const tools = document.createElement("div");
    tools.className = "actions";
    head.append(count, tools);

    const table = document.createElement("table");
    table.className = "cards";
    table.hidden = true;
    const caption = table.createCaption();
    caption.className = "visually-hidden";
    caption.textContent = several[0].toUpperCase() + several.slice(1);
    const heads = table.createTHead().insertRow();
    for (const { key, label, exportOnly, number } of columns) {
        if (!exportOnly) heads.append(headCell(label, key, number));
    }
    if (actions.length > 0) heads.append(hiddenHead("Actions"));
    const body = table.createTBody();
    const foot = table.createTFoot();

    const nothing = document.createElement("p");
    nothing.className = "empty";
    nothing.textContent = empty;
    nothing.hidden = true;
    panel.replaceChildren(head, table, nothing);
    return { tools, count, table, body, foot, empty: nothing };
}

function headCell(label, key, number) {
    const cell = document.createElement("th");
    cell.scope = "col";
    cell.textContent = label;
    cell.dataset.sort = key;
    if (number) cell.className = "number";
    return cell;
}

function hiddenHead(label) {
    const cell = document.createElement("th");
    cell.scope = "col";
    const words = document.createElement("span");
    words.className = "visually-hidden";
    words.textContent = label;
    cell.append(words);
    return cell;
}

function toolButton({ label, run, isPrimary, needsRows }) {
    const button = document.createElement("button");
    button.type = "button";
    button.textContent = label;
    if (isPrimary) button.className = "primary";
    onPress(button, run);
    return { button, needsRows };
}

function rowOf(row, { columns, format, actions = [], open, titleOf }) {
    const element = document.createElement("tr");
    element.dataset.id = row.Id;
    const visible = columns.filter(({ exportOnly }) => !exportOnly);
    for (const [index, column] of visible.entries()) {
        const cell = document.createElement(index === 0 ? "th" : "td");
        if (index === 0) cell.scope = "row";
        else cell.dataset.label = column.label;
        const value = valueOf(column)(row);
        const text = column.text?.(row) ?? shownText(value, format);
        if (index === 0 && open) cell.append(openButton(text, () => open(row)));
        else cell.append(span(text, typeof value === "string" ? "lines" : ""));
        const faint = column.faint?.(row);
        if (faint) cell.append(span(faint, "faint"));
        if (isNumeric(value)) cell.classList.add("number");
        if (value instanceof DateTime) cell.classList.add("when");
        const mark = column.mark?.(row);
        if (mark) cell.classList.add(mark);
        element.append(cell);
    }
    if (actions.length === 0) return element;
    const cell = document.createElement("td");
    cell.className = "row-actions";
    for (const { label, run, isShown } of actions) {
        if (isShown && !isShown(row)) continue;
        const button = document.createElement("button");
        button.type = "button";
        button.className = "quiet";
        button.textContent = label;
        button.setAttribute("aria-label", `${label} ${titleOf(row)}`);
        onPress(button, () => run(row));
        cell.append(button);
    }
    element.append(cell);
    return element;
}

function openButton(text, run) {
    const button = document.createElement("button");
    button.type = "button";
    button.className = "row-link";
    button.textContent = text || "(no name)";
    onPress(button, run);
    return button;
}

function span(text, className) {
    const element = document.createElement("span");
    element.className = className;
    element.textContent = text;
    return element;
}

function drawTotals(foot, rows, { columns, format, actions = [] }) {
    foot.replaceChildren();
    if (rows.length < 2 || !columns.some(({ total }) => total)) return;
    const line = foot.insertRow();
    for (const [index, column] of columns.filter(({ exportOnly }) => !exportOnly).entries()) {
        const cell = document.createElement(index === 0 ? "th" : "td");
        if (index === 0) {
            cell.scope = "row";
            cell.textContent = "Total";
        } else if (column.total) {
            cell.dataset.label = column.label;
            cell.className = "number";
            cell.textContent = shownText(totalOf(rows.map(valueOf(column))), format);
        }
        line.append(cell);
    }
    if (actions.length > 0) line.insertCell();
}

/** The sum of amounts, or of whole numbers. */
function totalOf(values) {
    return values.reduce((all, value) =>
        all instanceof Currency ? all.plus(value) : all + value,
    );
}

/** "amount-desc" as { key, descending }; undefined when no column is called so. */
function orderFrom(text, columns) {
    const [key, direction] = (text ?? "").split("-");
    const known = columns.some((column) => column.key === key && !column.exportOnly);
    return known ? { key, descending: direction === "desc" } : undefined;
}

/** The preference under which the order of a list is remembered. */
export function orderPreference(several) {
    return `details-${several}-sort`;
}

function keepOrder(several, { key, descending }) {
    const text = descending ? `${key}-desc` : key;
    const address = new URL(location.href);
    address.searchParams.set(several, text);
    history.replaceState(history.state, "", address);
    remember(orderPreference(several), text);
}

/** Where in the list the focus stands: the row, its place and which of its buttons. */
function focusedPlace(body) {
    const row = document.activeElement?.closest?.("tr[data-id]");
    if (!row || row.parentElement !== body) return undefined;
    const buttons = [...row.querySelectorAll("button")];
    return {
        id: row.dataset.id,
        place: row.sectionRowIndex,
        button: buttons.indexOf(document.activeElement),
    };
}

function restoreFocus(body, focused) {
    if (!focused) return;
    const row =
        body.querySelector(`tr[data-id="${focused.id}"]`) ??
        body.rows[focused.place] ??
        [...body.rows].at(-1);
    const buttons = row ? [...row.querySelectorAll("button")] : [];
    (buttons[focused.button] ?? buttons[0] ?? document.querySelector("main h1"))?.focus();
}
