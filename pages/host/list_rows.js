// The records of a list as rows: heads that sort, cells by their kinds, links to donor and event.

import { all, ask, list, release } from "../lib/app.js";
import { build } from "../lib/build.js";
import { saveCsv } from "../lib/csv.js";
import { growingList } from "../lib/long_list.js";
import { arrowKeys, sortableHeads } from "../lib/table.js";
import { Currency, DateTime } from "../lib/values.js";

const keyCount = 3; // of the record, its donor and its event, before the columns
const exportRange = 2500;
const isNumeric = ({ Kind }) => Kind === "money" || Kind === "number";

/** Sets up `table`, in which `more` shows further rows; `onSort(name)` hears of a head pressed. */
export function listRows(table, more, { format, onSort }) {
    const body = table.tBodies[0];
    let result;
    let columns = [];
    const rows = growingList(body, more, {
        make: rowOf,
        read: (start, count) => result.Rows(start, count),
    });
    arrowKeys(body);

    function rowOf(values) {
        const [id, donor, event] = values;
        return build("tr", { data: { id } }, ...columns.map((column, index) => {
            const value = values[keyCount + index];
            const text = shownText(value, column, format);
            const link = linkOf(column, index, { donor, event, value });
            const cell = build(index === 0 ? "th" : "td",
                { className: isNumeric(column) ? "number" : "", data: { label: column.Caption } });
            if (index === 0) cell.scope = "row";
            if (link && (text || index === 0)) {
                cell.append(build("a", {
                    href: link,
                    className: index === 0 ? "row-link" : "",
                    text: text || "(no name)",
                }));
            } else {
                cell.textContent = text;
            }
            return cell;
        }));
    }

    return {
        result: () => result,
        reach: (most) => rows.reach(most),

        /** Shows what `read`, a result that the host holds, gave. */
        async show(read, count, shown, order) {
            if (result) release(result);
            result = read;
            columns = shown;
            const heads = build("tr", {}, ...columns.map((column) =>
                build("th", {
                    scope: "col",
                    text: column.Caption,
                    className: isNumeric(column) ? "number" : "",
                    data: { sort: column.Name },
                })));
            const focused = document.activeElement?.closest("th[data-sort]")?.dataset.sort;
            table.tHead.replaceChildren(heads);
            sortableHeads(table, onSort)({ ...order, key: nameIn(columns, order.key) });
            if (focused) headOf(table, focused)?.focus();
            table.hidden = count === 0 || columns.length === 0;
            await rows.show(count);
        },

        /** Saves all rows as a file called after `name`. */
        async exportAll(name, count) {
            const found = [];
            while (found.length < count) {
                const some = await result.Rows(found.length, exportRange);
                if (some.length === 0) break;
                found.push(...some);
            }
            saveCsv(name, [
                { label: "Id", value: ([id]) => id },
                ...columns.map(({ Caption }, index) => ({
                    label: Caption,
                    value: (values) => values[keyCount + index],
                })),
            ], found);
            return found.length;
        },
    };
}

/** A result's columns, { Name, Caption, Kind }, and what there is to say about it. */
export async function readResult(result) {
    const [{ rows: columns }, { rows: faults }, warnings] = await Promise.all([
        list(result.Columns, ["Name", "Caption", "Kind"]),
        list(result.Faults, ["Filter", "Text"]),
        textsOf(result.Warnings),
    ]);
    return { columns, faults, warnings };
}

/** The texts of a collection of texts. */
export async function textsOf(collection) {
    const count = await collection.Count;
    return all(Array.from({ length: count }, (_, index) => ask.call(collection.Item(index + 1))));
}

function headOf(table, name) {
    const heads = [...table.tHead.querySelectorAll("th")];
    return heads.find(({ dataset }) => dataset.sort === name)?.querySelector("button");
}

function nameIn(columns, key) {
    return columns.find(({ Name }) => Name.toLowerCase() === key?.toLowerCase())?.Name;
}

/** A value as people read it. */
export function shownText(value, { Name, Kind }, format) {
    if (value === null || value === undefined) return "";
    if (value instanceof Currency) return format.money(value.rounded());
    if (value instanceof DateTime) return format.dateTime(value);
    if (typeof value === "number" && Kind === "number") {
        const isKey = /id$/i.test(Name);
        return Number.isInteger(value) && !isKey ? format.whole(value) : String(value);
    }
    return String(value);
}

function linkOf({ Name }, index, { donor, event, value }) {
    if (index === 0) return donor ? `/donor/details-donor?id=${donor}` : undefined;
    const name = Name.toLowerCase();
    if (name === "donationfkeventid" && value) return `/events/event-details?id=${value}`;
    if (name === "donationeventorreservationname" && event) {
        return `/events/event-details?id=${event}`;
    }
    return undefined;
}
