import { browserTest } from "./harness.mjs";
import { dialogPage, makeEvent, signIn } from "./steps.mjs";

const widths = [1280, 390];

/** Each page and dialog: how to reach it, given an event's id, and what shows that it is there. */
const places = {
    home: [at("/host/home"), (page) => page.locator(".next-events a").first()],
    events: [at("/events/events-view"), (page) => page.locator("tbody .row-actions").first()],
    nothing: [at("/events/events-view?q=zzz"), (page) => page.locator("#empty")],
    details: [at("/events/event-details?id="), (page) => page.getByText("Created by")],
    edit: [at("/events/event-fulledit?action=edit&id="), button("Save event")],
    "not-found": [at("/events/no-such-page"), (page) => page.getByText("There is no page")],
    addevent: [opened("Add event"), (page) => dialogPage(page).getByLabel("Event name")],
    findevent: [opened("Find"), (page) => dialogPage(page).locator(".chooser button").first()],
    deleteevent: [opened(/^Delete/), (page) => button("Delete event")(dialogPage(page))],
};

/** Goes to `address`; one that ends in "id=" takes the event's id. */
function at(address) {
    return (page, id) => page.goto(address.endsWith("id=") ? `${address}${id}` : address);
}

function button(name) {
    return (page) => page.getByRole("button", { name });
}

/** Presses the button of the list that opens a dialog. */
function opened(name) {
    return async (page) => {
        await page.goto("/events/events-view?show=all");
        await page.locator("tbody tr").first().waitFor();
        await page.getByRole("button", { name }).first().click();
    };
}

browserTest("Every page and dialog is accessible at either width", async ({ page, axe, shot }) => {
    await signIn(page, "anna");
    const values = { Name: "Zz gallery", Description: "Two\nlines", RevenueGoal: "4500.5$" };
    const id = await makeEvent(page, values);
    for (const [name, [open, shown]] of Object.entries(places)) {
        for (const width of widths) {
            await page.setViewportSize({ width, height: 800 });
            await open(page, id);
            await shown(page).waitFor();
            await axe(page);
            await shot(page, `${name} ${width}`);
        }
    }
}, { allowed: [/404/] });
