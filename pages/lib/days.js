// Reckoning with days.

import { DateTime } from "./values.js";

const day = 86400000;

/** From one day ("2026-03-07") to another, in days; undefined unless both are there. */
export function daysBetween(from, to) {
    return from && to ? Math.round((Date.parse(to) - Date.parse(from)) / day) : undefined;
}

/** `value` by `days` later; what has no date stays as it is. */
export function shifted(value, days) {
    if (!value.date || !days) return value;
    const date = new Date(Date.parse(value.date) + days * day).toISOString().slice(0, 10);
    return DateTime.of(date, value.time);
}
