import assert from "node:assert/strict";
import { browserTest } from "./harness.mjs";
import { look, makeActivity, makeDonors, reserve, storedQuantities } from "./people_steps.mjs";
import { dialogPage, makeEvent, signIn } from "./steps.mjs";

const line = (page, number) => page.getByRole("group", { name: `Line ${number}` });
const closed = (page) => page.locator("dialog.window").waitFor({ state: "detached" });
const rowOf = (page, name) => page.getByRole("row").filter({ hasText: name });

/** Waits until a control holds `value`. */
async function holds(control, value) {
    for (let attempt = 0; attempt < 200; attempt += 1) {
        if ((await control.inputValue()) === value) return;
        await control.page().waitForTimeout(50);
    }
    assert.equal(await control.inputValue(), value);
}

/** An event with five dinner seats and a raffle without a limit, and two donors. */
async function prepare(page) {
    await signIn(page, "anna");
    const eventId = await makeEvent(page, { Name: "Zz dinner" });
    const donors = await makeDonors(page, [["Ann", "Zzabbot"], ["Bo", "Zzbell"], ["Cy", "Zzcole"]]);
    const items = [["Fish", true], ["Lamb", false], ["Beef", true]];
    const dinner = await makeActivity(page, eventId, {
        name: "Dinner", price: "50", available: 5,
        fields: [
            { type: 2, name: "Meal", value: "Fish", items }, { type: 4, name: "Arrives" },
        ],
    });
    await makeActivity(page, eventId, { name: "Raffle", price: "10" });
    return { eventId, donors, dinner };
}

async function choose(scope, activity) {
    const select = scope.getByLabel("Activity");
    const option = select.locator("option", { hasText: activity });
    await select.selectOption(await option.getAttribute("value"));
}

browserTest("A reservation is taken, refused while it is wrong, and paid", async (tools) => {
    const { page, newPage } = tools;
    const { eventId, donors, dinner } = await prepare(page);
    const dialog = dialogPage(page);
    await page.goto(`/events/event-details?id=${eventId}&tab=reservations`);
    await page.getByRole("button", { name: "Add reservation" }).click();
    await dialog.getByLabel("Name, e-mail").fill("zzabb");
    await look(tools, "getdonor");
    await page.keyboard.press("Enter");
    await dialog.locator(".chooser button:focus").waitFor();
    await page.keyboard.press("Enter");

    await page.getByRole("heading", { name: "New reservation" }).waitFor();
    const first = line(page, 1);
    await choose(first, "Dinner");
    assert.equal(await first.getByLabel("Price").inputValue(), "$50.00");
    await first.getByText("5 left", { exact: true }).waitFor();
    const meals = await first.getByLabel("Meal").locator("option").allTextContents();
    assert.deepEqual(meals, ["", "Fish", "Beef"]);
    assert.equal(await first.getByLabel("Meal").inputValue(), "Fish");
    const quantity = first.getByLabel("Quantity");
    const save = page.getByRole("button", { name: "Save reservation" });
    for (const [typed, fault] of [
        ["0", "The quantity must be 1 or more."], ["-1", "The quantity must be 1 or more."],
        ["1.5", "“1.5” is not a whole number."], ["ten", "“ten” is not a whole number."],
        ["99999999999", "“99999999999” is too large."], ["6", "Only 5 are left."],
    ]) {
        await quantity.fill(typed);
        await save.click();
        assert.equal(await first.getByRole("alert").textContent(), fault);
        assert.equal(await quantity.inputValue(), typed);
    }
    await quantity.fill("3");
    await first.getByLabel("Price").fill("1.234,50");
    await save.click();
    assert.match(await first.getByRole("alert").textContent(), /not an amount of money/);
    await first.getByLabel("Price").fill("50");
    await first.getByLabel("Arrives").fill("2/31/2031");
    await save.click();
    await first.getByText("“2/31/2031” is not a date.").waitFor();
    await first.getByLabel("Arrives").fill("2/28/2031");
    await page.getByLabel("Paid directly").fill("100");
    assert.equal(await page.locator("#due").textContent(), "$50.00 due");
    await look(tools, "reservation edit");
    await page.keyboard.press("Control+Enter");
    await page.getByText("1 reservation, $50.00 due").waitFor();
    await look(tools, "reservations");

    // Another user takes the last seats while a second reservation is typed.
    await page.goto(`/events/eventreservation-fulledit?action=new&eventid=${eventId}`);
    await save.click();
    await page.getByText("Choose the donor who reserves.").waitFor();
    await page.getByRole("button", { name: "Choose a donor" }).click();
    await dialog.getByRole("button", { name: /Zzbell/ }).or(dialog.getByLabel("Name, e-mail"))
        .first().waitFor();
    await dialog.getByLabel("Name, e-mail").fill("zzbell");
    await dialog.getByRole("button", { name: /Zzbell/ }).click();
    await closed(page);
    await choose(first, "Dinner");
    await quantity.fill("2");
    const other = await newPage();
    await signIn(other, "ben");
    await reserve(other, eventId, donors[2], dinner, 1);
    await save.click();
    await first.getByText("Only 1 is left.").waitFor();
    assert.equal(await quantity.inputValue(), "2");
    await reserve(other, eventId, donors[2], dinner, 1);
    await quantity.fill("1");
    await save.click();
    await first.getByText("Sold out: none are left.").waitFor();
    await page.getByRole("button", { name: "Add an activity" }).click();
    const soldOut = line(page, 2).locator("option", { hasText: "Dinner ($50.00, sold out)" });
    assert.equal(await soldOut.isDisabled(), true);
    await choose(line(page, 2), "Raffle");
    await line(page, 1).getByRole("button", { name: "Remove" }).click();
    await save.click();
    await rowOf(page, "Bo Zzbell").getByText("$10.00 due").waitFor();

    await page.getByRole("button", { name: "Show all" }).click();

    // A payment goes through the wizard and leads back to the list.
    await page.getByRole("button", { name: "Payments the reservation of Ann Zzabbot" }).click();
    await dialog.getByText("$50.00 due").waitFor();
    await look(tools, "payments");
    await dialog.getByRole("button", { name: "Add a payment" }).click();
    const amount = dialog.getByLabel("Amount");
    await amount.waitFor();
    assert.equal(await amount.inputValue(), "$50.00");
    await amount.fill("-5");
    await dialog.getByRole("button", { name: "Continue" }).click();
    await dialog.getByRole("button", { name: "Record the gift" }).click();
    await dialog.getByText("The amount must be more than 0.").waitFor();
    await amount.fill("50");
    await dialog.getByRole("button", { name: "Continue" }).click();
    await look(tools, "donation wizard");
    await dialog.getByRole("button", { name: "Record the gift" }).dblclick();
    const paid = rowOf(page, "Ann Zzabbot");
    await paid.getByText("paid in full").waitFor();
    const cells = await paid.getByRole("cell").allTextContents();
    assert.deepEqual(cells.slice(2, 5), ["$150.00", "$100.00", "$50.00"]);
});

