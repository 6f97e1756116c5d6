import { browserTest } from "./harness.mjs";
import { dialogPage, makeEvent, signIn } from "./steps.mjs";

const widths = [1280, 390];
const fullEvent = 5;

/** Each page and dialog: how to reach it, given an event's id, and what shows that it is there. */
const places = {
    home: [at("/host/home"), (page) => page.locator(".widget-body .markup-row").first()],
    events: [at("/events/events-view"), (page) => page.locator("tbody .row-actions").first()],
    nothing: [at("/events/events-view?q=zzz"), (page) => page.locator("#empty")],
    details: [at("/events/event-details?id="), (page) => page.getByText("Created by")],
    edit: [at("/events/event-fulledit?action=edit&id="), button("Save event")],
    ...Object.fromEntries(
        ["activities", "sponsorships", "expenses", "tasks", "gifts"].map((tab) =>
            [tab, [tabOf(tab), (page) => page.locator("tbody:visible tr").first()]]),
    ),
    settings: [at("/events/events-settings"), (page) => page.getByText(/in all/).first()],
    locations: [
        at("/events/events-settings?list=locations"), (page) => page.getByText(/in all/).first(),
    ],
    copyevent: [opened(/^Copy/), (page) => button("Copy event")(dialogPage(page))],
    editeventtask: [added("tasks", "Add task"), (page) => dialogPage(page).getByLabel("Task")],
    editeventexpense: [
        added("expenses", "Add expense"), (page) => button("Add expense")(dialogPage(page)),
    ],
    "activity-new": [added("activities", "Add activity"), button("Save activity")],
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

/** A tab of an event of the demonstration that has something in all of them. */
function tabOf(tab) {
    return (page) => page.goto(`/events/event-details?id=${fullEvent}&tab=${tab}`);
}

/** Presses a tab's button that adds something. */
function added(tab, name) {
    return async (page) => {
        await tabOf(tab)(page);
        await button(name)(page).click();
    };
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
