import assert from "node:assert/strict";
import { browserTest } from "./harness.mjs";
import { dateAndTime, dialogPage, faultAt, makeEvent, signIn } from "./steps.mjs";

const columns = ["Name", "StartDateTime", "LastUpdateDate", "Activities.Count", "Tasks.Count",
    "Expenses.Count", "NumberParticipants", "NumberAccepted", "NumberReservations",
    "ParticipantInvitationGroups.Count"];

/** An event's values as texts; without an id, those of one that has everything to copy. */
function eventValues(page, id) {
    return page.evaluate(async ([wanted, names]) => {
        const { list } = await import("/lib/app.js");
        const { manage } = await import("/events/addin.js");
        const { rows } = await list(manage().GetEvents(), ["Id", ...names]);
        const isFull = (row) => row["Activities.Count"] > 1 && row["Tasks.Count"] > 1 &&
            row["Expenses.Count"] > 0 && row["ParticipantInvitationGroups.Count"] > 0;
        const found = rows.find((row) => (wanted ? row.Id === wanted : isFull(row)));
        const texts = Object.entries(found).map(([name, value]) => [name, String(value)]);
        return Object.fromEntries(texts);
    }, [id, columns]);
}

/** Activities with their fields, and due dates, of an event. */
function children(page, id) {
    return page.evaluate(async (event) => {
        const { list } = await import("/lib/app.js");
        const { manage } = await import("/events/addin.js");
        const activities = await list(manage().GetEventActivities(event),
            ["Name", "ListPrice", "QuantityAvailable", "ReservationFieldSummary"]);
        const tasks = await list(manage().GetEventTasks(event), ["Name", "DueDateTime"]);
        return {
            activities: activities.rows.map((row) => Object.values(row).map(String)),
            due: tasks.rows.map(({ DueDateTime }) => Date.parse(DueDateTime.text)),
            isOpen: (await list(manage().GetEventTasks(event), ["Completed"])).rows
                .every(({ Completed }) => !Completed),
        };
    }, id);
}

browserTest("A copy takes along what is chosen and leaves its event alone", async (tools) => {
    const { page, axe, shot } = tools;
    await signIn(page, "anna");
    const original = await eventValues(page);
    const id = Number(original.Id);
    const before = await children(page, id);
    await page.goto(`/events/event-details?id=${id}`);
    await page.getByRole("button", { name: "Copy" }).click();
    const dialog = dialogPage(page);
    const copy = dialog.getByRole("button", { name: "Copy event" });
    const name = dialog.getByLabel("Name of the copy");
    const start = dateAndTime(dialog, "Start");
    await copy.waitFor();
    await axe(page);
    await shot(page, "copyevent");

    const groups = dialog.getByLabel(/invitation groups/);
    assert.equal(await groups.isEnabled(), false);
    await name.fill(" ");
    await start.date.fill("2/30/2031");
    await copy.click();
    await faultAt(start.date, "“2/30/2031” is not a date.");
    await start.date.fill("5/9/2031");
    await start.time.fill("6:30 PM");
    await dateAndTime(dialog, "End").date.fill("");
    await dateAndTime(dialog, "End").time.fill("");
    await copy.click();
    await faultAt(name, "The event name is required.");
    await name.fill("Zz copy");
    await dialog.getByLabel(/^Expenses/).uncheck();
    await dialog.getByLabel(/^Participants/).check();
    await groups.check();
    await dialog.getByText(/^The copy gets .* participants and /).waitFor();
    await page.keyboard.press("Control+Enter");

    await page.getByRole("heading", { name: "Edit the copied event" }).waitFor();
    await page.getByText(/^Event copied with .* participants\.$/).waitFor();
    const copyId = Number(new URL(page.url()).searchParams.get("id"));
    const { Id, ...copied } = await eventValues(page, copyId);
    assert.deepEqual({ ...copied, Id: original.Id }, {
        ...original, Name: "Zz copy", StartDateTime: "2031-05-09T18:30:00",
        LastUpdateDate: "1899-12-30T00:00:00", "Expenses.Count": "0", NumberAccepted: "0",
        NumberReservations: "0",
    });
    assert.notEqual(Id, original.Id);
    const after = await children(page, copyId);
    const shift = Date.parse("2031-05-09") - Date.parse(original.StartDateTime.split("T")[0]);
    assert.deepEqual(after, {
        activities: before.activities, isOpen: true, due: before.due.map((due) => due + shift),
    });
    assert.deepEqual(await eventValues(page, id), original);
});

browserTest("A copy that fails half-way says what is there, and can be opened", async (tools) => {
    const { page } = tools;
    await signIn(page, "anna");
    const id = await makeEvent(page, { Name: "Zz 2031" });
    await page.evaluate(async (event) => {
        const { write } = await import("/lib/app.js");
        const { manage } = await import("/events/addin.js");
        for (const values of [{ Name: "Aa" }, { Name: "Bb", FKFundId: 987654 }]) {
            const activity = await manage().GetNewEventActivity(event);
            await write(activity, { ...values, QuantityAvailable: 5 });
            await manage().UpdateEventActivity(activity, false);
        }
    }, id);
    await page.goto("/events/events-view?q=zz");
    await page.getByRole("button", { name: "Copy Zz 2031" }).click();
    const dialog = dialogPage(page);
    await dialog.getByLabel("Name of the copy").waitFor();
    assert.equal(await dialog.getByLabel("Name of the copy").inputValue(), "Zz 2032");
    await dialog.getByRole("button", { name: "Copy event" }).click();
    await dialog.getByText(/Not everything could be copied\.\s+The selected fund/).waitFor();
    await dialog.getByRole("button", { name: "Try the rest again" }).click();
    await dialog.getByText(/The selected fund no longer exists/).waitFor();
    await dialog.getByRole("button", { name: "Open the copy as it is" }).click();
    await page.getByRole("heading", { name: "Edit the copied event" }).waitFor();
    const copied = await eventValues(page, Number(new URL(page.url()).searchParams.get("id")));
    assert.equal(copied["Activities.Count"], "1");
});
