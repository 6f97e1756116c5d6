import assert from "node:assert/strict";
import { browserTest } from "./harness.mjs";
import { signIn } from "./steps.mjs";

browserTest("A mailing of an event shows its list of donors", async ({ page, axe, shot }) => {
    await signIn(page, "ben");
    await page.getByRole("link", { name: "Mailings" }).click();
    await page.getByText("No mailing has been started yet.").waitFor();
    await axe(page);

    const expected = await page.evaluate(async () => {
        const { App, list } = await import("/lib/app.js");
        const { manage } = await import("/events/addin.js");
        const { rows: events } = await list(manage().GetEvents(), ["Id", "NumberAccepted"]);
        const { Id, NumberAccepted } = events.find((event) => event.NumberAccepted > 1);
        App.Modules.Events.Objects("Events").EventsManage.StartEventMailingProcess(
            Id, "1", "~2~", null, false, false, "");
        return NumberAccepted;
    });
    await page.getByRole("heading", { name: "Mailing list" }).waitFor();
    await page.getByText(`Event · ben · `).waitFor();
    assert.match(page.url(), /host\/mailings\?list=%7B[0-9A-F-]{36}%7D$/);
    assert.equal(await page.locator("#donors tbody tr").count(), expected);
    await axe(page);
    await shot(page, "mailing list");

    await page.getByRole("link", { name: "Mailings" }).first().click();
    await page.locator("#lists a.row-link").click();
    await page.getByRole("button", { name: "Delete list" }).click();
    await page.getByRole("button", { name: "Yes" }).click();
    await page.getByText("No mailing has been started yet.").waitFor();
});
