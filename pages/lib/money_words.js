// What is owed, in numbers and in words: the one place that works it out.

import { Currency } from "./values.js";

export const nothing = new Currency();

/** The sum of `amounts`, exact. */
export function sum(amounts) {
    return amounts.reduce((total, amount) => total.plus(amount), nothing);
}

/** `price` times the whole number `quantity`, exact; undefined where it is out of range. */
export function times(price, quantity) {
    const product = new Currency(price.scaled * BigInt(quantity));
    return Currency.parse(product.toString());
}

/**
 * How a reservation stands: what is expected, what was paid on it directly and by gifts, paid in
 * all, and what is still due (below zero when too much was paid).
 */
export function standing({ expected, direct, gifts }) {
    const paid = direct.plus(gifts);
    return { expected, direct, gifts, paid, due: expected.minus(paid) };
}

/** The standing of several reservations together. */
export function standingOfAll(standings) {
    const total = (name) => sum(standings.map((one) => one[name]));
    return standing({
        expected: total("expected"),
        direct: total("direct"),
        gifts: total("gifts"),
    });
}

/** "paid in full", "$40.00 due", "$10.00 over", or "nothing to pay". */
export function dueWords({ expected, paid, due }, format) {
    const cents = due.rounded();
    if (cents.isNegative) return `${format.money(nothing.minus(cents))} over`;
    if (!cents.isZero) return `${format.money(cents)} due`;
    return expected.isZero && paid.isZero ? "nothing to pay" : "paid in full";
}
