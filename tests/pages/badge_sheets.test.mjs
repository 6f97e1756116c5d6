import assert from "node:assert/strict";
import { test } from "node:test";
import { pagesOf, sheets } from "../../pages/events/badge_sheets.js";

test("badges fill sheet after sheet, from the first unused label on", () => {
    const sheet = { columns: 2, rows: 2 };
    const cases = [
        [["a", "b"], 0, [["a", "b"]]], [["a"], 3, [[undefined, undefined, undefined, "a"]]],
        [["a", "b"], 3, [[undefined, undefined, undefined, "a"], ["b"]]], [[], 2, []],
        [["a"], 99, [[undefined, undefined, undefined, "a"]]], [["a"], -5, [["a"]]],
    ];
    for (const [badges, skipped, pages] of cases) {
        assert.deepEqual(pagesOf(badges, sheet, skipped), pages);
    }
});

test("every sheet's labels fit on its paper", () => {
    const papers = { A4: [210, 297], letter: [215.9, 279.4] };
    for (const [key, sheet] of Object.entries(sheets)) {
        const { columns, rows, width, height, top, left, gapX, gapY } = sheet;
        const [paperWidth, paperHeight] = papers[sheet.paper];
        assert.ok(left + columns * width + (columns - 1) * gapX <= paperWidth, key);
        assert.ok(top + rows * height + (rows - 1) * gapY <= paperHeight, key);
    }
});
