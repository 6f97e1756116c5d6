import assert from "node:assert/strict";
import { browserTest } from "./harness.mjs";
import { look, makeActivity, makeDonors, reserve } from "./people_steps.mjs";
import { dialogPage, makeEvent, signIn } from "./steps.mjs";

const closed = (page) => page.locator("dialog.window").waitFor({ state: "detached" });

/** Waits until the list reads `names`, in this order. */
async function listReads(page, names) {
    const read = () => page.locator("tbody:visible .row-link").allTextContents();
    for (let attempt = 0; attempt < 200; attempt += 1) {
        if (JSON.stringify(await read()) === JSON.stringify(names)) return;
        await page.waitForTimeout(50);
    }
    assert.deepEqual(await read(), names);
}

const strip = (page, label) => page.getByRole("radio", { name: label });

browserTest("People are added from lists, counted, filtered and changed", async (tools) => {
    const { page } = tools;
    await signIn(page, "anna");
    const eventId = await makeEvent(page, { Name: "Zz party", MaxCapacity: 4 });
    const ids = await makeDonors(page, [["Ann", "zzabel"], ["Bo", "Zzbell"], ["Cy", "Zzcole"],
        ["Bo", "Zzdove"], ["Bo", "Zzdove"], ["Eve", "Zzeast"]]);
    const seats = await makeActivity(page, eventId, { name: "Seat", price: "50" });
    await reserve(page, eventId, ids[5], seats, 1);
    await page.goto(`/events/event-details?id=${eventId}&tab=participants`);
    const dialog = dialogPage(page);
    const confirm = dialog.getByRole("button", { name: /^Add \d/ });

    // Whoever has reserved is missed on the list, and added with one press.
    await page.getByText("1 donor has a reservation but is not on the list:").waitFor();
    await page.getByRole("button", { name: "Add as accepted" }).click();
    await listReads(page, ["Eve Zzeast"]);

    await page.getByRole("button", { name: "Add participants" }).click();
    await dialog.getByRole("button", { name: "Preview" }).click();
    await dialog.getByText("Paste a list first.").waitFor();
    await dialog.getByLabel(/One donor a line/).fill(
        `Ann ZZABEL\n#${ids[1]}\nZzbell, Bo\nBo Zzdove\nEve Zzeast\n<b>Nobody</b> 100%`);
    await dialog.getByRole("button", { name: "Preview" }).click();
    await dialog.getByText("2 will be added, 1 already on the list, 1 twice in this list, " +
        "1 several donors match, 1 not found.").waitFor();
    await look(tools, "add participants");
    await dialog.getByLabel("Which donor is Bo Zzdove").selectOption({ value: String(ids[4]) });
    await dialog.getByText("3 will be added", { exact: false }).waitFor();
    await dialog.getByLabel("Add them as").selectOption("Accepted");
    assert.equal(await dialog.locator("#over").textContent(), "");
    const [file] = await Promise.all([
        page.waitForEvent("download"),
        dialog.getByRole("button", { name: "Save rejected lines" }).click(),
    ]);
    assert.equal(file.suggestedFilename(), "Zz party rejected lines.csv");
    await confirm.dblclick();
    await dialog.getByText("3 added.").waitFor();
    await dialog.getByRole("button", { name: "Close" }).click();
    await listReads(page, ["Ann zzabel", "Bo Zzbell", "Bo Zzdove", "Eve Zzeast"]);

    // From a file, its columns told apart; one more than there is room for.
    await page.getByRole("button", { name: "Add participants" }).click();
    await dialog.getByLabel("CSV file").check();
    await dialog.getByLabel("A file with one donor a line").setInputFiles({
        name: "list.csv", mimeType: "text/csv",
        buffer: Buffer.from("Guest of;First name;Surname\r\nx;Cy;Zzcole\r\ny;Bo;Zzbell\r\n"),
    });
    await dialog.getByLabel("Surname").waitFor();
    assert.equal(await dialog.getByLabel("Surname").inputValue(), "lastName");
    assert.equal(await dialog.getByLabel("Guest of").inputValue(), "none");
    await dialog.getByRole("button", { name: "Preview" }).click();
    await dialog.getByLabel("Add them as").selectOption("Accepted");
    await dialog.getByText("The event has room for 4: 1 would be too many.").waitFor();
    await dialog.getByRole("button", { name: "Add 1 participant anyway" }).click();
    await closed(page);
    await page.getByText(/5 accepted, 1 with a reservation. 1 too many/).waitFor();
    await look(tools, "participants");

    // Two are chosen by a range; one of them has declined already.
    await page.getByRole("button", { name: "Edit Bo Zzbell" }).click();
    await dialog.getByLabel("Status").selectOption("Declined");
    await look(tools, "edit participant");
    await dialog.getByRole("button", { name: "Save participant" }).click();
    await closed(page);
    await strip(page, "1 Declined").waitFor({ state: "attached" });
    await page.getByLabel("Select Ann zzabel").click();
    await page.getByLabel("Select Cy Zzcole").click({ modifiers: ["Shift"] });
    await page.getByText("3 selected").waitFor();
    await page.getByLabel("Set the status").selectOption("Declined");
    await page.locator(".notice").getByText("2 changed, 1 skipped: already declined.").waitFor();
    await strip(page, "3 Declined").check();
    await listReads(page, ["Ann zzabel", "Bo Zzbell", "Cy Zzcole"]);
    assert.match(page.url(), /show=declined/);
    await strip(page, "5 Everyone").check();
    await page.getByRole("button", { name: "Select all 5 matching" }).click();
    await page.locator(".selection-bar").getByRole("button", { name: "Groups" }).click();
    const box = page.getByRole("dialog", { name: "Groups of 5 participants" });
    await box.getByLabel("Board").selectOption("Add to it");
    await box.getByRole("button", { name: "Change the groups" }).click();
    await page.locator(".notice").getByText("5 changed.").waitFor();
    await page.getByLabel("Group", { exact: true }).selectOption("Board");
    await page.getByLabel("Search participants by name").fill("BO zz");
    await listReads(page, ["Bo Zzbell", "Bo Zzdove"]);
    await page.reload();
    await listReads(page, ["Bo Zzbell", "Bo Zzdove"]);

    await page.getByRole("tab", { name: "Invitation groups" }).click();
    await page.getByRole("button", { name: "Board", exact: true }).waitFor();
    await look(tools, "invitation groups");
    await page.getByRole("button", { name: "Mailing Board" }).click();
    await page.locator("#donors tbody tr").nth(4).waitFor();
    assert.equal(await page.locator("#donors tbody tr").count(), 5);

    await page.goto(`/events/event-details?id=${eventId}&tab=participants&show=all`);
    await listReads(page, ["Ann zzabel", "Bo Zzbell", "Cy Zzcole", "Bo Zzdove", "Eve Zzeast"]);
    await page.getByRole("button", { name: "Send mailing" }).click();
    await dialog.getByText("This reaches 2 donors.").waitFor();
    await dialog.getByLabel("Donors who reserved an activity").check();
    await dialog.getByRole("button", { name: "Make the mailing list" }).click();
    await dialog.getByText("Choose at least one activity.").waitFor();
    await dialog.getByLabel("Seat").check();
    await look(tools, "mailing dialog");
    await dialog.getByRole("button", { name: "Make the mailing list" }).click();
    await page.locator("#donors tbody tr").nth(0).waitFor();
    assert.equal(await page.locator("#donors tbody tr").count(), 1);

    await page.goto(`/events/event-details?id=${eventId}&tab=participants&show=declined`);
    await page.getByLabel("Select the rows shown").check();
    await page.locator(".selection-bar").getByRole("button", { name: "Remove" }).click();
    await look(tools, "remove participants");
    await dialog.getByRole("button", { name: "Remove", exact: true }).click();
    await closed(page);
    await page.getByText("Nobody here matches.").waitFor();
});

