import assert from "node:assert/strict";
import { browserTest } from "./harness.mjs";
import {
    dateAndTime, dialogPage, expectRows, faultAt, makeEvent, openEdit, signIn,
} from "./steps.mjs";

browserTest("A dialog adds an event and stays open while it is refused", async ({ page }) => {
    await signIn(page, "anna");
    await page.goto("/events/events-view?q=zz");
    await page.locator("#empty:visible").waitFor();
    await page.getByRole("button", { name: "Add event" }).click();
    const dialog = dialogPage(page);
    const name = dialog.getByLabel("Event name");
    const add = dialog.getByRole("button", { name: "Add event" });
    const start = dateAndTime(dialog, "Start");

    await add.click();
    await faultAt(name, "The event name is required.");
    await name.fill("Zz new");
    await start.date.fill("2/31/2031");
    await dialog.getByLabel("Most attendees").fill("ten");
    await add.click();
    await faultAt(start.date, "“2/31/2031” is not a date.");
    await faultAt(dialog.getByLabel("Most attendees"), "“ten” is not a whole number.");
    assert.equal(await name.inputValue(), "Zz new");
    await start.date.fill("2/28/2031");
    await start.time.fill("6:30 pm");
    await dialog.getByLabel("Most attendees").fill("1,200");
    await page.keyboard.press("Control+Enter");
    await page.locator("dialog.window").waitFor({ state: "detached" });
    await expectRows(page, ["Zz new"]);
    const row = await page.locator("tbody tr").innerText();
    assert.match(row, /Fri, Feb 28, 2031\s+6:30 PM[^]*1,200/);

    await page.getByRole("button", { name: "Add event" }).click();
    await name.fill("Zz dropped");
    await page.keyboard.press("Escape");
    await dialog.getByRole("button", { name: "Keep editing" }).click();
    assert.equal(await name.inputValue(), "Zz dropped");
    await page.keyboard.press("Escape");
    await dialog.getByRole("button", { name: "Discard" }).click();
    await page.locator("dialog.window").waitFor({ state: "detached" });
    await expectRows(page, ["Zz new"]);
});

browserTest("All fields are stored exactly; refusals stand at theirs", async ({ page }) => {
    await signIn(page, "anna");
    await page.goto("/events/event-fulledit?action=new");
    const save = page.getByRole("button", { name: "Save event" });
    const [start, end, reply] =
        ["Start", "End", "Reply by"].map((label) => dateAndTime(page, label));
    await page.getByLabel("Event name").fill("Zz full");
    await page.getByLabel("Description").fill("First line\nSecond <b>line</b>");
    await page.getByLabel("Category").selectOption({ index: 1 });
    await page.getByLabel("Fund").selectOption({ index: 1 });
    await page.getByLabel("Attendance goal").fill("99999999999");
    await page.getByLabel("Fewest attendees").fill("12.5");
    await save.click();
    await faultAt(page.getByLabel("Fewest attendees"), "“12.5” is not a whole number.");
    await page.getByLabel("Fewest attendees").fill("12");
    await save.click();
    await faultAt(page.getByLabel("Attendance goal"), "“99999999999” is too large.");
    await page.getByLabel("Attendance goal").fill("300");
    await page.getByLabel("Revenue goal").fill("$1,234,567.89");

    // Each refusal of the store in its turn, a time without its day among them.
    await save.click();
    await faultAt(start.date, "The event start date is required.");
    await start.date.fill("March 7, 2031");
    await end.time.fill("22:00");
    await save.click();
    await faultAt(end.date, "The event end date is required if an end time is entered.");
    assert.equal(await end.time.inputValue(), "22:00");
    await end.date.fill("3/6/2031");
    await save.click();
    await faultAt(end.date, "The event end date cannot be before the event start date.");
    await end.date.fill("3/7/2031");
    await reply.time.fill("noon");
    await save.click();
    await faultAt(reply.date, "The event RSVP date is required if an RSVP time is entered.");
    await reply.date.fill("3/1/2031");
    await save.click();

    await page.getByRole("heading", { name: "Zz full" }).waitFor();
    await page.getByText("Event saved.").waitFor();
    await page.getByText("Created by anna").waitFor();
    await page.locator("main:not([aria-busy])").waitFor(); // all of it is there
    const text = await page.locator("main").innerText();
    for (const part of ["Fri, Mar 7, 2031, no time set", "Fri, Mar 7, 2031, 10:00 PM",
        "Sat, Mar 1, 2031, 12:00 PM", "First line\nSecond <b>line</b>", "$1,234,567.89"]) {
        assert.ok(text.includes(part), `${part} in ${text}`);
    }
    await page.getByRole("button", { name: "Edit" }).click();
    await page.getByLabel("Event name").waitFor();
    assert.equal(await page.getByLabel("Revenue goal").inputValue(), "$1,234,567.89");
    assert.equal(await start.date.inputValue(), "3/7/2031");
    assert.equal(await start.time.inputValue(), "");
});

browserTest("What was typed is not lost by leaving", async ({ page }) => {
    await signIn(page, "anna");
    const id = await makeEvent(page, { Name: "Zz kept" });
    await openEdit(page, id);
    await page.getByLabel("Event name").fill("Zz typed");
    const questions = [];
    page.on("dialog", (dialog) => {
        questions.push(dialog.type());
        dialog.dismiss();
    });
    await page.getByRole("link", { name: "Home" }).click();
    await page.evaluate(() => history.back());
    await page.waitForTimeout(300);
    assert.deepEqual(questions, ["beforeunload", "beforeunload"]);
    assert.equal(await page.getByLabel("Event name").inputValue(), "Zz typed");
    await page.getByLabel("Event name").fill("Zz kept");
    await page.getByRole("link", { name: "Home" }).click();
    await page.getByRole("heading", { name: "Welcome" }).waitFor();
});
