// One event from its first line to next year's copy, as those who run it would work.

import assert from "node:assert/strict";
import { browserTest } from "./harness.mjs";
import { makeActivity, makeDonors } from "./people_steps.mjs";
import { dateAndTime, dialogPage, expectRows, signIn } from "./steps.mjs";

const closed = (page) => page.locator("dialog.window").waitFor({ state: "detached" });
const rowOf = (page, name) => page.getByRole("row").filter({ hasText: name });

/** The numbers of `count` donors that the demonstration holds. */
function donorNumbers(page, count) {
    return page.evaluate(async (wanted) => {
        const { App } = await import("/lib/app.js");
        const rows = await App.Document.GetDataSet(
            `SELECT TOP ${wanted} id FROM donor_donors WHERE deleted = 0 ORDER BY id`);
        const ids = [];
        for (; !(await rows.EOF); await rows.MoveNext()) ids.push(await rows.Fields.Item("id").Value);
        return ids;
    }, count);
}

async function chooseActivity(page, text) {
    const select = page.getByRole("group", { name: "Line 1" }).getByLabel("Activity");
    const option = select.locator("option", { hasText: text });
    await select.selectOption(await option.getAttribute("value"));
}

browserTest("An event is planned, sold out, held, and copied for next year", async ({ page }) => {
    await signIn(page, "anna");
    const dialog = dialogPage(page);
    await page.goto("/events/events-view?q=zz");
    await page.getByRole("button", { name: "Add event" }).click();
    await dialog.getByLabel("Event name").fill("Zz benefit night");
    await dateAndTime(dialog, "Start").date.fill("2/28/2031");
    await page.keyboard.press("Control+Enter");
    await closed(page);
    await expectRows(page, ["Zz benefit night"]);
    await page.getByRole("link", { name: "Zz benefit night" }).click();
    await page.getByRole("tab", { name: "Activities" }).waitFor();
    const eventId = Number(new URL(page.url()).searchParams.get("id"));

    // What it offers, costs and asks to be done.
    await makeActivity(page, eventId, {
        name: "Table seat", price: "80", available: 4,
        fields: [{ type: 2, name: "Meal", value: "Fish", items: [["Fish", true], ["Beef", true]] }],
    });
    await makeActivity(page, eventId, { name: "Raffle ticket", price: "5" });
    await page.reload();
    await page.getByRole("tab", { name: "Expenses" }).click();
    await page.getByRole("button", { name: "Add expense" }).click();
    await dialog.getByRole("textbox", { name: /^What it was for/ }).fill("Hall");
    await dialog.getByRole("textbox", { name: /^Date/ }).fill("1/5/2031");
    await dialog.getByRole("textbox", { name: /^Amount/ }).fill("120");
    await page.keyboard.press("Control+Enter");
    await rowOf(page, "Hall").waitFor();
    await page.getByRole("tab", { name: "Tasks" }).click();
    await page.getByRole("button", { name: "Add task" }).click();
    await dialog.getByLabel("Task").fill("Order flowers");
    await dateAndTime(dialog, "Due").date.fill("2/1/2031");
    await page.keyboard.press("Control+Enter");
    await rowOf(page, "Order flowers").waitFor();

    // Three hundred are invited, all in one group.
    const [ann, bo] = await makeDonors(page, [["Ann", "Zzabel"], ["Bo", "Zzbell"]]);
    const invited = [ann, bo, ...(await donorNumbers(page, 298))];
    await page.getByRole("tab", { name: "Participants" }).click();
    await page.getByRole("button", { name: "Add participants" }).click();
    await dialog.getByLabel(/One donor a line/).fill(invited.map((id) => `#${id}`).join("\n"));
    await dialog.getByRole("button", { name: "Preview" }).click();
    await dialog.getByLabel("Add them as").selectOption("Invited");
    await dialog.getByLabel("Press").check();
    await dialog.getByRole("button", { name: "Add 300 participants" }).click();
    await closed(page);
    await page.getByRole("radio", { name: "300 Everyone" }).waitFor({ state: "attached" });

    // The four seats go to two donors, and then there are none.
    for (const [donor, count] of [["zzabel", "3"], ["zzbell", "1"]]) {
        await page.goto(`/events/event-details?id=${eventId}&tab=reservations`);
        await page.getByRole("button", { name: "Add reservation" }).click();
        await dialog.getByLabel("Name, e-mail").fill(donor);
        await page.keyboard.press("Enter");
        await dialog.locator(".chooser button:focus").waitFor();
        await page.keyboard.press("Enter");
        await page.getByRole("heading", { name: "New reservation" }).waitFor();
        await chooseActivity(page, "Table seat");
        await page.getByRole("group", { name: "Line 1" }).getByLabel("Quantity").fill(count);
        await page.keyboard.press("Control+Enter");
        await page.getByRole("tab", { name: "Reservations", selected: true }).waitFor();
    }
    // The list has narrowed down to the donor whose reservation was entered last.
    await page.getByText("1 reservation, $80.00 due").waitFor();
    await page.getByRole("button", { name: "Show all" }).click();
    await page.getByText("2 reservations, $320.00 due").waitFor();
    await page.goto(`/events/eventreservation-fulledit?action=new&eventid=${eventId}`);
    const soldOut = page.locator("option", { hasText: "Table seat ($80.00, sold out)" });
    await soldOut.first().waitFor({ state: "attached" });

    // One pays through the wizard; the event's own figures say the same.
    await page.goto(`/events/event-details?id=${eventId}&tab=reservations`);
    await page.getByRole("button", { name: "Payments the reservation of Ann Zzabel" }).click();
    await dialog.getByRole("button", { name: "Add a payment" }).click();
    await dialog.getByLabel("Amount").waitFor();
    await dialog.getByRole("button", { name: "Continue" }).click();
    await dialog.getByRole("button", { name: "Record the gift" }).click();
    await rowOf(page, "Ann Zzabel").getByText("paid in full").waitFor();
    await page.getByText("2 reservations, $80.00 due").waitFor();
    const figures = await page.evaluate(async (id) => {
        const { read } = await import("/lib/app.js");
        const { manage } = await import("/events/addin.js");
        const wanted = ["ExpectedRevenue", "CurrentRevenue", "OutstandingRevenue", "TotalExpenses"];
        return Object.values(await read(manage().GetEvent(id), wanted)).map(String);
    }, eventId);
    assert.deepEqual(figures, ["320.00", "240.00", "80.00", "120.00"]);

    // At the door, and afterwards.
    await page.goto(`/events/attendance-desk?id=${eventId}`);
    await page.getByText("0 here").waitFor();
    for (const [name, here] of [["zzab", 1], ["zzbe", 2]]) {
        await page.keyboard.type(name);
        await page.keyboard.press("Enter");
        await page.getByText(`${here} here`).first().waitFor();
    }
    await page.goto(`/events/event-details?id=${eventId}&tab=participants`);
    await page.getByLabel("Search participants by name").fill("zzbell");
    await page.getByRole("button", { name: "Remove Bo Zzbell" }).click();
    await page.getByRole("button", { name: "Yes" }).click();
    await page.getByRole("radio", { name: "299 Everyone" }).waitFor({ state: "attached" });
    await page.getByRole("button", { name: "Send mailing" }).click();
    await dialog.getByLabel("Donors who reserved an activity").check();
    await dialog.getByLabel("Table seat").check();
    await dialog.getByText("This reaches 2 donors.").waitFor();
    await dialog.getByRole("button", { name: "Make the mailing list" }).click();
    await page.locator("#donors tbody tr").nth(1).waitFor();
    assert.equal(await page.locator("#donors tbody tr").count(), 2);

    // Next year.
    await page.goto(`/events/event-details?id=${eventId}`);
    await page.getByRole("button", { name: "Copy" }).click();
    await dialog.getByLabel("Name of the copy").fill("Zz benefit night 2032");
    await dateAndTime(dialog, "Start").date.fill("2/27/2032");
    await page.keyboard.press("Control+Enter");
    await page.getByRole("heading", { name: "Edit the copied event" }).waitFor();
    await page.goto("/events/events-view?q=zz&show=all&sort=start");
    await expectRows(page, ["Zz benefit night", "Zz benefit night 2032"]);
});