browserTest("People are checked in by keyboard, and printed", async (tools) => {
    const { page } = tools;
    await signIn(page, "ben");
    const eventId = await makeEvent(page, { Name: "Zz door" });
    const ids = await makeDonors(page, [["Ann", "Zzabel"], ["Abe", "Zzabrams"], ["Cy", "Zzcole"]]);
    const seats = await makeActivity(page, eventId, { name: "Seat", price: "50" });
    await reserve(page, eventId, ids[2], seats, 2);
    await page.evaluate(async ([event, donors]) => {
        const { addParticipants } = await import("/events/participants.js");
        await addParticipants(event, donors, { status: 2 });
    }, [eventId, ids]);

    await page.goto(`/events/attendance-desk?id=${eventId}`);
    await page.getByText("0 here, 3 accepted").waitFor();
    const said = page.locator("#said");
    await page.keyboard.type("zza");
    await page.keyboard.press("Enter");
    await said.getByText("2 match: type more, or choose below.").waitFor();
    await look(tools, "attendance desk");
    await page.keyboard.type("br");
    await page.keyboard.press("Enter");
    await said.getByText("Abe Zzabrams is here.").waitFor();
    await page.getByText("1 here, 3 accepted").waitFor();
    await page.keyboard.type("co");
    await page.getByText("$100.00 due").waitFor();
    await page.keyboard.press("ArrowDown");
    await page.keyboard.press("Enter");
    await page.getByText("2 here, 3 accepted").waitFor();
    await page.getByRole("button", { name: "Undo" }).click();
    await page.getByText("1 here, 3 accepted").waitFor();
    await page.keyboard.type("nobody%");
    await page.keyboard.press("Enter");
    await said.getByText("Nobody of this name is on the list.").waitFor();
    await page.locator("#running[aria-busy=false]").waitFor(); // all is stored
    await page.reload();
    await page.getByText("1 here, 3 accepted").waitFor();

    for (const [address, text] of [
        [`/events/door-list?id=${eventId}`, "Zzcole, Cy"],
        [`/events/name-badges?id=${eventId}`, "3 badges on 1 sheet"],
    ]) {
        await page.goto(address);
        await page.getByText(text).waitFor();
        await look(tools, address.split(/[/?]/)[2]);
    }
    await page.goto(`/events/event-details?id=${eventId}&tab=reservations`);
    await page.getByRole("button", { name: "Letter the reservation of Cy Zzcole" }).click();
    await page.getByText("$100.00 due").waitFor();
    await look(tools, "reservation confirmation");
    await page.goto(`/donor/details-donor?id=${ids[2]}`);
    await page.getByRole("heading", { name: "Cy Zzcole" }).waitFor();
    await look(tools, "donor details");
});

