import assert from "node:assert/strict";
import { test } from "node:test";
import { changesBetween } from "../../pages/lib/conflicts.js";
import { Currency } from "../../pages/lib/values.js";

test("only what someone else changed, and differently, is a conflict", () => {
    const loaded = { Name: "Gala", Max: 100, Goal: Currency.parse("5"), Notes: "old" };
    const stored = { Name: "Ball", Max: 120, Goal: Currency.parse("5.00"), Notes: "new" };
    const mine = { Name: "Fair", Notes: "new", Goal: Currency.parse("9") };
    assert.deepEqual(changesBetween(loaded, stored, mine), [
        { name: "Name", mine: "Fair", theirs: "Ball", isMineChanged: true },
        { name: "Max", mine: 100, theirs: 120, isMineChanged: false },
    ]);
});
