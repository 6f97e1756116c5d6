import assert from "node:assert/strict";
import { test } from "node:test";
import { localeFormats, parseTime } from "../../pages/lib/locale.js";
import { Currency, DateTime } from "../../pages/lib/values.js";

const american = { order: "mdy", dateSeparator: "/", twelveHours: true, currencySymbol: "$",
    symbolLeads: true, decimalMark: ".", groupMark: "," };
const german = { order: "dmy", dateSeparator: ".", twelveHours: false, currencySymbol: "€",
    symbolLeads: false, decimalMark: ",", groupMark: "." };
const us = localeFormats(american);
const de = localeFormats(german);
const sv = localeFormats({ ...german, order: "ymd", dateSeparator: "-", groupMark: " " });

test("typed dates are read in the locale's order, and impossible ones are not", () => {
    const cases = [
        [us, "3/7/2026", "2026-03-07"], [us, " 03-07-26 ", "2026-03-07"],
        [us, "2026-3-7", "2026-03-07"], [de, "7.3.2026", "2026-03-07"],
        [de, "7/3/30", "1930-03-07"], [sv, "26-03-07", "2026-03-07"],
        [us, "March 7, 2026", "2026-03-07"], [us, "7 Mar 2026", "2026-03-07"],
        [de, "7. march 26", "2026-03-07"],
        [us, "2/29/2028", "2028-02-29"], [us, "2/29/2026", undefined], [us, "2/31/2026", undefined],
        [us, "13/1/2026", undefined], [us, "0/1/2026", undefined], [us, "3/7", undefined],
        [us, "31 February 2026", undefined], [us, "7 Foo 2026", undefined],
        [us, "7 Mar 8 2026", undefined],
        [us, "tomorrow", undefined],
    ];
    for (const [format, text, expected] of cases) {
        assert.equal(format.parseDate(text), expected, text);
    }
});

test("typed times are read by either clock", () => {
    const cases = [
        ["18:30", "18:30:00"], ["6:30 PM", "18:30:00"], ["6pm", "18:00:00"], ["6 p.m.", "18:00:00"],
        ["12 am", "00:00:00"], ["12:15 AM", "00:15:00"], ["12pm", "12:00:00"], ["noon", "12:00:00"],
        ["6:30:15 am", "06:30:15"], ["0:05", "00:05:00"],
        ["18", undefined], ["24:00", undefined], ["6:60", undefined], ["13 pm", undefined],
        ["0 am", undefined], ["6:5", undefined], ["evening", undefined],
    ];
    for (const [text, expected] of cases) assert.equal(parseTime(text), expected, text);
});

test("typed amounts and numbers may carry the locale's marks, in their places only", () => {
    const amounts = [
        [us, "$1,234.50", "1234.50"], [us, "1234.5", "1234.50"], [us, "-3", "-3.00"],
        [de, "1.234,50 €", "1234.50"], [de, "0,5", "0.50"], [us, "1,23", undefined],
        [us, "12,34,567", undefined], [us, "1.234,50", undefined], [us, "ten", undefined],
    ];
    for (const [format, text, expected] of amounts) {
        assert.equal(format.parseMoney(text)?.toString(), expected, text);
    }
    const numbers = [
        [us, "1,200", 1200], [de, "1.200", 1200], [us, "-5", -5], [us, "2147483647", 2147483647],
        [us, "2147483648", undefined], [us, "99999999999", undefined], [us, "12.5", undefined],
        [us, "ten", undefined],
    ];
    for (const [format, text, expected] of numbers) {
        assert.equal(format.parseWhole(text), expected, text);
    }
});

test("dates, times and amounts are written as the locale has them and read back", () => {
    const evening = new DateTime("2026-03-07T18:30:00");
    const cases = [
        [us.dateTime(evening), "3/7/2026, 6:30 PM"], [de.dateTime(evening), "7.3.2026, 18:30"],
        [sv.date(evening), "2026-03-07"], [us.longDate(evening), "Sat, Mar 7, 2026"],
        [de.longDate(evening), "Sat 7 Mar 2026"], [sv.longDate(evening), "2026-03-07 Sat"],
        [us.time(new DateTime("2026-03-07T00:15:09")), "12:15:09 AM"],
        [us.dateTime(DateTime.of("2026-03-07")), "3/7/2026"], [us.dateTime(new DateTime()), ""],
        [us.money(Currency.parse("-1234567.5")), "-$1,234,567.50"],
        [de.money(Currency.parse("1234.5678")), "1.234,5678 €"],
        [us.whole(-1234567), "-1,234,567"],
    ];
    for (const [written, expected] of cases) assert.equal(written, expected);
    for (const format of [us, de, sv]) {
        assert.equal(format.parseDate(format.date(evening)), "2026-03-07");
        assert.equal(format.parseTime(format.time(evening)), "18:30:00");
        const amount = Currency.parse("-1234567.0001");
        assert.equal(format.parseMoney(format.money(amount)).toString(), "-1234567.0001");
    }
});
