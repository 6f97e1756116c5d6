import assert from "node:assert/strict";
import { browserTest } from "./harness.mjs";
import { makeEvent, signIn } from "./steps.mjs";

const user = (page, name) => page.getByRole("navigation", { name: "Users" })
    .getByRole("button", { name: new RegExp(`^${name}`) });

/** Opens an entry of the settings. */
async function openSettings(page, entry) {
    await page.getByRole("link", { name: "Settings", exact: true }).first().click();
    await page.getByRole("button", { name: entry }).click();
}

async function bothWidths(page, { axe, shot }, name) {
    for (const width of [390, 1280]) {
        await page.setViewportSize({ width, height: 800 });
        await axe(page);
        await shot(page, `${name} ${width}`);
    }
}

browserTest("Rights are given and taken, at once and never the last", async (tools) => {
    const { page, newPage } = tools;
    const other = await newPage();
    await signIn(other, "viewer");
    await other.goto("/host/settings");
    await other.getByRole("heading", { name: "For you" }).waitFor();
    assert.equal(await other.getByRole("button", { name: /^(Users|Funds)/ }).count(), 0);
    for (const address of ["/host/rights", "/host/codes", "/events/event-fulledit?action=new"]) {
        await other.goto(address);
        await other.getByRole("heading", { name: "You may not open this page" }).waitFor();
    }
    await tools.axe(other);

    await signIn(page, "anna");
    await page.getByRole("link", { name: "Settings" }).click();
    await page.getByRole("button", { name: /^Users and rights/ }).waitFor();
    await bothWidths(page, tools, "settings");
    await openSettings(page, /^Users and rights/);
    await page.getByRole("heading", { name: "anna" }).waitFor();
    await bothWidths(page, tools, "rights");
    await page.getByRole("checkbox", { name: "Give rights" }).click();
    await page.getByText("Somebody must be able to give rights, and nobody else can.").waitFor();
    assert.ok(await page.getByRole("checkbox", { name: "Give rights" }).isChecked());

    await user(page, "viewer").click();
    await page.getByRole("group", { name: "Events" }).getByRole("checkbox", { name: /edit|change/i })
        .first().check();
    await user(page, "viewer").getByText("2 rights").waitFor();
    await other.goto("/events/event-fulledit?action=new");
    await other.getByRole("button", { name: "Save event" }).waitFor();

    // A new user signs in and finds nothing but what was given.
    await page.getByRole("button", { name: "Add user" }).click();
    const form = page.getByRole("dialog", { name: "Add user" });
    await form.getByLabel("User name").fill("VIEWER");
    await form.getByLabel("Password").fill("short");
    await form.getByRole("button", { name: "Add user" }).click();
    await form.getByText("At least 8 characters are needed.").waitFor();
    await form.getByLabel("Password").fill("grey harbour");
    await form.getByRole("button", { name: "Add user" }).click();
    await form.getByText("There is a user called VIEWER already.").waitFor();
    await tools.axe(page);
    await form.getByLabel("User name").fill("cleo");
    await form.getByRole("button", { name: "Add user" }).click();
    await page.getByRole("heading", { name: "cleo" }).waitFor();
    await page.getByRole("button", { name: "Set password" }).click();
    await page.getByRole("textbox", { name: "Password" }).fill("other harbour");
    await page.getByRole("dialog").getByRole("button", { name: "Set password" }).click();
    await page.getByText("The password of cleo is set.").waitFor();
    const third = await newPage();
    await third.goto("/events/events-view");
    await third.getByLabel("User name").fill("cleo");
    await third.getByLabel("Password").fill("other harbour");
    await third.getByRole("button", { name: "Sign in" }).click();
    await third.getByRole("heading", { name: "You may not open this page" }).waitFor();
    await third.goto("/host/home");
    await third.getByText("Your start page is empty.").waitFor();
    await tools.axe(third);
}, { allowed: [/403/] });

