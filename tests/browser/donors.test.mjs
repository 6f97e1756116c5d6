import assert from "node:assert/strict";
import { browserTest } from "./harness.mjs";
import { makeActivity, makeDonors, reserve } from "./people_steps.mjs";
import { dialogPage, makeEvent, signIn } from "./steps.mjs";

const closed = (page) => page.locator("dialog.window").waitFor({ state: "detached" });

/** How many gifts of a donor there are, and how many of them for a reservation. */
function giftsOf(page, donorId) {
    return page.evaluate(async (id) => {
        const { App, list, write } = await import("/lib/app.js");
        const criteria = await App.Modules.Donation.Donations.GetNewDonationCriteria();
        await write(criteria, { CustomWhere: `donorId = ${id}` });
        const found = App.Modules.Donation.Donations.GetDonationsBySearch(criteria);
        const { rows } = await list(found, ["ReservationId"]);
        return [rows.length, rows.filter(({ ReservationId }) => ReservationId > 0).length];
    }, donorId);
}

/** Shows a dialog that commands of other modules use; gives what it hands back, once it closed. */
function show(page, key, inputs, output) {
    return page.evaluate(async ([name, values, result]) => {
        const { App, write } = await import("/lib/app.js");
        const dialog = await App.Modules.Events.Objects("Events").Dialogs.NewDialog(name);
        await write(dialog, values);
        const isConfirmed = await dialog.Create();
        return isConfirmed ? dialog[result] : "cancelled";
    }, [key, inputs, output]);
}

browserTest("A donor's page leads to events, gifts and reservations", async ({ page }) => {
    await signIn(page, "anna");
    const eventId = await makeEvent(page, { Name: "Zz fete" });
    const [ann, bo] = await makeDonors(page, [["Ann", "Zzabel"], ["Bo", "Zzbell"]]);
    const seats = await makeActivity(page, eventId, { name: "Seat", price: "50" });
    const dialog = dialogPage(page);

    await page.goto(`/donor/details-donor?id=${ann}`);
    await page.getByRole("button", { name: "Add to an event" }).click();
    await dialog.getByLabel("Words of the name").fill("zz fete");
    await dialog.getByRole("button", { name: /Zz fete/ }).click();
    await dialog.getByText("Ann Zzabel").waitFor();
    await dialog.getByLabel("Board").check();
    await dialog.getByRole("button", { name: "Add participant" }).click();
    await page.getByRole("tab", { name: "Participants", selected: true }).waitFor();
    await page.getByRole("row").filter({ hasText: "Ann Zzabel" }).getByText("Board").waitFor();

    // The same donor a second time is told so instead.
    await page.goto(`/donor/details-donor?id=${ann}`);
    await page.getByRole("button", { name: "Add to an event" }).click();
    await dialog.getByLabel("Words of the name").fill("zz fete");
    await dialog.getByRole("button", { name: /Zz fete/ }).click();
    await dialog.getByText("This donor is on the list of Zz fete already.").waitFor();
    await dialog.getByRole("button", { name: "Close" }).click();
    await closed(page);

    await page.getByRole("button", { name: "Record a gift" }).click();
    await dialog.getByLabel("Amount").fill("12.50");
    await dialog.getByRole("button", { name: "Continue" }).click();
    await dialog.getByRole("button", { name: "Record the gift" }).click();
    await closed(page);
    await page.getByRole("tab", { name: "Gifts" }).click();
    await page.getByRole("row").filter({ hasText: "$12.50" }).first().waitFor();

    // What commands of the donation module ask for.
    const reservation = await reserve(page, eventId, ann, seats, 2);
    const picked = show(page, "selecteventreservation", { DonorId: ann }, "EventReservationId");
    await dialog.getByRole("button", { name: /Zz fete.*\$100.00 due/ }).click();
    assert.equal(await picked, reservation);
    const type = show(page, "choosedonationtype",
        { DonorId: ann, DefaultChoice: "reservation" }, "DonationType");
    await dialog.getByLabel("Which reservation").waitFor();
    await dialog.getByRole("button", { name: "Continue" }).click();
    assert.equal(await type, "reservation");
    const other = show(page, "choosedonationtype", { DonorId: bo }, "DonationType");
    assert.equal(await dialog.getByRole("radio", { name: /^A reservation/ }).isDisabled(), true);
    await page.keyboard.press("Escape");
    assert.equal(await other, "cancelled");

    await page.goto(`/donor/details-donor?id=${ann}`);
    await page.getByRole("tab", { name: "Details" }).click();
    const info = page.getByRole("region", { name: "Events Info" });
    await info.getByText("2 - Seat").waitFor();
    await info.getByRole("button", { name: "Zz fete" }).click();
    await page.getByRole("tab", { name: "Reservations", selected: true }).waitFor();
    await page.goto(`/donor/details-donor?id=${ann}`);
    await page.getByRole("button", { name: "Delete" }).click();
    await page.getByText("All events participation and reservation").waitFor();
    await page.getByRole("button", { name: "Yes" }).click();
    await page.waitForURL((address) => !address.pathname.startsWith("/donor"));
    await page.goto(`/events/event-details?id=${eventId}&tab=reservations`);
    await page.getByText("No reservations to show.").waitFor();
});

