import { browserTest } from "./harness.mjs";
import { dialogPage, signIn } from "./steps.mjs";

const noEvent = "The event no longer exists.";
const noParticipants = "There is nothing to change.";

/** What each dialog says that was handed nothing, or nothing that it can use. */
const dialogs = {
    deleteeventreservation: "The reservation no longer exists.",
    editeventreservationpayments: "The reservation no longer exists.",
    selecteventreservation: "The donor has no reservations.",
    choosedonationtype: "It is not tied to any event.",
    editeventreservationactivity: "There is no line to edit.",
    addeventparticipants: noEvent,
    addeventparticipant: noParticipants,
    editeventparticipant: noParticipants,
    editeventparticipants: noParticipants,
    deleteeventparticipants: noParticipants,
    sendeventmailing: noEvent,
};

const pages = {
    "/donor/details-donor?id=abc": "Donor not found",
    "/events/eventreservation-fulledit": "Reservation not found",
    "/events/eventreservation-fulledit?action=new": "Reservation not found",
    "/events/reservation-confirmation?id=0": "Reservation not found",
    "/events/attendance-desk?id=x": "Event not found",
    "/events/name-badges": "Event not found",
    "/events/door-list?id=-5": "Event not found",
};

browserTest("A dialog or page without what it needs says so and can be left", async ({ page }) => {
    await signIn(page, "anna");
    for (const handover of [undefined, "ten"]) {
        for (const [key, words] of Object.entries(dialogs)) {
            await page.evaluate(async ([name, value]) => {
                const { App, set } = await import("/lib/app.js");
                const names = ["action", "eventid", "reservationid", "donorid", "eventreservation",
                    "eventparticipants", "eventparticipant", "eventreservationactivity"];
                for (const one of value ? names : []) await set(App.Shell.Dialog(one), value);
                App.Modules.Events.ShowDialog(name);
            }, [key, handover]);
            await dialogPage(page).getByText(words).first().waitFor();
            await dialogPage(page).getByRole("button", { name: /Close|Cancel/ }).first().click();
            await page.locator("dialog.window").waitFor({ state: "detached" });
            await page.evaluate(async () => {
                const { App } = await import("/lib/app.js");
                await App.Shell.Dialog.ClearClipboard();
            });
        }
    }
    for (const [address, heading] of Object.entries(pages)) {
        await page.goto(address);
        await page.getByRole("heading", { name: heading }).waitFor();
    }
});

browserTest("A donor's name of any kind is shown as it is, or refused", async ({ page }) => {
    await signIn(page, "anna");
    await page.goto("/events/eventreservation-fulledit?action=new&eventid=1");
    await page.getByRole("button", { name: "Choose a donor" }).click();
    const dialog = dialogPage(page);
    await dialog.getByRole("button", { name: "New donor" }).click();
    const add = dialog.getByRole("button", { name: "Add donor" });
    await add.click();
    await dialog.getByText("The donor's name is required.").waitFor();
    const last = dialog.getByLabel("Last name, or organisation");
    await last.fill("x".repeat(1000));
    await add.click();
    await dialog.getByText("longer than 100 characters").waitFor();
    await last.fill("Zz <img src=x> & O'Hara");
    await add.click();
    await page.getByRole("link", { name: "Zz <img src=x> & O'Hara" }).waitFor();
    await page.getByRole("button", { name: "Choose another donor" }).click();
    await dialog.getByLabel("Name, e-mail").fill("<img o'h");
    await dialog.getByRole("button", { name: /Zz <img src=x>/ }).waitFor();
    await dialog.getByText("Advanced search").click();
    await dialog.getByLabel("Donor number").fill("1 OR 1=1");
    await dialog.getByText("Nobody matches.").waitFor();
});
