import assert from "node:assert/strict";
import { execFile } from "node:child_process";
import { mkdir, writeFile } from "node:fs/promises";
import { promisify } from "node:util";
import { browserTest } from "./harness.mjs";
import { dialogPage, faultAt, savedFile, signIn } from "./steps.mjs";

const report = (key, more = "") => `/host/report?folder=Cache/Reports&key=${key}${more}`;
const widths = [1280, 390];

/** The texts of the pages that printing the page would give, kept in build/shots/ as a PDF. */
async function printed(page, name) {
    const path = `build/shots/${name}.pdf`;
    await mkdir("build/shots", { recursive: true });
    await writeFile(path, await page.pdf({ preferCSSPageSize: true }));
    const { stdout } = await promisify(execFile)("pdftotext", ["-layout", path, "-"]);
    return stdout.split("\f").slice(0, -1);
}

/** The texts of the cells of the table's rows that `selector` finds. */
function cellsOf(page, selector) {
    return page.locator(`.report-table ${selector}`).evaluateAll((rows) =>
        rows.map((row) => [...row.cells].map(({ textContent }) => textContent)));
}

/** Cents of "$1,234.50". */
const cents = (text) => Math.round(Number(text.replace(/[$,]/g, "")) * 100);

async function atEachWidth(page, look) {
    for (const width of widths) {
        await page.setViewportSize({ width, height: 800 });
        await look(width);
    }
    await page.setViewportSize({ width: widths[0], height: 800 });
}

browserTest("A report is found, asked, read, printed and exported", async ({ page, axe, shot }) => {
    await signIn(page, "anna");
    await page.getByRole("link", { name: "Reports" }).click();
    await page.getByRole("heading", { name: "Events Reports" }).waitFor();
    assert.equal(await page.locator(".report-list li").count(), 14);
    await atEachWidth(page, async (width) => {
        await axe(page);
        await shot(page, `reports ${width}`);
    });

    // What it is asked stands in its address; what cannot be, at its field, with what was typed.
    await page.getByRole("link", { name: "Events List" }).click();
    const from = page.getByLabel("Events from");
    await from.fill("some day");
    await page.getByRole("button", { name: "Show report" }).click();
    await faultAt(page.getByLabel("Events from"), '"some day" is no day that can be searched for.');
    assert.equal(await from.inputValue(), "some day");
    assert.equal(await page.locator(".report-table").count(), 0);
    await from.fill("");
    await page.getByRole("button", { name: "Show report" }).click();
    await page.getByText(/^\d+ lines$/).waitFor();
    assert.equal(new URL(page.url()).searchParams.get("f.from"), "");
    assert.match(await page.locator("#notes").textContent(), /to 12\/31\/.*Made on .* by anna/);

    const rows = await cellsOf(page, "tbody tr:not(.head, .subtotal, .total)");
    const subtotals = await cellsOf(page, "tr.subtotal");
    const [total] = await cellsOf(page, "tr.total");
    const sum = (all) => all.reduce((cent, cells) => cent + cents(cells.at(-1)), 0);
    assert.equal(total[0], `${rows.length} events`);
    assert.equal(sum(rows), cents(total.at(-1)));
    assert.equal(sum(subtotals), cents(total.at(-1)));
    await atEachWidth(page, async (width) => {
        await axe(page);
        await shot(page, `report ${width}`);
    });

    const { name, lines } = await savedFile(page, page.getByRole("button", { name: "Export" }));
    assert.equal(name, "Events List.csv");
    assert.equal(lines.length, rows.length + 1);
    assert.match(lines[0], /^Group,Date,Event,/);
    assert.match(lines[1], /^20\d\d,20\d\d-\d\d-\d\d(T[\d:]{8})?,/);

    await page.getByLabel("Print each group on a new page").check();
    const pages = await printed(page, "report");
    assert.ok(pages.length >= subtotals.length, `${pages.length} pages`);
    pages.forEach((text, at) => {
        assert.match(text, /Date +Event +Category/, `the heads on page ${at + 1}`);
        assert.match(text, new RegExp(`Events List +Page ${at + 1} of ${pages.length}`));
        assert.doesNotMatch(text, /Filters|Quillmere|Sign out/);
    });
    assert.equal(pages.filter((text) => /^ *20\d\d$/m.test(text)).length, subtotals.length);

    await page.locator(".report-table tbody a").first().click();
    await page.getByRole("tab", { name: "Overview" }).waitFor();
});

