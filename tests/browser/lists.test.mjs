import assert from "node:assert/strict";
import { browserTest } from "./harness.mjs";
import { look, makeDonors } from "./people_steps.mjs";
import { dialogPage, makeEvent, openTab, savedFile, signIn } from "./steps.mjs";

const filter = (page, index) => page.locator(".list-filter").nth(index);

/** Adds a filter that compares `what` by `how`; gives its row. */
async function addFilter(page, what, how) {
    const index = await page.locator(".list-filter").count();
    await page.getByRole("button", { name: "Add filter" }).click();
    const row = filter(page, index);
    await row.getByLabel("Filter by").selectOption({ label: what });
    if (how) await row.getByLabel("How it compares").selectOption({ label: how });
    return row;
}

browserTest("A list is built, saved, exported, used and deleted", async (tools) => {
    const { page, axe, shot } = tools;
    await signIn(page, "anna");
    const people = [["Ida", "Quorn"], ["Jon", "Quorn"], ["Kay", "Quorn%"], ["Lee", "Other"]];
    const donors = await makeDonors(page, people);
    const event = await makeEvent(page, { Name: "Regatta" });
    await page.evaluate(async ([eventId, ids]) => {
        const { addParticipants } = await import("/events/participants.js");
        await addParticipants(eventId, ids, { status: 1, groups: [] }, () => true);
    }, [event, donors.slice(0, 2)]);

    await page.getByRole("link", { name: "Lists", exact: true }).click();
    for (const [title, count] of [["Gifts for events", /gifts$/], ["Sponsors", /donors$/]]) {
        await page.getByRole("link", { name: title }).click();
        await page.locator("#count").filter({ hasText: count }).waitFor();
        await page.locator("#rows tbody tr").nth(5).waitFor();
        assert.equal(await page.locator("#warnings").isVisible(), false);
        await page.goBack();
    }
    await page.getByRole("link", { name: "New list of donors" }).click();
    await page.locator("#count").filter({ hasText: /^2,0\d\d donors$/ }).waitFor();

    // What is wrong with a value stands at its filter, and nothing entered is lost.
    const name = await addFilter(page, "Name", "contains");
    const money = await addFilter(page, "Event Total Money", "is at most");
    await name.getByLabel("Name", { exact: true }).fill("quorn");
    await money.getByLabel("Event Total Money", { exact: true }).fill("a lot");
    await page.getByRole("button", { name: "Show list" }).click();
    await money.getByText("“a lot” is not an amount.").waitFor();
    await money.getByLabel("Event Total Money", { exact: true }).fill("$1,000.50");
    await page.getByText("Columns (4)").click();
    await page.getByRole("checkbox", { name: "Invited to Event" }).check();
    await page.getByRole("checkbox", { name: "Most Recent Event Invited To" }).check();
    await page.getByText("3 donors", { exact: true }).waitFor();
    await page.getByRole("button", { name: "Invited to Event" }).click();
    await page.getByRole("button", { name: "Invited to Event" }).click();
    await page.locator('th[aria-sort="descending"]', { hasText: "Invited to Event" }).waitFor();
    await page.locator("#rows tbody tr").first().filter({ hasText: /YesRegatta$/ }).waitFor();
    await page.locator("#rows tbody tr:last-child", { hasText: "Quorn%" }).waitFor();

    const invited = await addFilter(page, "Invited to event", "is any of");
    await invited.getByLabel("Add to Invited to event").selectOption({ label: "Regatta (2031-05-09)" });
    await page.getByText("3 donors, before the filters changed").waitFor();
    await page.getByRole("button", { name: "Show list" }).click();
    await page.getByText("2 donors", { exact: true }).waitFor();
    await look({ page, axe, shot }, "list with filters");

    const label = page.getByLabel("Name", { exact: true }).first();
    await page.getByRole("button", { name: "Save list" }).click();
    await page.getByText("The list's name is required.").waitFor();
    await label.fill("Sailors");
    await page.getByRole("button", { name: "Save list" }).click();
    await page.getByRole("heading", { name: "Sailors" }).waitFor();
    const { name: file, lines } = await savedFile(page, page.getByRole("button", { name: "Export" }));
    assert.equal(file, "Sailors.csv");
    assert.equal(lines[0], "Id,Name,Type,City,E-mail,Invited to Event,Most Recent Event Invited To");
    assert.equal(lines[1], `${donors[0]},Ida Quorn,Person,,Quorn@example.org,Yes,Regatta`);
    assert.equal(lines.length, 3);
    await page.getByRole("link", { name: "Ida Quorn" }).click();
    await page.getByRole("heading", { name: "Ida Quorn" }).waitFor();

    // The list as a source of participants of another event.
    const other = await makeEvent(page, { Name: "Dinner" });
    await openTab(page, other, "Participants");
    await page.getByRole("button", { name: "Add participants" }).click();
    const dialog = dialogPage(page);
    await dialog.getByLabel("Smart list").check();
    await dialog.getByLabel("List of donors").selectOption({ label: "Sailors" });
    await dialog.getByRole("button", { name: "Preview" }).click();
    await dialog.getByRole("button", { name: "Add 2 participants" }).click();
    await page.locator("tbody tr", { hasText: "Jon Quorn" }).waitFor();

    // The donors of the list, and nobody else, are deleted with what events know of them.
    await page.goto("/host/lists");
    await page.getByRole("link", { name: "Sailors" }).click();
    await page.getByRole("button", { name: "Delete these 2 donors" }).click();
    await page.getByText("All events participation and reservation information for these donors " +
        "will no longer be available.").waitFor();
    await page.getByRole("button", { name: "Yes" }).click();
    await page.getByText("Nothing matches these filters.").waitFor();
    await openTab(page, other, "Participants");
    assert.equal(await page.locator("tbody tr", { hasText: "Quorn" }).count(), 0);
});

