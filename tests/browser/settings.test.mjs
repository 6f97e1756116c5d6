import assert from "node:assert/strict";
import { browserTest } from "./harness.mjs";
import { dialogPage, faultAt, makeEvent, signIn } from "./steps.mjs";

/** The names in the list shown, in their order. */
const names = (page) => page.locator("#panels tbody:visible th").allTextContents();

/** Presses a row's button and waits until the list has been read again. */
async function press(page, label) {
    const row = page.locator("#panels tbody:visible tr").first();
    const former = await row.elementHandle();
    await page.getByRole("button", { name: label, exact: true }).click();
    await page.waitForFunction((one) => !one.isConnected, former);
}

browserTest("A lookup list is kept in order, hidden from and thinned out", async (tools) => {
    const { page, newPage, axe, shot } = tools;
    await signIn(page, "anna");
    await page.getByRole("link", { name: "Settings" }).click();
    await page.getByRole("button", { name: /^Events/ }).click();
    const dialog = dialogPage(page);
    for (const [list, thing] of [["Categories", "category"], ["Statuses", "status"],
        ["Invitation groups", "invitation group"], ["Locations", "location"]]) {
        await page.getByRole("tab", { name: list }).click();
        await page.getByRole("button", { name: `Add ${thing}`, exact: true }).click();
        await dialog.getByRole("button", { name: `Add ${thing}` }).click();
        await faultAt(dialog.getByLabel("Name"), "A name is required.");
        await axe(page);
        await page.keyboard.press("Escape");
        await page.locator("dialog.window").waitFor({ state: "detached" });
    }
    await page.reload();
    await page.getByRole("tab", { name: "Locations", selected: true }).waitFor();
    const before = await names(page);
    await page.getByRole("button", { name: "Add location" }).click();
    await dialog.getByLabel("Name").fill(before[0].toUpperCase());
    await dialog.getByRole("button", { name: "Add location" }).click();
    await faultAt(dialog.getByLabel("Name"),
        `There is another location called “${before[0].toUpperCase()}”.`);
    await dialog.getByLabel("Name").fill("Zz <b>'hall");
    await dialog.getByLabel("Telephone").fill("+1 555 0100");
    await dialog.getByLabel("Notes").fill("Two\nlines");
    await page.keyboard.press("Control+Enter");
    await page.locator("#panels").getByText("Zz <b>'hall").waitFor();
    assert.deepEqual(await names(page), [...before, "Zz <b>'hall"]);

    await press(page, "Up Zz <b>'hall");
    const focused = await page.evaluate(() => document.activeElement.ariaLabel);
    assert.equal(focused, "Up Zz <b>'hall");
    await press(page, "Hide Zz <b>'hall");
    await axe(page);
    await shot(page, "settings");
    await page.reload();
    await page.getByText("1 not offered").waitFor();
    assert.deepEqual(await names(page), [...before.slice(0, -1), "Zz <b>'hall", before.at(-1)]);

    // Somebody else renames it while it is being edited.
    await page.getByRole("button", { name: "Edit Zz <b>'hall" }).click();
    assert.equal(await dialog.getByLabel("Notes").inputValue(), "Two\nlines");
    await dialog.getByLabel("Name").fill("Zz mine");
    const other = await newPage();
    await signIn(other, "ben");
    const id = await other.evaluate(async () => {
        const { list, write } = await import("/lib/app.js");
        const { lists } = await import("/events/addin.js");
        const { rows } = await list(lists().GetEventLocations(true), ["Id", "Name"]);
        const item = await lists().GetEventLocation(
            rows.find(({ Name }) => Name.startsWith("Zz")).Id);
        await write(item, { Name: "Zz theirs", Fax: "12" });
        await lists().UpdateEventLocation(item);
        return item.Id;
    });
    await page.keyboard.press("Control+Enter");
    const box = page.getByRole("dialog", { name: "Changed by someone else" });
    await box.getByText("Name: “Zz theirs” now, “Zz mine” yours").waitFor();
    await box.getByRole("button", { name: "Save mine" }).click();
    await page.locator("#panels").getByText("Zz mine").waitFor();
    const kept = await page.evaluate(async (item) => {
        const { lists } = await import("/events/addin.js");
        return lists().GetEventLocation(item).Fax;
    }, id);
    assert.equal(kept, "12");

    await makeEvent(page, { Name: "Zz there", FKLocationId: id });
    await page.getByRole("button", { name: "Delete Zz mine" }).click();
    await page.getByText("1 event is left without a location.").waitFor();
    await page.getByRole("button", { name: "Delete", exact: true }).click();
    await page.locator("#panels").getByText("Zz mine").waitFor({ state: "detached" });

    // A coordinator is a donor, and is one only once.
    await page.getByRole("tab", { name: "Coordinators" }).click();
    for (const outcome of [/in all$/, /is a coordinator already\.$/]) {
        const known = await names(page);
        await page.getByRole("button", { name: "Add coordinator" }).click();
        await dialog.getByRole("searchbox").fill("ada");
        const found = dialog.locator(".results li button").first();
        await found.waitFor();
        const chosen = (await found.innerText()).split("\n")[0];
        await found.click();
        await page.locator("#panels tbody:visible th").getByText(chosen).waitFor();
        await page.getByText(outcome).last().waitFor();
        assert.ok(known.includes(chosen) === (outcome.source !== "in all$"), chosen);
    }

    await other.goto("/events/events-settings?list=coordinators");
    await other.getByText("but not change them").waitFor();
    assert.equal(await other.getByRole("button", { name: /^Up/ }).count(), 0);
});
