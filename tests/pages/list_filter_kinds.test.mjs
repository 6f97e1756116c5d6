import assert from "node:assert/strict";
import { test } from "node:test";
import { operatorOf, storedValue, typedValue } from "../../pages/host/list_filter_kinds.js";
import { localeFormats } from "../../pages/lib/locale.js";

const format = localeFormats({
    order: "dayMonthYear",
    dateSeparator: ".",
    twelveHours: false,
    currencySymbol: "€",
    symbolLeads: false,
    decimalMark: ",",
    groupMark: ".",
});

test("Values of filters go to the host as it takes them and come back as they are typed", () => {
    const cases = [
        ["date", "7.3.2026", "2026-03-07", "7.3.2026"],
        ["date", "yesterday", "yesterday", "yesterday"],
        ["money", "1.000,5 €", "1000.50", "1.000,50 €"],
        ["number", " 12 ", "12.00", "12"],
        ["number", "1,25", "1.25", "1.25"],
        ["money", "much", "much", "much"],
        ["text", " 7.3 % ", " 7.3 % ", " 7.3 % "],
        ["money", "  ", "", ""],
    ];
    for (const [kind, typed, stored, shown] of cases) {
        assert.equal(storedValue(kind, typed, format), stored, typed);
        assert.equal(typedValue(kind, stored, format), shown, stored);
    }
});

test("An operator that a kind does not have gives way to its first", () => {
    assert.equal(operatorOf("date", "between").takes, 2);
    assert.equal(operatorOf("text", "atleast").name, "contains");
    assert.equal(operatorOf("choice", "").name, "anyof");
});
