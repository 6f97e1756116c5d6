// The lines of a report as a table: a part for each group, sums in their columns.

import { build } from "../lib/build.js";
import { beginsGroup, beginsOutermost, captionSpan } from "./report_groups.js";
import { cellWords, isFigure } from "./report_values.js";

/**
 * An empty table of a report in `holder`. Gives `add(lines)`, which appends lines as they come in
 * the order of printing, and `groups()`, how many outermost ones there are. On paper each of these
 * begins a page where the holder's class is "paged".
 */
export function reportTable(holder, columns, { title, format }) {
    const chars = columns.reduce((sum, { Width }) => sum + widthOf(Width), 0);
    const table = build("table", { className: "report-table" },
        build("caption", { className: "visually-hidden", text: title }),
        build("colgroup", {}, ...columns.map(({ Width }) => colOf(widthOf(Width) / chars))),
        build("thead", {}, build("tr", {}, ...columns.map(headOf))));
    table.style.setProperty("--chars", chars);
    holder.replaceChildren(table);
    // A table wider than the screen is scrolled, also with keys.
    Object.assign(holder, { tabIndex: 0, role: "region", ariaLabel: title });
    new ResizeObserver(() => {
        holder.classList.toggle("wide", table.offsetWidth > holder.clientWidth + 1);
    }).observe(holder);
    const naming = Math.max(columns.findIndex(({ Kind }) => Kind === "text"), 0);
    // A line's link is its event's, so the event's name leads there and no other.
    const events = columns.findIndex(({ Key }) => /^event(name)?$/i.test(Key));
    let body;
    let groups = 0;

    function add(lines) {
        if (body) freezeColumns(table);
        for (const line of lines) {
            if (!body || beginsGroup(line)) {
                body = build("tbody", { className: beginsOutermost(line) ? "outermost" : "" });
                if (beginsOutermost(line)) groups += 1;
                table.append(body);
            }
            body.append(rowOf(line));
        }
    }

    function rowOf(line) {
        const className = `${line.Kind} level-${line.Level}`;
        if (line.Kind === "head") {
            const head = { colSpan: columns.length, scope: "rowgroup" };
            return build("tr", { className },
                build("th", head, linked(line.Caption, line.Link)));
        }
        if (line.Kind === "row") {
            return build("tr", {}, ...columns.map((column, at) => cellOf(line, column, at)));
        }
        const span = captionSpan(line);
        return build("tr", { className },
            build("th", { colSpan: span, scope: "row", text: line.Caption }),
            ...columns.slice(span).map((column, at) => cellOf(line, column, at + span)));
    }

    function cellOf({ Cells, Kind, Link }, column, at) {
        const words = cellWords(Cells[at], column.Kind, format);
        const className = alignOf(column);
        const shown = Kind === "row" && at === events ? linked(words, Link) : words;
        if (at !== naming || Kind !== "row") return build("td", { className }, shown);
        return build("th", { scope: "row", className }, shown);
    }

    return { add, groups: () => groups };
}

/**
 * Keeps the columns as wide as the first lines made them, so that the browser need not measure
 * thousands of lines anew whenever more come in.
 */
function freezeColumns(table) {
    if (table.classList.contains("frozen")) return;
    const widths = [...table.tHead.rows[0].cells].map(({ offsetWidth }) => offsetWidth);
    const all = widths.reduce((sum, width) => sum + width, 0);
    [...table.querySelectorAll("col")].forEach((col, at) => {
        col.style.width = `${((widths[at] / all) * 100).toFixed(2)}%`;
    });
    table.classList.add("frozen");
}

const usualWidth = 10;
const widthOf = (width) => (width > 0 ? width : usualWidth);

function colOf(share) {
    const col = build("col");
    col.style.width = `${(share * 100).toFixed(2)}%`;
    return col;
}

function headOf(column) {
    if (!column.Caption) return build("td"); // a head without words would be none
    return build("th", { scope: "col", className: alignOf(column), text: column.Caption });
}

function alignOf(column) {
    if (column.Align === "center") return "centred";
    return isFigure(column) ? "number" : "";
}

/** `text`, leading to the event `id` where there is one. */
function linked(text, id) {
    return id && text ? build("a", { href: `/events/event-details?id=${id}`, text }) : text;
}