browserTest("A chart says what the table says, also on paper", async ({ page, axe, shot }) => {
    await signIn(page, "anna");
    await page.goto(report("events-expected-vs-actual"));
    await page.getByRole("button", { name: "Show report" }).click();
    const chart = page.getByRole("img", { name: /^Bar chart: .*Expected and Actual for/ });
    await chart.waitFor();
    await page.getByText(/^\d+ lines$/).waitFor();
    const heads = await cellsOf(page, "thead tr");
    const rows = await cellsOf(page, "tbody tr:not(.head, .subtotal, .total)");
    const column = heads[0].indexOf("Expected");
    const labels = await chart.locator(".value").allTextContents();
    assert.equal(await chart.locator("rect").count(), labels.length);
    const drawn = labels.slice(0, labels.length / 2).map(cents);
    assert.deepEqual(drawn, rows.map((cells) => cents(cells[column])).slice(0, drawn.length));
    assert.match(await chart.locator("title").first().textContent(), /: Expected: \$/);
    await atEachWidth(page, async (width) => {
        await axe(page);
        await shot(page, `report chart ${width}`);
    });
    const [first] = await printed(page, "report chart");
    assert.match(first, new RegExp(rows[0][0]));
    assert.match(first, /\$0 +\$\d/, "the chart's axis");
});

browserTest("An event's page leads to its reports, the list to any event's", async ({ page, axe }) => {
    await signIn(page, "ben");
    await page.goto("/events/event-details?id=5");
    const menu = page.getByRole("button", { name: "Reports" });
    await menu.click();
    await axe(page);
    await page.keyboard.press("Escape");
    assert.equal(await menu.getAttribute("aria-expanded"), "false");
    await menu.press("Enter");
    await page.keyboard.press("ArrowDown");
    await page.keyboard.press("Enter");
    await page.getByRole("heading", { name: "Event Reservation List By Activity" }).waitFor();
    await page.locator("tr.total").first().waitFor();
    const shown = await page.locator("tr.head a").first().textContent();

    await page.goto("/host/reports");
    await page.getByRole("button", { name: "Event Summary" }).click();
    const choices = dialogPage(page).locator(".chooser button");
    await choices.first().waitFor();
    const other = await choices.first().locator("span").first().textContent();
    assert.notEqual(other, shown);
    await choices.first().click();
    await page.getByRole("heading", { name: "Event Summary" }).waitFor();
    assert.equal(await page.locator("tr.head a").first().textContent(), other);
    await axe(page);
});

browserTest("A report that cannot be shown says why", async ({ page, axe, shot }) => {
    await signIn(page, "viewer");
    await page.goto("/host/reports");
    await page.getByRole("link", { name: "Events List" }).waitFor();
    assert.equal(await page.getByRole("link", { name: "Donor Events Summary" }).count(), 0);

    for (const [key, words] of [
        ["events-donor-summary", /^You do not have the right to view this report\.$/],
        ["no-such-report", /no-such-report\.xml/],
    ]) {
        await page.goto(report(key));
        await page.getByRole("heading", { name: "This report cannot be shown" }).waitFor();
        assert.match(await page.locator(".empty-page p").textContent(), words);
        await axe(page);
    }
    await shot(page, "report missing");
    await page.goto(report("events-event-summary", "&id=99999"));
    await faultAt(page.getByLabel("Event"),
        "The event no longer exists. It may have been deleted by another user.");
});