browserTest("A list outlives other users' changes and missing rights", async (tools) => {
    const { page, newPage, axe, shot } = tools;
    await signIn(page, "anna");
    await page.goto("/host/list?type=donations");
    const fund = await addFilter(page, "Received", "is at least");
    await fund.getByLabel("Received", { exact: true }).fill("50");
    await page.getByLabel("Name", { exact: true }).fill("Larger gifts");
    await page.getByRole("button", { name: "Show list" }).click();
    await page.locator("#rows tbody tr").nth(99).waitFor();
    await page.getByRole("button", { name: "Save list" }).click();
    await page.getByRole("heading", { name: "Larger gifts" }).waitFor();
    await page.locator("#more").scrollIntoViewIfNeeded();
    await page.locator("#rows tbody tr").nth(150).waitFor();
    await look({ page, axe, shot }, "list of gifts");

    const ben = await newPage();
    await signIn(ben, "ben");
    await ben.goto(page.url());
    await ben.getByRole("heading", { name: "Larger gifts" }).waitFor();
    await addFilter(ben, "Pledge", undefined);
    await ben.getByRole("button", { name: "Save list" }).click();
    await ben.getByText("List saved.").waitFor();
    await page.getByLabel("Name", { exact: true }).fill("Large gifts");
    await page.getByRole("button", { name: "Save list" }).click();
    await page.getByText(/This list was changed by ben on/).waitFor();
    await page.getByRole("button", { name: "Save mine" }).click();
    await page.getByRole("heading", { name: "Large gifts" }).waitFor();

    const viewer = await newPage();
    await signIn(viewer, "viewer");
    await viewer.goto("/host/list?type=donors");
    await viewer.locator("#count").filter({ hasText: /^2,0\d\d donors$/ }).waitFor();
    const seesMoney = await viewer.evaluate(async () => {
        const { currentSession } = await import("/lib/server.js");
        return (await currentSession()).rights.includes("donations/view");
    });
    assert.equal(seesMoney, false);
    assert.equal(await viewer.getByRole("checkbox", { name: "Given in all" }).count(), 0);
    assert.equal(await viewer.getByRole("button", { name: "Save list" }).count(), 0);
    await viewer.goto(page.url());
    await viewer.getByText("You may not see gifts.").waitFor();

    await page.goto("/host/lists");
    await page.getByRole("heading", { name: "Periods" }).click();
    const first = page.getByRole("region", { name: "Period 1" });
    await first.getByLabel("First day").fill("3/1/2026");
    await page.getByRole("button", { name: "Save periods" }).click();
    await page.getByText("Period 1 needs a first and a last day.").waitFor();
    await first.getByLabel("Last day").fill("3/31/2026");
    await page.getByRole("button", { name: "Save periods" }).click();
    await page.getByText("Periods saved.").waitFor();
    await look({ page, axe, shot }, "lists");
});
