// A reservation line as it is typed: numbers read, limits checked, nothing of the page.

import { nothing, sum, times } from "../lib/money_words.js";

const largest = 2147483647;

/** { quantity } or { problem }, from what was typed. */
export function readQuantity(typed, format) {
    const text = typed.trim();
    if (!text) return { problem: "Enter how many." };
    const quantity = format.parseWhole(text);
    if (quantity === undefined) return { problem: whyNoQuantity(text, format) };
    if (quantity < 1) return { problem: "The quantity must be 1 or more." };
    return { quantity };
}

function whyNoQuantity(text, format) {
    const amount = format.parseMoney(text);
    const isTooLarge = amount && amount.scaled / 10000n > largest;
    return isTooLarge ? `“${text}” is too large.` : `“${text}” is not a whole number.`;
}

/** { price } or { problem }; nothing typed is a price of 0. */
export function readPrice(typed, format) {
    const text = typed.trim();
    if (!text) return { price: nothing };
    const price = format.parseMoney(text);
    return price ? { price } : { problem: `“${text}” is not an amount of money.` };
}

/** The total of a line, or undefined while there is none to tell. */
export function lineTotal(typed, format) {
    const { quantity } = readQuantity(typed.quantity, format);
    const { price } = readPrice(typed.price, format);
    return quantity === undefined || price === undefined ? undefined : times(price, quantity);
}

/** What the lines that can be read come to. */
export function linesTotal(lines, format) {
    return sum(lines.map((line) => lineTotal(line, format)).filter(Boolean));
}

/**
 * How many units of `activity` are left for a line when the other lines of its reservation take
 * `taken`; undefined where they are not limited. `activity.remaining` is what all other
 * reservations leave.
 */
export function leftOf(activity, taken) {
    if (activity.remaining === undefined) return undefined;
    return Math.max(0, activity.remaining - taken);
}

/** "12 left", "sold out", "no limit". */
export function leftWords(left, format) {
    if (left === undefined) return "no limit";
    return left === 0 ? "sold out" : `${format.whole(left)} left`;
}

/** Why `quantity` cannot be had, with the number left; blank when it can. */
export function whyTooMany(quantity, left, format) {
    if (left === undefined || quantity <= left) return "";
    if (left === 0) return "Sold out: none are left.";
    return left === 1 ? "Only 1 is left." : `Only ${format.whole(left)} are left.`;
}

/**
 * The answers of a line to the fields of its activity: those given, and for the others the
 * default. Answers to fields that the activity no longer asks come last and are kept.
 */
export function answersFor(fields, given) {
    const asked = fields.map(({ type, name, defaultValue }) => ({
        type,
        name,
        value: given.find((answer) => answer.name === name)?.value ?? defaultValue,
    }));
    const names = new Set(fields.map(({ name }) => name));
    return [...asked, ...given.filter(({ name }) => !names.has(name))];
}

/** Whether two lines hold the same, whoever typed them. */
export function sameLine(one, other) {
    const plain = ({ activityId, price, quantity, notes, answers }) =>
        JSON.stringify([activityId, price.toString(), quantity, notes ?? "", plainAnswers(answers)]);
    return plain(one) === plain(other);
}

function plainAnswers(answers) {
    return answers
        .filter(({ value }) => value)
        .map(({ name, value }) => [name, value])
        .sort();
}
