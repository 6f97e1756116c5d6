import assert from "node:assert/strict";
import { browserTest } from "./harness.mjs";
import { dialogPage, makeEvent, signIn } from "./steps.mjs";

const titles = (page) => page.locator(".widget h2").allTextContents();

/** Chooses an entry of a widget's menu by keyboard alone. */
async function fromMenu(page, title, entry) {
    await page.getByRole("button", { name: `More about ${title}` }).focus();
    await page.keyboard.press("Enter");
    await page.getByRole("button", { name: entry, exact: true }).focus();
    await page.keyboard.press("Enter");
}

const box = (page, title) => page.getByRole("region", { name: title, exact: true });
const drawn = (page) => page.locator("main:not([aria-busy])").waitFor();

browserTest("The start page shows the widgets that a user keeps, in their order", async (tools) => {
    const { page, newPage, axe, shot } = tools;
    await signIn(page, "anna");
    await drawn(page);
    const all = await titles(page);
    assert.equal(all.length, 4);
    for (const width of [1280, 390]) {
        await page.setViewportSize({ width, height: 800 });
        await axe(page);
        await shot(page, `home widgets ${width}`);
    }
    await page.setViewportSize({ width: 1280, height: 800 });

    await fromMenu(page, all[1], "Move up");
    await page.getByText(`${all[1]} moved to place 1 of 4`).waitFor({ state: "attached" });
    assert.equal(await page.evaluate(() => document.activeElement.ariaLabel), `More about ${all[1]}`);
    await fromMenu(page, all[3], "Remove");
    await page.getByText(`${all[3]} removed`).waitFor({ state: "attached" });
    await page.reload();
    await drawn(page);
    assert.deepEqual(await titles(page), [all[1], all[0], all[2]]);
    await page.getByRole("button", { name: "Add a widget" }).click();
    await axe(page);
    await page.getByRole("button", { name: new RegExp(`^${all[3]}`) }).click();
    await page.getByText(`${all[3]} added`).waitFor({ state: "attached" });
    assert.deepEqual(await titles(page), [all[1], all[0], all[2], all[3]]);

    // What is stored is shown as words; options are refused at once and kept for the user alone.
    await makeEvent(page, { Name: "Zz <b>gala</b>", StartDateTime: "2026-12-01T18:00:00" });
    await fromMenu(page, "Upcoming Events", "Options");
    const rows = page.getByLabel("Number of events");
    const kept = await rows.inputValue();
    await rows.fill("many");
    await page.getByRole("button", { name: "Save" }).click();
    await page.getByText(/must be a whole number/).waitFor();
    await axe(page);
    await rows.fill("50");
    await page.getByRole("button", { name: "Save" }).click();
    await box(page, "Upcoming Events").getByText("Zz <b>gala</b>").waitFor();
    await fromMenu(page, "Upcoming Events", "Options");
    assert.notEqual(kept, "50");
    assert.equal(await rows.inputValue(), "50");
    await page.getByRole("button", { name: "Cancel" }).click();
    await box(page, "Upcoming Events").getByRole("button", { name: "Zz <b>gala</b>" }).click();
    await page.getByRole("heading", { name: "Zz <b>gala</b>" }).waitFor();

    // Others have a start page of their own, without money where they may not see it.
    const other = await newPage();
    await signIn(other, "viewer");
    await drawn(other);
    assert.deepEqual(await titles(other), all.filter((title) => !/Income/.test(title)));
    await assert.rejects(other.evaluate(async () => {
        const { App } = await import("/lib/app.js");
        return App.Modules.Quillmere.Widgets.Content("events-season-income");
    }), /may not/);
});

browserTest("A widget that fails says so in its own box", async ({ page, axe, shot }) => {
    await signIn(page, "anna");
    await drawn(page);
    const fails = (route) => {
        const isMeant = route.request().postData().includes("events-upcoming");
        if (!isMeant) return route.continue();
        return route.fulfill({ json: { error: { number: 1, source: "", description: "No disk." } } });
    };
    await page.route("**/api/call", fails);
    await page.goto("/host/home");
    const failing = box(page, "Upcoming Events");
    await failing.getByText("No disk.").waitFor();
    await box(page, "My Open Tasks").getByText(/due|Nothing to do|Complete/i).first().waitFor();
    await axe(page);
    await shot(page, "home failing widget");
    await page.unroute("**/api/call", fails);
    await failing.getByRole("button", { name: "Try again" }).click();
    await failing.getByText("No disk.").waitFor({ state: "detached" });
    await page.getByRole("button", { name: "Add event" }).click();
    await dialogPage(page).getByLabel("Event name").waitFor();
});
