import assert from "node:assert/strict";
import { test } from "node:test";
import { Currency, DateTime, sameValue } from "../../pages/lib/values.js";

test("amounts keep every cent and refuse what they cannot hold exactly", () => {
    const cases = [
        ["12.5", "12.50"], ["-3", "-3.00"], ["+7", "7.00"], [".5", "0.50"], ["5.", "5.00"],
        ["0.0001", "0.0001"], ["-0.10", "-0.10"], ["354.2292", "354.2292"],
        ["922337203685477.5807", "922337203685477.5807"], ["922337203685477.5808", undefined],
        ["9007199254740993.01", undefined], ["0.00001", undefined], ["", undefined],
        [".", undefined], ["-", undefined], ["1e3", undefined], ["ten", undefined],
        ["1,000", undefined],
    ];
    for (const [text, expected] of cases) {
        assert.equal(Currency.parse(text)?.toString(), expected, text);
    }
    const tenth = Currency.parse("0.1");
    assert.equal(tenth.plus(tenth).plus(tenth).minus(Currency.parse("0.3")).isZero, true);
    assert.equal(Currency.parse("900719925474099.31").plus(tenth).toString(), "900719925474099.41");
});

test("amounts that were worked out round to cents, halves away from zero", () => {
    const cases = [
        ["354.2292", "354.23"], ["0.005", "0.01"], ["0.0049", "0.00"], ["-0.005", "-0.01"],
    ];
    for (const [text, expected] of cases) {
        assert.equal(Currency.parse(text).rounded().toString(), expected, text);
    }
});

test("a date-time tells which of its parts were entered", () => {
    const cases = [
        ["2026-03-07", "18:00:00", "2026-03-07T18:00:00", false],
        ["2026-03-07", "", "2026-03-07T00:00:00", false],
        ["", "18:00:00", "1899-12-30T18:00:00", false],
        ["", "", "1899-12-30T00:00:00", true],
    ];
    for (const [date, time, text, isZero] of cases) {
        const value = DateTime.of(date, time);
        const read = [value.text, value.date, value.time, value.isZero];
        assert.deepEqual(read, [text, date, time, isZero]);
    }
});

test("values are the same by what they hold, not by what holds them", () => {
    const cases = [
        [Currency.parse("1.5"), Currency.parse("1.50"), true],
        [Currency.parse("1.5"), Currency.parse("1.5001"), false],
        [DateTime.of("2026-03-07"), new DateTime("2026-03-07T00:00:00"), true],
        [DateTime.of("2026-03-07"), "2026-03-07", false],
        [null, undefined, true], ["", null, false], [0, "0", false], ["a", "a", true],
    ];
    for (const [one, other, expected] of cases) {
        assert.equal(sameValue(one, other), expected, `${one} and ${other}`);
    }
});
