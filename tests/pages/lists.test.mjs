import assert from "node:assert/strict";
import { test } from "node:test";
import { coalesced } from "../../pages/lib/coalesced.js";
import { cellText, csvText, fileName, parseCsv } from "../../pages/lib/csv.js";
import { createSelection } from "../../pages/lib/selection.js";
import { sorted } from "../../pages/lib/sorting.js";
import { Currency, DateTime } from "../../pages/lib/values.js";

test("a value stands in a file as a spreadsheet reads it, and never as a formula", () => {
    const cases = [
        [DateTime.of("2026-03-07", ""), "2026-03-07"],
        [DateTime.of("2026-03-07", "18:30:00"), "2026-03-07T18:30:00"],
        [new DateTime(), ""], [Currency.parse("-1234.5"), "-1234.50"], [-3, "-3"],
        [true, "yes"], [false, "no"], [null, ""], ["plain", "plain"],
        ["=1+1", "'=1+1"], ["+44 1", "'+44 1"], ["-x", "'-x"], ["@sum", "'@sum"],
        ["  =1", "'  =1"], ["\t=1", "'\t=1"], ["a=1", "a=1"],
    ];
    for (const [value, expected] of cases) assert.equal(cellText(value), expected);
});

test("a file holds labels and rows, and reads back as it was written", () => {
    const columns = ["Name", "Note"].map((label) => ({ label, value: (row) => row[label] }));
    const rows = [
        { Name: 'O"Hara, Ann', Note: "two\r\nlines" }, { Name: "Bo;b", Note: "" },
        { Name: " led by a blank", Note: "tab\there" },
    ];
    const text = csvText(columns, rows);
    assert.equal(text, '\uFEFFName,Note\r\n"O""Hara, Ann","two\r\nlines"\r\n"Bo;b",\r\n' +
        '" led by a blank","tab\there"\r\n');
    assert.deepEqual(parseCsv(text), [["Name", "Note"], ['O"Hara, Ann', "two\r\nlines"],
        ["Bo;b", ""], [" led by a blank", "tab\there"]]);
});

test("files of other programs are read whatever separates their cells", () => {
    const cases = [
        ["a;b\n1,5;2\n\n;;\n", [["a", "b"], ["1,5", "2"]]],
        ["a\tb\n1\t2", [["a", "b"], ["1", "2"]]],
        ["one name a line\nAnn 5\" Lee", [["one name a line"], ['Ann 5" Lee']]],
        ["", []],
    ];
    for (const [text, expected] of cases) assert.deepEqual(parseCsv(text), expected);
    assert.equal(fileName('Gala: 7/8 "best"'), "Gala 7 8 best");
    assert.equal(fileName(" / "), "list");
});

test("rows are ordered by what their values are, ties by the next value", () => {
    const rows = [
        { Id: 1, name: "beta", count: 10, paid: Currency.parse("9"), due: DateTime.of("2026-10-01") },
        { Id: 2, name: "Alpha", count: 9, paid: Currency.parse("100"), due: DateTime.of("2026-09-01") },
        { Id: 3, name: "alpha", count: 100, paid: Currency.parse("-5"), due: new DateTime() },
        { Id: 4, name: "Ärger", count: undefined, paid: Currency.parse("9"), due: new DateTime() },
    ];
    const cases = [
        ["name", false, [2, 3, 4, 1]], ["name", true, [1, 4, 2, 3]],
        ["count", false, [4, 2, 1, 3]], ["paid", false, [3, 1, 4, 2]],
        ["paid", true, [2, 1, 4, 3]], ["due", true, [1, 2, 3, 4]],
    ];
    for (const [key, descending, expected] of cases) {
        const values = [(row) => row[key], ({ Id }) => Id];
        const ids = sorted(rows, values, { descending }).map(({ Id }) => Id);
        assert.deepEqual(ids, expected, `${key} ${descending}`);
    }
});

test("a selection extends from the row used last, and forgets rows that are gone", () => {
    let heard = 0;
    const selection = createSelection(() => {
        heard += 1;
    });
    const shown = [5, 3, 9, 7];
    selection.pick(3, true, { shown });
    selection.pick(7, true, { extend: true, shown });
    assert.deepEqual(selection.keys, [3, 9, 7]);
    selection.pick(5, false, { extend: true, shown: [3, 9, 7, 5] });
    assert.deepEqual(selection.keys, [3, 9]);
    selection.pick(8, true, { extend: true, shown: [8, 9] });
    assert.equal(selection.has(8), true);
    selection.keepOnly([8, 9]);
    assert.equal(selection.size, 2);
    selection.pickAll([1, 2, 8], true);
    selection.clear();
    assert.equal(selection.size, 0);
    assert.equal(heard, 7);
});

test("work asked for while it is under way is done once more, not each time", async () => {
    let begun = 0;
    const ends = [];
    const ask = coalesced(() => {
        begun += 1;
        return new Promise((resolve, reject) => ends.push({ resolve, reject }));
    });
    const first = ask();
    const [second, third] = [ask(), ask()];
    assert.equal(begun, 1);
    assert.equal(second, third);
    ends[0].reject(new Error("lost"));
    await assert.rejects(first, /lost/);
    await new Promise(setImmediate);
    assert.equal(begun, 2);
    ends[1].resolve("fresh");
    assert.equal(await second, "fresh");
    const later = ask();
    ends[2].resolve("later");
    assert.equal(await later, "later");
});
