import assert from "node:assert/strict";
import { test } from "node:test";
import {
    answersFor, leftOf, leftWords, linesTotal, readPrice, readQuantity, sameLine,
    whyTooMany,
} from "../../pages/events/line_rules.js";
import { localeFormats } from "../../pages/lib/locale.js";
import { Currency } from "../../pages/lib/values.js";

const format = localeFormats({
    order: "mdy", dateSeparator: "/", twelveHours: true, currencySymbol: "$", symbolLeads: true,
    decimalMark: ".", groupMark: ",",
});

test("a quantity is a whole number of at least one, or the reason is told", () => {
    const cases = [
        ["3", 3], [" 1,200 ", 1200], ["", "Enter how many."],
        ["0", "The quantity must be 1 or more."], ["-1", "The quantity must be 1 or more."],
        ["1.5", "“1.5” is not a whole number."], ["ten", "“ten” is not a whole number."],
        ["99999999999", "“99999999999” is too large."], ["1.200", "“1.200” is not a whole number."],
    ];
    for (const [typed, expected] of cases) {
        const { quantity, problem } = readQuantity(typed, format);
        assert.equal(quantity ?? problem, expected, typed);
    }
});

test("a price is an amount in the user's own format", () => {
    const cases = [
        ["", "0.00"], ["$1,234.50", "1234.50"], ["12.3456", "12.3456"],
        ["1.234,50", "“1.234,50” is not an amount of money."],
        ["12 EUR", "“12 EUR” is not an amount of money."],
    ];
    for (const [typed, expected] of cases) {
        const { price, problem } = readPrice(typed, format);
        assert.equal(price?.toString() ?? problem, expected, typed);
    }
    const typed = [["2", "25"], ["ten", "25"], ["3", "0.10"]];
    const lines = typed.map(([quantity, price]) => ({ quantity, price }));
    assert.equal(linesTotal(lines, format).toString(), "50.30");
});

test("what is left counts the reservation's other lines, and nothing where there is no limit", () => {
    const cases = [
        [12, 0, 12, "12 left"], [12, 10, 2, "2 left"], [3, 5, 0, "sold out"],
        [undefined, 5, undefined, "no limit"],
    ];
    for (const [remaining, taken, left, words] of cases) {
        assert.equal(leftOf({ remaining }, taken), left);
        assert.equal(leftWords(left, format), words);
    }
    assert.equal(whyTooMany(3, 2, format), "Only 2 are left.");
    assert.equal(whyTooMany(1, 0, format), "Sold out: none are left.");
    for (const [quantity, left] of [[2, 2], [5000, undefined]]) {
        assert.equal(whyTooMany(quantity, left, format), "");
    }
});

test("answers start with the defaults, keep what was given and forget nothing", () => {
    const fields = [
        { type: 1, name: "Table", defaultValue: "" },
        { type: 2, name: "Meal", defaultValue: "Fish" },
    ];
    assert.deepEqual(answersFor(fields, []).map(({ value }) => value), ["", "Fish"]);
    const given = [
        { type: 1, name: "Former", value: "kept" }, { type: 2, name: "Meal", value: "" },
    ];
    assert.deepEqual(answersFor(fields, given).map(({ name, value }) => [name, value]),
        [["Table", ""], ["Meal", ""], ["Former", "kept"]]);
});

test("lines are the same by what they hold", () => {
    const line = (changes) => ({
        activityId: 1, price: Currency.parse("5"), quantity: 2, notes: "", answers: [], ...changes,
    });
    const blank = [{ name: "Meal", type: 2, value: "" }];
    assert.equal(sameLine(line(), line({ answers: blank, notes: undefined })), true);
    for (const changes of [
        { quantity: 3 }, { price: Currency.parse("5.01") }, { notes: "x" },
        { answers: [{ name: "Meal", type: 2, value: "Fish" }] },
    ]) {
        assert.equal(sameLine(line(), line(changes)), false, JSON.stringify(Object.keys(changes)));
    }
});
