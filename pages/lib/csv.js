// Lists as files that spreadsheets open: comma separated, marked as UTF-8.

import { Currency, DateTime } from "./values.js";

const mark = "\uFEFF";
const separators = [",", ";", "\t"];

/** A file's text: the labels of `columns` ({ label, value(row) }), then a line for each row. */
export function csvText(columns, rows) {
    const lines = [
        columns.map(({ label }) => quoted(harmless(label))),
        ...rows.map((row) => columns.map(({ value }) => quoted(cellText(value(row))))),
    ];
    return mark + lines.map((cells) => `${cells.join(",")}\r\n`).join("");
}

/** A value as it stands in a file: dates as ISO, amounts plain, what was not entered blank. */
export function cellText(value) {
    if (value === undefined || value === null) return "";
    if (value instanceof DateTime) return [value.date, value.time].filter(Boolean).join("T");
    if (value instanceof Currency) return value.toString();
    if (typeof value === "boolean") return value ? "yes" : "no";
    if (typeof value === "number") return String(value);
    return harmless(String(value));
}

/** A spreadsheet would run a text that begins like a formula; an apostrophe keeps it a text. */
function harmless(text) {
    return /^\s*[=+\-@]|^[\t\r]/.test(text) ? `'${text}` : text;
}

function quoted(text) {
    return /[",;\r\n\t]|^\s|\s$/.test(text) ? `"${text.replaceAll('"', '""')}"` : text;
}

/**
 * The rows of a file's text, each an array of cells; lines with nothing in them are left out. The
 * separator is the one that the first line has most of.
 */
export function parseCsv(text) {
    const source = text.replace(mark, "");
    const [firstLine] = source.split(/\r?\n/, 1);
    const count = (separator) => firstLine.split(separator).length;
    const separator = separators.reduce((best, one) => (count(one) > count(best) ? one : best));

    const rows = [];
    let cells = [];
    let cell = "";
    let isQuoted = false;
    const endRow = () => {
        cells.push(cell);
        cell = "";
        if (cells.some((one) => one.trim())) rows.push(cells);
        cells = [];
    };
    for (let at = 0; at < source.length; at += 1) {
        const char = source[at];
        if (isQuoted && char === '"' && source[at + 1] === '"') {
            cell += '"';
            at += 1;
        } else if (char === '"' && (isQuoted || !cell)) {
            isQuoted = !isQuoted;
        } else if (isQuoted) {
            cell += char;
        } else if (char === separator) {
            cells.push(cell);
            cell = "";
        } else if (char === "\n") {
            endRow();
        } else if (char !== "\r") {
            cell += char;
        }
    }
    endRow();
    return rows;
}

/** Gives `rows` to the user as a file called after `name`. */
export function saveCsv(name, columns, rows) {
    saveFile(`${fileName(name)}.csv`, "text/csv", csvText(columns, rows));
}

/** Gives `text` to the user as a file of this name and type. */
export function saveFile(name, type, text) {
    const link = document.createElement("a");
    link.href = URL.createObjectURL(new Blob([text], { type: `${type};charset=utf-8` }));
    link.download = name;
    link.click();
    // The browser reads the file after the click has returned.
    setTimeout(() => URL.revokeObjectURL(link.href), 60000);
}

/** `name` without what file systems refuse. */
export function fileName(name) {
    return name.replace(/[\\/:*?"<>|\s]+/g, " ").trim().slice(0, 100) || "list";
}