browserTest("Codes are kept, and deleted with what refers to them or not at all", async (tools) => {
    const { page } = tools;
    await signIn(page, "anna");
    await openSettings(page, /^Funds/);
    await page.getByRole("button", { name: "Add fund" }).click();
    const form = page.getByRole("dialog");
    await form.getByRole("button", { name: "Add fund" }).click();
    await form.getByText("A name is required.").waitFor();
    await form.getByLabel("Name").fill("Zz <i>sea</i>");
    await form.getByLabel("Description").fill("Two\nlines");
    await page.keyboard.press("Tab");
    await form.getByRole("button", { name: "Add fund" }).click();
    const row = page.locator("tbody:visible tr", { hasText: "Zz <i>sea</i>" });
    await row.waitFor();
    await page.getByRole("button", { name: "Up Zz <i>sea</i>" }).click();
    await page.getByText(/^Zz <i>sea<\/i> moved to place/).waitFor({ state: "attached" });
    await page.getByRole("button", { name: "Hide Zz <i>sea</i>" }).click();
    await page.getByText("1 not offered").waitFor();
    await bothWidths(page, tools, "codes");

    const id = Number(await row.getAttribute("data-id"));
    await makeEvent(page, { Name: "Zz one", FKFundId: id });
    const press = (name) => page.getByRole("button", { name, exact: true }).click();
    await press("Delete Zz <i>sea</i>");
    await form.getByText("1 event refers to it and will be left without.").waitFor();
    await tools.axe(page);
    await press("Delete");
    await row.waitFor({ state: "detached" });
    const left = await page.evaluate(async () => {
        const { list } = await import("/lib/app.js");
        const { manage } = await import("/events/addin.js");
        const { rows } = await list(manage().GetEvents(), ["Name", "FKFundId"]);
        return rows.find(({ Name }) => Name === "Zz one").FKFundId;
    });
    assert.equal(left, 0);

    // The add-in cannot clear what it keeps, so the fund stays.
    await page.evaluate(async () => {
        const { App } = await import("/lib/app.js");
        await App.Document.Execute("DROP TABLE events_event_activities");
    });
    const first = await page.locator("tbody:visible th").first().textContent();
    await press(`Delete ${first}`);
    await press("Delete");
    await page.getByRole("heading", { name: `“${first}” was not deleted` }).waitFor();
    await page.getByText("Nothing has been changed.").waitFor();
    await press("OK");
    await page.locator("tbody:visible th", { hasText: first }).waitFor();
});

browserTest("A user begins where they chose, and the fiscal year where all agree", async (tools) => {
    const { page } = tools;
    await signIn(page, "anna");
    await page.goto("/host/settings");
    await page.getByLabel("It begins in").selectOption("2");
    assert.equal(await page.getByLabel("on day").locator("option").count(), 28);
    await page.getByLabel("It begins in").selectOption("4");
    await page.getByRole("button", { name: "Save" }).click();
    await page.getByText("The fiscal year is set.").waitFor();
    await page.getByLabel("After signing in, show").selectOption("events");
    await page.getByText("Kept for the next time").waitFor();
    for (const [asked, shown] of [["/", "Events"], ["/host/mailings", "Mailings"]]) {
        await page.locator("main:not([aria-busy])").waitFor(); // it still asks for what it shows
        await page.getByRole("button", { name: "Sign out" }).click();
        await page.getByLabel("User name").waitFor();
        await page.goto(asked);
        await page.getByLabel("User name").fill("anna");
        await page.getByLabel("Password").fill("harbour lights");
        await page.getByRole("button", { name: "Sign in" }).click();
        await page.getByRole("heading", { name: shown, level: 1 }).waitFor();
    }
    await page.goto("/host/settings");
    await page.locator("#fiscal-month option:checked", { hasText: "April" }).waitFor({ state: "attached" });
    await openSettings(page, /^Events/);
    await page.getByRole("button", { name: "Customise the event details" }).click();
    const dialog = page.frameLocator("dialog.window iframe");
    await dialog.getByLabel("Tasks").uncheck();
    await dialog.getByRole("button", { name: "Show these" }).click();
    await page.getByText("Events show these tabs and boxes from now on.").waitFor();
    await page.goto("/events/event-details?id=5");
    await page.getByRole("tab", { name: "Overview" }).waitFor();
    assert.equal(await page.getByRole("tab", { name: "Tasks" }).count(), 0);
});
