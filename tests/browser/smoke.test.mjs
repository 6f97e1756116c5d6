import assert from "node:assert/strict";
import { browserTest } from "./harness.mjs";

browserTest("The start page opens in silence and is accessible", async ({ page, axe, shot }) => {
    const response = await page.goto("/");
    assert.equal(response.status(), 200);
    assert.notEqual(await page.title(), "");
    await axe(page);
    await shot(page, "start");
});