browserTest("Ten thousand participants are shown in time", async ({ page }) => {
    await signIn(page, "anna");
    const eventId = await makeEvent(page, { Name: "Zz many" });
    await page.evaluate(async (id) => {
        const { App } = await import("/lib/app.js");
        const run = (text) => App.Document.Execute(text);
        const count = async () => {
            const rows = await App.Document.GetDataSet("SELECT COUNT(*) AS N FROM donor_donors");
            return rows.Fields.Item("N").Value;
        };
        while ((await count()) < 10000) {
            await run("INSERT INTO donor_donors (display, firstname, lastname, entitytype) " +
                "SELECT display, firstname, lastname, entitytype FROM donor_donors");
        }
        await run("INSERT INTO events_event_participants " +
            "(FKEventId, FKDonorId, Status, Attended) " +
            `SELECT TOP 10000 ${id}, id, 1, 0 FROM donor_donors WHERE deleted = 0 ORDER BY id`);
    }, eventId);
    const begun = Date.now();
    await page.goto(`/events/event-details?id=${eventId}&tab=participants`);
    await page.locator("tbody tr").nth(99).waitFor();
    console.log(`10,000 participants: shown after ${Date.now() - begun} ms`);
    await page.getByText("10,000 Everyone").waitFor();
    assert.ok((await page.locator("tbody tr").count()) < 1000);
    const searched = Date.now();
    await page.getByLabel("Search participants by name").fill("zz%");
    await page.getByText("Nobody here matches.").waitFor();
    console.log(`searched after ${Date.now() - searched} ms`);
    await page.getByLabel("Search participants by name").fill("");
    const exported = Date.now();
    await Promise.all([
        page.waitForEvent("download"),
        page.getByRole("button", { name: "Export", exact: true }).click(),
    ]);
    console.log(`exported after ${Date.now() - exported} ms`);
});
