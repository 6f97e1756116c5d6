// The values of a report: as texts to read, and those of its filters as texts in its address.

import { Currency, DateTime } from "../lib/values.js";

/** A cell as people read it, by the kind of its column where the value alone does not say. */
export function cellWords(value, kind, format) {
    if (value instanceof Currency) return format.money(value.rounded());
    if (value instanceof DateTime && kind === "date") return format.date(value);
    if (value instanceof DateTime) return format.dateTime(value);
    if (typeof value === "boolean") return value ? "Yes" : "No";
    if (typeof value !== "number") return String(value ?? "");
    return kind === "percent" ? `${format.number(value, 1, 1)}%` : format.number(value);
}

/** Which columns hold figures, which stand to the right and are added up. */
export function isFigure({ Kind, Align }) {
    return Align === "right" || ["money", "number", "percent"].includes(Kind);
}

// --- Filters

const isDay = (text) =>
    /^\d{4}-\d\d-\d\d$/.test(text) &&
    new Date(Date.parse(text) || 0).toISOString().startsWith(text);

/**
 * By the kind of a filter: the field of a form in which it is asked, how its value is written in an
 * address, and what the host is given for that; it judges what is blank or cannot be read.
 */
const kinds = {
    date: {
        field: "date",
        text: (value) => (value instanceof DateTime ? value.date : String(value ?? "")),
        value: (text) => (isDay(text) ? DateTime.of(text) : text),
    },
    yesno: {
        field: "yesNo",
        text: (value) => (value ? "1" : "0"),
        value: (text) => text === "1",
    },
    number: { field: "whole" },
    choice: { field: "pick" },
    text: { field: "text" },
};
const kindOf = ({ Kind }) =>
    ["event", "activity", "list"].includes(Kind) ? kinds.choice : (kinds[Kind] ?? kinds.text);

/** The description of the form field that asks for `filter`. */
export function fieldOf(filter) {
    const { Key, Caption, Required } = filter;
    const none = Required ? "Choose…" : "Any";
    return { name: Key, label: Caption, kind: kindOf(filter).field, required: Required, none };
}

/** A filter's value as it stands in the address. */
export function filterText(filter, value) {
    return (kindOf(filter).text ?? plainText)(value);
}

/** A filter's value from the address. */
export function filterValue(filter, text) {
    return kindOf(filter).value?.(text) ?? text;
}

const plainText = (value) => String(value ?? "");

/** What is still to be entered for a filter that needs a value, or "". */
export function missingWords(filter, value) {
    if (!filter.Required) return "";
    if (filterText(filter, value)) return "";
    const words = { pick: "Choose one.", date: "Enter a date." };
    return words[kindOf(filter).field] ?? "Enter something.";
}