browserTest("Gifts stay when a reservation goes, unless asked otherwise", async ({ page }) => {
    await signIn(page, "anna");
    const eventId = await makeEvent(page, { Name: "Zz fete" });
    const [ann] = await makeDonors(page, [["Ann", "Zzabel"]]);
    const seats = await makeActivity(page, eventId, { name: "Seat", price: "50" });
    const dialog = dialogPage(page);
    for (const [choice, left] of [["Keep the gifts", [1, 0]], ["Delete the gifts too", [1, 0]]]) {
        await reserve(page, eventId, ann, seats, 1);
        await page.goto(`/events/event-details?id=${eventId}&tab=reservations`);
        await page.getByRole("button", { name: /^Payments/ }).click();
        const direct = dialog.getByLabel("Paid directly");
        await direct.fill("ten");
        await dialog.getByRole("button", { name: "Add a payment" }).click();
        await dialog.getByText("“ten” is not an amount of money.").waitFor();
        await direct.fill("20");
        await dialog.getByText("$30.00 due").waitFor();
        await dialog.getByRole("button", { name: "Add a payment" }).click();
        const amount = dialog.getByLabel("Amount");
        await amount.waitFor();
        assert.equal(await amount.inputValue(), "$30.00");
        await dialog.getByRole("button", { name: "Continue" }).click();
        await dialog.getByRole("button", { name: "Record the gift" }).click();
        await page.getByRole("row").filter({ hasText: "paid in full" }).first().waitFor();
        await page.getByRole("button", { name: /^Delete the reservation/ }).click();
        await dialog.getByText("Gifts tied to it: 1 payment, $30.00 received").waitFor();
        await dialog.getByRole("radio", { name: choice }).check();
        await dialog.getByRole("button", { name: "Delete reservation" }).click();
        await page.getByText("No reservations to show.").waitFor();
        assert.deepEqual(await giftsOf(page, ann), left, choice);
    }
});

browserTest("People come from another event, and several are changed", async ({ page }) => {
    await signIn(page, "anna");
    const [from, to] = [await makeEvent(page, { Name: "Zz from" }),
        await makeEvent(page, { Name: "Zz to" })];
    const ids = await makeDonors(page, [["Ann", "Zzabel"], ["Bo", "Zzbell"]]);
    await page.evaluate(async ([event, donors]) => {
        const { addParticipants } = await import("/events/participants.js");
        await addParticipants(event, donors, { status: 3 });
    }, [from, ids]);
    const dialog = dialogPage(page);
    await page.goto(`/events/event-details?id=${to}&tab=participants`);
    await page.getByRole("button", { name: "Add participants" }).click();
    await dialog.getByRole("radio", { name: "Mailing list" }).check();
    await dialog.getByRole("button", { name: "Preview" }).click();
    await dialog.getByText("There is no mailing list yet.").waitFor();
    await dialog.getByRole("radio", { name: "Another event" }).check();
    await dialog.locator("#event").selectOption(String(from));
    await dialog.getByRole("button", { name: "Preview" }).click();
    await dialog.getByRole("button", { name: "Add 2 participants" }).click();
    await closed(page);
    await page.getByLabel("Select the rows shown").check();
    await page.getByRole("button", { name: "Change several" }).click();
    await dialog.getByRole("button", { name: "Change", exact: true }).click();
    await dialog.getByText("Choose something to change.").waitFor();
    await dialog.getByLabel("Attended").selectOption("Attended");
    await dialog.getByLabel("Press").selectOption("Add to it");

    // One of them goes meanwhile, as only this user can while the dialog holds the event.
    await page.evaluate(async (id) => {
        const { list } = await import("/lib/app.js");
        const { manage } = await import("/events/addin.js");
        const { rows } = await list(manage().GetEventParticipants(id), ["Id"]);
        await manage().DeleteEventParticipant(id, rows[0].Id, true, true);
    }, to);
    await dialog.getByRole("button", { name: "Change", exact: true }).click();
    await dialog.getByText("1 changed, 1 skipped: no longer on the list.").waitFor();
    await dialog.getByRole("button", { name: "Close" }).click();
    await closed(page);
    const row = page.getByRole("row").filter({ hasText: "Bo Zzbell" });
    await row.getByText("Press").waitFor();
    assert.equal(await row.getByLabel("Bo Zzbell attended").isChecked(), true);
});
