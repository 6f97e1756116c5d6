// Orders rows by what their values are: numbers as numbers, names without regard to case.

import { Currency, DateTime } from "./values.js";

const names = new Intl.Collator("en", { sensitivity: "base" });

/** Less than, equal to or greater than 0 as `one` stands before, beside or after `other`. */
export function compareValues(one, other) {
    if (one instanceof Currency && other instanceof Currency) {
        return Number(one.scaled > other.scaled) - Number(one.scaled < other.scaled);
    }
    if (one instanceof DateTime && other instanceof DateTime) return order(one.text, other.text);
    if (typeof one === "string" && typeof other === "string") return names.compare(one, other);
    const [isThere, otherIsThere] = [one ?? undefined, other ?? undefined].map(
        (value) => value !== undefined,
    );
    return isThere && otherIsThere ? order(one, other) : order(isThere, otherIsThere);
}

function order(one, other) {
    return Number(one > other) - Number(one < other);
}

/**
 * `rows` in the order of the first of `values` (functions of a row); the others decide where it
 * ties, always upwards.
 */
export function sorted(rows, [first, ...others], { descending = false } = {}) {
    const direction = descending ? -1 : 1;
    return [...rows].sort((one, other) => {
        const byFirst = direction * compareValues(first(one), first(other));
        if (byFirst !== 0) return byFirst;
        for (const value of others) {
            const byNext = compareValues(value(one), value(other));
            if (byNext !== 0) return byNext;
        }
        return 0;
    });
}
