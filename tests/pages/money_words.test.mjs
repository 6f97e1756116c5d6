import assert from "node:assert/strict";
import { test } from "node:test";
import { localeFormats } from "../../pages/lib/locale.js";
import {
    dueWords, standing, standingOfAll, sum, times,
} from "../../pages/lib/money_words.js";
import { Currency } from "../../pages/lib/values.js";

const format = localeFormats({
    order: "mdy", dateSeparator: "/", twelveHours: true, currencySymbol: "$", symbolLeads: true,
    decimalMark: ".", groupMark: ",",
});
const money = (text) => Currency.parse(text);
const standingOf = ([expected, direct, gifts]) =>
    standing({ expected: money(expected), direct: money(direct), gifts: money(gifts) });

test("what is due is told in words, gifts counted with what was paid directly", () => {
    const cases = [
        [["100", "60", "0"], "$40.00 due"], [["100", "60", "40"], "paid in full"],
        [["100", "100", "10"], "$10.00 over"], [["0", "0", "0"], "nothing to pay"],
        [["0", "5", "0"], "$5.00 over"], [["1234.5", "0", "0.01"], "$1,234.49 due"],
        [["0.3", "0.1", "0.2"], "paid in full"], [["100", "-20", "100"], "$20.00 due"],
    ];
    for (const [amounts, words] of cases) {
        assert.equal(dueWords(standingOf(amounts), format), words, String(amounts));
    }
});

test("the total of a list is the sum of its rows to the cent", () => {
    const rows = [["33.3333", "0", "0"], ["33.3333", "10", "0"], ["33.3334", "0", "90"]];
    const total = standingOfAll(rows.map(standingOf));
    assert.equal(total.expected.toString(), "100.00");
    assert.equal(dueWords(total, format), "paid in full");
    assert.equal(standingOfAll([]).due.toString(), "0.00");
});

test("line totals are exact, and none where they are out of range", () => {
    assert.equal(times(money("0.1"), 3).toString(), "0.30");
    assert.equal(times(money("12.3456"), 1000).toString(), "12345.60");
    assert.equal(times(money("900000000000"), 2000000), undefined);
    assert.equal(sum([money("0.1"), money("0.2")]).toString(), "0.30");
});
