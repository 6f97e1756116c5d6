import assert from "node:assert/strict";
import { browserTest } from "./harness.mjs";
import { signIn, users } from "./steps.mjs";

browserTest("Signing in leads to the page asked for", async ({ page, axe }) => {
    await page.goto("/host/signin?next=%2Fevents%2Fevents-view%3Fshow%3Dall");
    await page.getByLabel("User name").fill("anna");
    await page.getByLabel("Password").fill("wrong");
    await page.keyboard.press("Enter");
    const fault = page.getByRole("alert").filter({ hasText: /\S/ });
    await fault.waitFor();
    await axe(page);
    await page.getByLabel("Password").fill(users.anna);
    await page.keyboard.press("Enter");
    await page.waitForURL("**/events/events-view?show=all");
    await page.getByRole("button", { name: "Sign out" }).click();
    await page.waitForURL("**/host/signin");

    await page.goto("/events/events-view");
    await page.getByLabel("User name").waitFor();
}, { allowed: [/401/] });

browserTest("What a user may not do is not offered", async ({ page }) => {
    await signIn(page, "viewer");
    await page.goto("/events/events-view?show=all");
    await page.locator("tbody tr").first().waitFor();
    for (const name of ["Add event", /^Edit/, /^Delete/]) {
        assert.equal(await page.getByRole("button", { name }).count(), 0, String(name));
    }
    await page.goto("/events/event-fulledit?action=new");
    await page.getByRole("heading", { name: "You may not open this page" }).waitFor();
    assert.equal(await page.getByRole("button", { name: "Save event" }).count(), 0);
}, { allowed: [/403/] });

browserTest("Signing in that takes long tells what it is doing", async ({ page, axe, shot }) => {
    let goOn;
    const enough = new Promise((resolve) => {
        goOn = resolve;
    });
    const asked = [];
    await page.route("**/api/signin", async (route) => {
        asked.push(route.request().postDataJSON().attempt);
        await enough;
        await route.continue();
    });
    await page.route("**/api/signin-progress", (route) => {
        asked.push(route.request().postDataJSON().attempt);
        return route.fulfill({
            json: { heading: "Repairing events", description: "Funds", done: "3", total: "4" },
        });
    });
    const isIn = signIn(page, "anna");
    await page.getByText("Repairing events").waitFor();
    assert.equal(await page.getByRole("progressbar").evaluate((bar) => bar.position), 0.75);
    assert.ok(asked[0].length > 15);
    assert.equal(asked[0], asked[1]);
    await axe(page);
    await shot(page, "signing in");
    goOn();
    await isIn;
});
