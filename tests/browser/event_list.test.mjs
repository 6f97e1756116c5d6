import assert from "node:assert/strict";
import { browserTest } from "./harness.mjs";
import { expectRows, makeEvent, savedFile, signIn } from "./steps.mjs";

browserTest("The list searches literally, sorts, and Back returns to it", async ({ page }) => {
    await signIn(page, "anna");
    const made = [
        { Name: "Zz gala 100% art", StartDateTime: "2031-01-02T00:00:00", MaxCapacity: 9 },
        { Name: "Zz gala 100 art", StartDateTime: "2031-01-01T18:30:00", MaxCapacity: 80 },
        { Name: "Zz run_5k [open]", StartDateTime: "2031-01-03T09:00:00", MaxCapacity: 700 },
        { Name: "Zz runs5k open", StartDateTime: "2001-01-03T09:00:00" },
    ];
    for (const values of made) await makeEvent(page, values);

    await page.goto("/events/events-view");
    const search = page.getByRole("searchbox");
    await search.fill("zz");
    await expectRows(page, ["Zz gala 100 art", "Zz gala 100% art", "Zz run_5k [open]"]);
    assert.match(await page.locator("tbody tr").nth(1).textContent(), /no time set/);
    for (const [typed, names] of [
        ["zz 0%", ["Zz gala 100% art"]],
        ["n_5", ["Zz run_5k [open]"]], ["[open", ["Zz run_5k [open]"]],
        ["zz art", ["Zz gala 100 art", "Zz gala 100% art"]], ["zz'x", []],
    ]) {
        await search.fill(typed);
        await expectRows(page, names);
    }
    const nothing = await page.locator("#empty").textContent();
    assert.equal(nothing, "Nothing matches “zz'x” among upcoming events.");

    await search.fill("zz");
    await page.getByRole("button", { name: "Capacity" }).click();
    await expectRows(page, ["Zz gala 100% art", "Zz gala 100 art", "Zz run_5k [open]"]);
    await page.getByRole("button", { name: "Capacity" }).click();
    await expectRows(page, ["Zz run_5k [open]", "Zz gala 100 art", "Zz gala 100% art"]);
    assert.equal(await page.locator('[aria-sort="descending"]').textContent(), "Capacity");
    await page.getByRole("radio", { name: "All" }).check();
    await expectRows(page,
        ["Zz run_5k [open]", "Zz gala 100% art", "Zz gala 100 art", "Zz runs5k open"]);
    await page.getByRole("button", { name: "Name" }).click();
    const byName = ["Zz gala 100 art", "Zz gala 100% art", "Zz run_5k [open]", "Zz runs5k open"];
    await expectRows(page, byName);

    await page.getByRole("link", { name: "Zz runs5k open" }).click();
    await page.getByRole("heading", { name: "Zz runs5k open" }).waitFor();
    await page.goBack();
    await expectRows(page, byName);
    assert.equal(await search.inputValue(), "zz");
    assert.equal(await page.getByRole("radio", { name: "All" }).isChecked(), true);
});

browserTest("The list and an event can be worked with the keyboard alone", async ({ page }) => {
    await signIn(page, "anna");
    for (const name of ["Zz one", "Zz two"]) await makeEvent(page, { Name: name });
    await page.goto("/events/events-view");
    await page.locator("tbody tr").first().waitFor();
    const focused = () => page.evaluate(() => document.activeElement.textContent);

    await page.keyboard.press("?");
    await page.getByRole("heading", { name: "Keyboard shortcuts" }).waitFor();
    await page.keyboard.press("Escape");
    await page.keyboard.press("/");
    await page.keyboard.type("zz");
    await expectRows(page, ["Zz one", "Zz two"]);
    await page.keyboard.press("Enter");
    assert.equal(await focused(), "Zz one");
    await page.keyboard.press("ArrowDown");
    assert.equal(await focused(), "Zz two");
    await page.keyboard.press("Tab");
    assert.equal(await focused(), "Edit");

    await page.keyboard.press("Shift+Tab");
    await page.keyboard.press("n");
    await page.frameLocator("iframe").getByLabel("Event name").waitFor();
    await page.waitForFunction(() => document.activeElement.tagName === "IFRAME");
    await page.keyboard.press("Escape");
    await page.locator("dialog.window").waitFor({ state: "detached" });
    assert.equal(await focused(), "Zz two");
    await page.keyboard.press("Enter");
    await page.getByRole("heading", { name: "Zz two" }).waitFor();
    await page.keyboard.press("e");
    await page.getByLabel("Event name").waitFor();
    await page.keyboard.press("Control+Enter");
    await page.getByRole("heading", { name: "Zz two" }).waitFor();
});

browserTest("More rows are read only when asked for", async ({ page }) => {
    await signIn(page, "anna");
    for (let i = 0; i < 52; i += 1) {
        await makeEvent(page, { Name: `Zz ${String(i).padStart(2, "0")}` });
    }
    await page.goto("/events/events-view?q=zz");
    await page.locator("tbody tr").nth(49).waitFor();
    assert.equal(await page.locator("tbody tr").count(), 50);
    await page.getByRole("button", { name: "Show more" }).click();
    await page.locator("tbody tr").nth(51).waitFor();
    assert.equal(await page.getByRole("button", { name: "Show more" }).isVisible(), false);
    assert.match(page.url(), /rows=100/);
});

browserTest("Filters are chips that the user keeps; Back returns to the row", async (tools) => {
    const { page, axe } = tools;
    await signIn(page, "anna");
    const [category] = await page.evaluate(async () => {
        const { loadLookups } = await import("/events/lookups.js");
        return (await loadLookups(["FKCategoryId"])).FKCategoryId;
    });
    for (const name of ["Zz =one", "Zz two"]) {
        await makeEvent(page, { Name: name, FKCategoryId: category.id });
    }
    await makeEvent(page, { Name: "Zz bare" });

    await page.goto("/events/events-view?q=zz&show=all");
    await page.getByRole("button", { name: "Filters" }).click();
    await axe(page);
    await page.getByLabel("Category", { exact: true }).selectOption({ label: category.name });
    await expectRows(page, ["Zz =one", "Zz two"]);
    await page.getByLabel("Fund", { exact: true }).selectOption({ label: "Without fund" });
    await expectRows(page, ["Zz =one", "Zz two"]);
    const { name, lines } = await savedFile(page, page.getByRole("button", { name: "Export" }));
    assert.equal(name, "Events.csv");
    assert.equal(lines.length, 3);
    assert.match(lines[1], /^\d+,Zz =one,2031-05-09T18:30:00,/);

    await page.getByRole("button", { name: /Remove the filter Category/ }).click();
    await expectRows(page, ["Zz =one", "Zz bare", "Zz two"]);
    assert.match(page.url(), /fund=0/);
    await page.goto("/events/events-view");
    await page.getByRole("button", { name: /Remove the filter Fund: Without fund/ }).waitFor();
    assert.equal(await page.getByRole("searchbox").inputValue(), "");
    await page.getByRole("button", { name: /Remove the filter/ }).click();

    const rows = page.locator("tbody tr");
    await rows.nth(20).waitFor();
    const link = rows.nth(20).locator("a.row-link");
    const chosen = await link.textContent();
    await link.click();
    await page.getByRole("heading", { name: chosen }).waitFor();
    await page.goBack();
    await page.waitForFunction((text) => document.activeElement.textContent === text, chosen);
    assert.ok(await page.evaluate(() => scrollY > 200));
});
