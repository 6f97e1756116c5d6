import { browserTest } from "./harness.mjs";
import { dialogPage, makeEvent, signIn } from "./steps.mjs";

const widths = [1280, 390];

/** Each page and dialog: how to reach it, given an event's id, and what shows that it is there. */
const places = {
    home: [(page) => page.goto("/host/home"), (page) => page.getByRole("heading", { name: "Welcome" })],
    events: [(page) => page.goto("/events/events-view"), (page) => page.locator("tbody .row-actions").first()],
    nothing: [(page) => page.goto("/events/events-view?q=zzz"), (page) => page.getByText("Nothing matches")],
    details: [(page, id) => page.goto(`/events/event-details?id=${id}`),
        (page) => page.getByText("Created by")],
    edit: [(page, id) => page.goto(`/events/event-fulledit?id=${id}&action=edit`),
        (page) => page.getByRole("button", { name: "Save event" })],
    "not-found": [(page) => page.goto("/events/no-such-page"), (page) => page.getByText("There is no page")],
    addevent: [openDialog("Add event"), (page) => dialogPage(page).getByLabel("Event name")],
    findevent: [openDialog("Find"), (page) => dialogPage(page).locator(".chooser button").first()],
    deleteevent: [openDialog(/^Delete/), (page) => dialogPage(page).getByRole("button", { name: "Delete event" })],
};

function openDialog(name) {
    return async (page) => {
        await page.goto("/events/events-view?show=all");
        await page.locator("tbody tr").first().waitFor();
        await page.getByRole("button", { name }).first().click();
    };
}

browserTest("Every page and dialog is accessible at either width", async ({ page, axe, shot }) => {
    await signIn(page, "anna");
    const id = await makeEvent(page, { Name: "Zz gallery", Description: "Two\nlines", RevenueGoal: "4500.5$" });
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
