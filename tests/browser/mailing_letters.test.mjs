import assert from "node:assert/strict";
import { readFile } from "node:fs/promises";
import { browserTest } from "./harness.mjs";
import { signIn } from "./steps.mjs";

browserTest("A letter is written, previewed donor by donor and printed", async (tools) => {
    const { page, newPage, axe, shot } = tools;
    await signIn(page, "ben");
    const event = await page.evaluate(async () => {
        const { list } = await import("/lib/app.js");
        const { manage } = await import("/events/addin.js");
        const { rows } = await list(manage().GetEvents(), ["Id", "Name", "NumberAccepted"]);
        const one = rows.find(({ NumberAccepted }) => NumberAccepted > 1 && NumberAccepted < 300);
        manage().StartEventMailingProcess(one.Id, "1", "~2~", null, false, false, "");
        return one;
    });
    const text = page.getByRole("textbox", { name: "Text" });
    await text.waitFor();
    const fields = page.getByRole("region", { name: "Insert a field" });
    assert.deepEqual(await fields.getByRole("heading", { level: 4 }).allTextContents(),
        ["Donor", "Event", "Participant"]);
    await text.fill("Dear ");
    await text.press("End");
    await fields.getByRole("group", { name: "Donor" }).getByRole("button", { name: "Name", exact: true })
        .click();
    await page.keyboard.type(",\n<b>welcome</b> to {EventName} of {ReservationTotal} {Nobody}.");
    await page.getByText("no field called ReservationTotal, Nobody.").waitFor();
    const preview = page.locator("#preview");
    const shownTo = page.locator("#preview-donor");
    const told = new RegExp(`^Letter 1 of ${event.NumberAccepted}, to (.+)$`);
    await shownTo.filter({ hasText: told }).waitFor();
    const first = told.exec(await shownTo.textContent())[1];
    assert.equal(await preview.textContent(),
        `Dear ${first},\n<b>welcome</b> to ${event.Name} of {ReservationTotal} {Nobody}.`);
    for (const width of [390, 1280]) {
        await page.setViewportSize({ width, height: 800 });
        await axe(page);
        await shot(page, `letter ${width}`);
    }
    await page.getByRole("button", { name: "Next donor" }).click();
    await shownTo.filter({ hasText: "Letter 2 of" }).waitFor();
    assert.equal(await page.getByRole("button", { name: "Previous donor" }).isEnabled(), true);

    await text.fill("Dear {DonorName},\nsee you at {EventName}.");
    await page.getByRole("button", { name: "Print or export all letters" }).click();
    const letters = page.locator("article");
    await page.getByText(`${event.NumberAccepted} letters`).waitFor();
    assert.equal(await letters.count(), event.NumberAccepted);
    assert.equal(await letters.first().textContent(), `Dear ${first},\nsee you at ${event.Name}.`);
    await axe(page);
    await page.emulateMedia({ media: "print" });
    const breaks = await letters.evaluateAll((all) => all.map((one) => getComputedStyle(one).breakAfter));
    assert.deepEqual(new Set(breaks.slice(0, -1)), new Set(["page"]));
    assert.equal(breaks.at(-1), "auto");
    await page.emulateMedia({ media: "screen" });
    const [file] = await Promise.all([
        page.waitForEvent("download"), page.getByRole("button", { name: "Save as a file" }).click(),
    ]);
    const saved = await readFile(await file.path(), "utf8");
    assert.equal(saved.match(/class="letter"/g).length, event.NumberAccepted);

    await page.getByRole("link", { name: "Back" }).click();
    await page.getByText("Letter 1 of").waitFor();
    assert.equal(await text.inputValue(), "Dear {DonorName},\nsee you at {EventName}.");
    const other = await newPage();
    await signIn(other, "viewer");
    await other.goto(new URL(page.url()).pathname + new URL(page.url()).search);
    await other.locator("#donors").waitFor();
    assert.equal(await other.getByRole("textbox", { name: "Text" }).count(), 0);
});
