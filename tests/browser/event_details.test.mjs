import assert from "node:assert/strict";
import { browserTest } from "./harness.mjs";
import { dialogPage, expectTable, makeEvent, openTab, savedFile, signIn } from "./steps.mjs";

const focused = (page) => page.evaluate(() => document.activeElement.textContent);
const selected = (page, title) => page.getByRole("tab", { name: title, selected: true }).waitFor();

/** The id of a demonstration event with reserved sponsorships and gifts. */
function richEvent(page) {
    return page.evaluate(async () => {
        const { list } = await import("/lib/app.js");
        const { manage } = await import("/events/addin.js");
        const columns = ["Id", "NumberSponsorshipsReserved", "numberDonations"];
        const { rows } = await list(manage().GetEvents(), columns);
        return rows.find((row) => row.NumberSponsorshipsReserved > 1 && row.numberDonations > 1).Id;
    });
}

browserTest("Tabs follow keys, address, commands and habit", async ({ page, newPage, axe, shot }) => {
    await signIn(page, "anna");
    const id = await richEvent(page);
    await page.goto(`/events/event-details?id=${id}`);
    await selected(page, "Overview");
    await page.getByRole("tab", { name: "Overview" }).press("End");
    assert.equal(await focused(page), "Gifts");
    await page.locator("tbody:visible tr").first().waitFor();
    await axe(page);
    await page.keyboard.press("Home");
    await page.keyboard.press("ArrowRight");
    assert.equal(await focused(page), "Activities");
    assert.match(page.url(), /tab=activities/);
    await page.goto(`/events/event-details?id=${id}`);
    await selected(page, "Activities");
    await page.evaluate(async (event) => {
        const { commands } = await import("/events/addin.js");
        commands().ViewEvent(event, "events_expenses");
    }, id);
    await selected(page, "Expenses");
    await page.reload();
    await selected(page, "Expenses");
    await page.goto(`/events/event-details?id=${id}&tab=no-such`);
    await selected(page, "Overview");

    // Sponsorships and gifts as a sheet and on paper.
    for (const [tab, first] of [["Sponsorships", "Sponsor"], ["Gifts", "Donor"]]) {
        await openTab(page, id, tab);
        const rows = page.locator("tbody:visible tr");
        await rows.first().waitFor();
        const exported = page.getByRole("tabpanel").getByRole("button", { name: "Export" });
        const { lines } = await savedFile(page, exported);
        assert.equal(lines[0].split(",").slice(0, 2).join(), `Id,${first}`);
        assert.equal(lines.length, (await rows.count()) + 1);
    }
    await page.emulateMedia({ media: "print" });
    assert.equal(await page.getByRole("tablist").isVisible(), false);
    assert.equal(await page.getByRole("button", { name: "Export" }).isVisible(), false);
    assert.equal(await page.locator("thead:visible").count(), 1);
    await shot(page, "gifts on paper");
    await page.emulateMedia({ media: null });

    await page.getByRole("button", { name: "Customise" }).click();
    const dialog = dialogPage(page);
    await dialog.getByLabel("Gifts", { exact: true }).uncheck();
    await dialog.getByLabel("Donations and pledges").uncheck();
    await axe(page);
    await shot(page, "customise");
    await dialog.getByRole("button", { name: "Show these" }).click();
    await selected(page, "Overview");
    assert.equal(await page.getByRole("tab", { name: "Gifts" }).count(), 0);
    assert.equal(await page.getByRole("heading", { name: "Donations and pledges" }).count(), 0);
    assert.equal(await page.getByRole("heading", { name: "Revenue" }).count(), 1);

    const other = await newPage();
    await signIn(other, "viewer");
    await other.goto(`/events/event-details?id=${id}&tab=gifts`);
    await selected(other, "Overview");
    assert.equal(await other.getByRole("tab", { name: "Gifts" }).count(), 0);
    await other.getByRole("tab", { name: "Tasks" }).click();
    await other.locator("tbody:visible tr").first().waitFor();
    for (const name of ["Add task", /^Edit/, /^Delete/, /^Complete/, /^Copy/]) {
        assert.equal(await other.getByRole("button", { name }).count(), 0, String(name));
    }
});

