// How the filters of lists compare, by the kind of what they compare: the operators with their
// words and how many values they take, and values as they are typed and as the host takes them.

import { Currency, DateTime } from "../lib/values.js";

const numbers = [
    { name: "atleast", words: "is at least", takes: 1 },
    { name: "atmost", words: "is at most", takes: 1 },
    { name: "between", words: "is between", takes: 2 },
    { name: "exactly", words: "is exactly", takes: 1 },
];

export const operators = {
    text: [
        { name: "contains", words: "contains", takes: 1 },
        { name: "starts", words: "starts with", takes: 1 },
        { name: "is", words: "is", takes: 1 },
        { name: "blank", words: "is blank", takes: 0 },
        { name: "notblank", words: "is not blank", takes: 0 },
    ],
    yesno: [{ name: "is", words: "is", takes: 1 }],
    date: [
        { name: "from", words: "is on or after", takes: 1 },
        { name: "until", words: "is on or before", takes: 1 },
        { name: "between", words: "is between", takes: 2 },
        { name: "blank", words: "is blank", takes: 0 },
        { name: "notblank", words: "is not blank", takes: 0 },
    ],
    money: numbers,
    number: numbers,
    choice: [
        { name: "anyof", words: "is any of", takes: Infinity },
        { name: "noneof", words: "is none of", takes: Infinity },
    ],
};

/** The operator of `kind` called `name`, or its first one. */
export function operatorOf(kind, name) {
    return operators[kind].find((one) => one.name === name) ?? operators[kind][0];
}

/** What was typed as the host takes it; what cannot be read goes as it is, for the host to name. */
export function storedValue(kind, typed, format) {
    const text = typed.trim();
    if (kind === "date") return text ? (format.parseDate(text) ?? text) : "";
    if (kind === "money" || kind === "number") {
        return text ? (format.parseMoney(text)?.toString() ?? text) : "";
    }
    return typed;
}

/** A stored value as the user types it. */
export function typedValue(kind, stored, format) {
    if (kind === "date" && /^\d{4}-\d\d-\d\d$/.test(stored)) {
        return format.date(DateTime.of(stored));
    }
    const amount = kind === "money" || kind === "number" ? Currency.parse(stored) : undefined;
    if (amount && kind === "money") return format.money(amount);
    if (amount && stored.endsWith(".00")) return stored.slice(0, -3);
    return stored;
}
