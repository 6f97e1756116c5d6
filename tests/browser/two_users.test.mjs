import assert from "node:assert/strict";
import { browserTest } from "./harness.mjs";
import { addExpense, dialogPage, expectRows, makeEvent, openEdit, signIn } from "./steps.mjs";

browserTest("What someone else saved meanwhile is shown, not overwritten", async (tools) => {
    const { page, newPage, axe, shot } = tools;
    await signIn(page, "anna");
    const id = await makeEvent(page, { Name: "Zz shared", MaxCapacity: 100, Notes: "old" });
    await openEdit(page, id);
    const other = await newPage();
    await signIn(other, "ben");
    await openEdit(other, id);
    await other.getByLabel("Event name").fill("Zz of ben");
    await other.getByLabel("Most attendees").fill("120");
    await other.getByRole("button", { name: "Save event" }).click();
    await other.getByRole("heading", { name: "Zz of ben" }).waitFor();

    await page.getByLabel("Event name").fill("Zz of anna");
    await page.getByRole("textbox", { name: "Notes" }).fill("new");
    await page.getByRole("button", { name: "Save event" }).click();
    const box = page.getByRole("dialog", { name: "Changed by someone else" });
    await box.getByText(/^ben saved this record on /).waitFor();
    const fields = await box.locator("legend").allTextContents();
    assert.deepEqual(fields, ["Event name", "Most attendees"]);
    assert.deepEqual(await box.locator(".value").allTextContents(),
        ["Zz of ben", "Zz of anna", "120", "100"]);
    await axe(page);
    await shot(page, "conflict");
    await box.getByRole("button", { name: "Save with these choices" }).click();
    await page.getByRole("heading", { name: "Zz of anna" }).waitFor();
    await page.getByText("Last changed by anna").waitFor();
    const text = await page.locator("main").innerText();
    assert.match(text, /Most attendees\s+120/);
    assert.match(text, /Notes\s+new/);

    await openEdit(page, id);
    await page.getByRole("textbox", { name: "Notes" }).fill("kept words");
    await page.evaluate(async (gone) => {
        const { manage } = await import("/events/addin.js");
        await manage().DeleteEvent(gone, false);
    }, id);
    await page.getByRole("button", { name: "Save event" }).click();
    await page.getByText("deleted by another user meanwhile").waitFor();
    assert.equal(await page.getByRole("textbox", { name: "Notes" }).inputValue(), "kept words");
    await page.getByRole("button", { name: "Save as a new event" }).click();
    await page.getByRole("heading", { name: "Zz of anna" }).waitFor();
    await page.getByText("kept words").waitFor();
});

browserTest("A dialog holds its event, but not the others' pages", async (tools) => {
    const { page, newPage, axe } = tools;
    await signIn(page, "anna");
    const held = await makeEvent(page, { Name: "Zz held" });
    await addExpense(page, held, "12.50");
    await page.goto("/events/events-view?q=zz");
    await expectRows(page, ["Zz held"]);
    await page.getByRole("button", { name: "Delete Zz held" }).click();
    const dialog = dialogPage(page);
    await dialog.getByText("1 expense").waitFor();
    await axe(page);

    const other = await newPage();
    await signIn(other, "ben");
    await other.goto("/events/events-view?q=zz");
    await expectRows(other, ["Zz held"]);
    await other.getByRole("button", { name: "Edit Zz held" }).click();
    const refused = other.getByRole("dialog", { name: "Record In Use" });
    await refused.getByText(/in use by anna/).waitFor();
    await refused.getByRole("button", { name: "OK" }).click();

    // Deleting an event with money takes its name.
    await dialog.getByRole("button", { name: "Delete event" }).click();
    await dialog.getByText("Type “Zz held” to delete it.").waitFor();
    await dialog.getByLabel(/Type its name/).fill("zz HELD");
    await dialog.getByRole("button", { name: "Delete event" }).click();
    await page.locator("#empty:visible").waitFor();

    await other.goto(`/events/event-details?id=${held}`);
    await other.getByRole("heading", { name: "Event not found" }).waitFor();
    await axe(other);
    await other.getByRole("link", { name: "Back to the events" }).click();
    await other.getByRole("heading", { name: "Events", exact: true }).waitFor();
});

browserTest("Deleting an event keeps its gifts unless asked otherwise", async ({ page }) => {
    await signIn(page, "anna");
    await page.goto("/events/events-view?show=past");
    await page.locator("tbody tr").nth(2).waitFor();
    const links = page.locator("tbody a.row-link");
    for (const [choice, keeps] of [["Keep the gifts", true], ["Delete the gifts too", false]]) {
        const name = await links.first().textContent();
        const before = await giftCount(page);
        await page.getByRole("button", { name: `Delete ${name}` }).click();
        const dialog = dialogPage(page);
        const radio = dialog.getByRole("radio", { name: choice });
        assert.equal(await radio.isChecked(), keeps);
        await radio.check();
        await dialog.getByLabel(/Type its name/).fill(name);
        await dialog.getByRole("button", { name: "Delete event" }).click();
        await page.getByRole("link", { name, exact: true }).waitFor({ state: "detached" });
        assert.equal((await giftCount(page)) === before, keeps, choice);
    }
});

/** How many gifts stand in the database. */
function giftCount(page) {
    return page.evaluate(async () => {
        const { App } = await import("/lib/app.js");
        const rows = await App.Document.GetDataSet(
            "SELECT COUNT(*) AS Gifts FROM donor_gifts WHERE deleted = 0");
        return rows.Fields.Item("Gifts").Value;
    });
}

browserTest("A page that vanishes with its dialog lets go of the event", async (tools) => {
    const { page, newPage } = tools;
    await signIn(page, "anna");
    const id = await makeEvent(page, { Name: "Zz held" });
    await page.goto(`/events/event-details?id=${id}`);
    await page.getByRole("button", { name: "Delete" }).click();
    await dialogPage(page).getByRole("button", { name: "Delete event" }).waitFor();
    await page.close();
    const other = await newPage();
    await signIn(other, "ben");
    for (let attempt = 0; attempt < 200; attempt += 1) {
        await other.goto(`/events/event-details?id=${id}`);
        await other.getByRole("button", { name: "Edit" }).click();
        const refused = other.getByRole("dialog", { name: "Record In Use" });
        const form = other.getByLabel("Event name");
        await refused.or(form).first().waitFor();
        if (await form.isVisible()) return;
        await other.waitForTimeout(500);
    }
    assert.fail("the event is still held");
});