browserTest("Home shows the user's open tasks, which can be completed there", async (tools) => {
    const { page, axe } = tools;
    await signIn(page, "anna");
    const id = await makeEvent(page, { Name: "Zz tasks" });
    await page.evaluate(async (event) => {
        const { list, write } = await import("/lib/app.js");
        const { manage } = await import("/events/addin.js");
        const { DateTime } = await import("/lib/values.js");
        const { rows } = await list(manage().GetEventsTasksByDate(""), ["FKAssignedToId"]);
        const task = await manage().GetNewEventTask(event);
        await write(task, { Name: "Zz oldest", DueDateTime: DateTime.of("2001-01-01"),
            FKAssignedToId: rows[0].FKAssignedToId });
        await manage().UpdateEventTask(task, true);
    }, id);
    await page.goto("/host/home");
    const first = page.getByRole("region", { name: "My Open Tasks" }).locator(".markup-row").first();
    await first.getByText("Zz oldest").waitFor();
    assert.match(await first.textContent(), /^Overdue .*1\/1\/01.*Zz oldest.*Zz tasks/);
    await axe(page);
    await first.getByRole("button", { name: "Complete Zz oldest" }).click();
    await page.getByRole("button", { name: "Zz oldest", exact: true }).waitFor({ state: "detached" });
    assert.notEqual(await focused(page), "");
    await openTab(page, id, "Tasks");
    await expectTable(page, [/^Zz oldest.*Done/]);
});

browserTest("Messages, prompts and progress are shown and closed once", async ({ page, axe }) => {
    await signIn(page, "anna");
    const id = await makeEvent(page, { Name: "Zz told" });
    const dialog = dialogPage(page);

    /** Opens a dialog as a page's script does; gives a way to what it returned. */
    const open = async (key, values) => {
        await page.evaluate(async ([name, given]) => {
            const { App, write } = await import("/lib/app.js");
            const made = await App.Modules.Events.Objects("Events").Dialogs.NewDialog(name);
            await write(made, given);
            window.answer = made.Create().then(Boolean);
        }, [key, values]);
        return () => page.evaluate(() => window.answer);
    };

    const told = await open("participantmessage",
        { Title: "Left out", EventId: id, Message: "Two were left out:</br><b>Ann</b> and Bo" });
    await dialog.getByText("Two were left out:\n<b>Ann</b> and Bo").waitFor();
    await dialog.getByText("Zz told").waitFor();
    await axe(page);
    await dialog.getByRole("button", { name: "OK" }).click();
    assert.equal(await told(), true);

    const asked = await open("protectedpassword", { Title: "Password of the list" });
    await page.getByRole("heading", { name: "Password of the list" }).waitFor();
    await dialog.getByRole("button", { name: "OK" }).click();
    await dialog.getByText("Enter the password.").waitFor();
    await axe(page);
    await page.keyboard.press("Escape");
    assert.equal(await asked(), false);

    const worked = await open("progressbar", { Heading: "Reading", Description: "Donors" });
    await dialog.getByRole("progressbar").waitFor();
    const frame = page.frames().find((one) => one.url().includes("progressbar"));
    await frame.evaluate(async () => {
        const { App, set } = await import("/lib/app.js");
        await set(App.Shell.Dialog("total"), 1200);
        await set(App.Shell.Dialog("done"), 300);
    });
    await dialog.getByText("300 of 1,200").waitFor();
    await axe(page);
    await dialog.getByRole("button", { name: "Cancel" }).click();
    assert.equal(await worked(), false);

    // Pages that are given nothing, or the wrong things, say so; alone they lead back.
    for (const key of ["editeventexpense", "editeventtask", "editeventactivity", "copyevent",
        "editeventactivityfield", "editreservationfielditems", "customizeeventdetails"]) {
        const given = await open(key, {});
        await dialog.getByText(/^There is nothing to/).waitFor();
        await page.keyboard.press("Escape");
        assert.equal(await given(), false, key);
    }
    await page.goto("/events/dialogs/editeventtask");
    await page.getByRole("link", { name: "Back to the events" }).click();
    await page.getByRole("heading", { name: "Events", exact: true }).waitFor();
}, { allowed: [/favicon/] });