browserTest("An edited line is never lost, and a stale one never saved unseen", async (tools) => {
    const { page, newPage } = tools;
    const { eventId, donors, dinner } = await prepare(page);
    const id = await reserve(page, eventId, donors[0], dinner, 2);
    const dialog = dialogPage(page);
    const edit = async (on) => {
        await on.goto(`/events/eventreservation-fulledit?id=${id}&action=edit&eventid=${eventId}`);
        await line(on, 1).waitFor();
    };
    const save = page.getByRole("button", { name: "Save reservation" });

    // The dialog changes the quantity alone, which would leave the line unmarked.
    await edit(page);
    await line(page, 1).getByRole("button", { name: "Details" }).click();
    await dialog.getByLabel("Quantity").fill("6");
    await dialog.getByRole("button", { name: "Use this line" }).click();
    await dialog.getByText("Only 5 are left.").waitFor();
    await dialog.getByLabel("Quantity").fill("4");
    await look(tools, "line dialog");
    await dialog.getByRole("button", { name: "Use this line" }).click();
    await closed(page);
    await holds(line(page, 1).getByLabel("Quantity"), "4");
    await save.click();
    await page.getByText("1 reservation").waitFor();
    assert.deepEqual(await storedQuantities(page, id), [4]);

    // The same by the command alone, as a script on another page runs it.
    const run = page.evaluate(async (reservationId) => {
        const { commands, manage } = await import("/events/addin.js");
        const reservation = await manage().GetEventReservation(reservationId);
        const stored = await reservation.Activities.Item(1);
        await commands().EditEventReservationActivity(stored, reservation);
        const isDirty = await stored.IsDirty;
        await manage().UpdateEventReservation(reservation, true);
        return isDirty;
    }, id);
    await dialog.getByLabel("Quantity").fill("3");
    await dialog.getByRole("button", { name: "Use this line" }).click();
    assert.equal(await run, true);
    assert.deepEqual(await storedQuantities(page, id), [3]);

    // Someone else changes the line meanwhile: both are shown, and the user decides.
    const other = await newPage();
    await signIn(other, "ben");
    for (const [choice, expected] of [["Take theirs", [1]], ["Save mine", [5]]]) {
        await edit(page);
        await edit(other);
        await line(other, 1).getByLabel("Quantity").fill(choice === "Take theirs" ? "1" : "2");
        await other.getByRole("button", { name: "Save reservation" }).click();
        await other.getByText("1 reservation").waitFor();
        await line(page, 1).getByLabel("Quantity").fill("5");
        await save.click();
        const box = page.getByRole("dialog", { name: /changed by someone else/ });
        await box.getByText("5 × Dinner at $50.00").waitFor();
        await look(tools, "lines conflict");
        await box.getByRole("button", { name: choice }).click();
        await page.getByText("1 reservation").waitFor();
        assert.deepEqual(await storedQuantities(page, id), expected);
    }

    // Deleted meanwhile: what was typed becomes a new reservation.
    await edit(page);
    await page.getByLabel("Description").fill("by the window");
    await other.getByRole("button", { name: "Delete the reservation of Ann Zzabbot" }).click();
    await dialogPage(other).getByRole("button", { name: "Delete reservation" }).click();
    await other.getByText("No reservations to show.").waitFor();
    await save.click();
    await page.getByText("deleted by another user meanwhile").waitFor();
    await page.getByRole("button", { name: "Save as a new reservation" }).click();
    await page.getByText("by the window").waitFor();
    await page.goto("/events/eventreservation-fulledit?id=999999&action=edit&eventid=1");
    await page.getByRole("heading", { name: "Reservation not found" }).waitFor();
});
