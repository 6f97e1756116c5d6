import assert from "node:assert/strict";
import { browserTest } from "./harness.mjs";
import { dialogPage, makeEvent, signIn } from "./steps.mjs";

browserTest("An event is found by words of its name, and shown", async ({ page, axe }) => {
    await signIn(page, "anna");
    for (const name of ["Zz found 5%", "Zz found 55"]) await makeEvent(page, { Name: name });
    await page.getByRole("button", { name: "Find an event" }).click();
    const dialog = dialogPage(page);
    await dialog.getByLabel("Words of the name").fill("zz 5%");
    await page.keyboard.press("Enter"); // at once, before the typing has paused
    await dialog.locator(".chooser button:focus").waitFor();
    assert.equal(await dialog.getByText("Zz found 55").count(), 0);
    await page.keyboard.press("Enter");
    await page.getByRole("heading", { name: "Zz found 5%" }).waitFor();

    // The same by way of the page of results, with criteria that a script hands over.
    await page.goto("/host/home");
    await page.getByRole("button", { name: "Find an event" }).click();
    await dialog.locator(".chooser button").first().waitFor();
    const frame = page.frames().find((one) => one.url().includes("findevent"));
    await frame.evaluate(async () => {
        const { App, set } = await import("/lib/app.js");
        await set(App.Shell.Dialog("searchcriteria"), "zz found");
        App.Modules.Events.LoadDialog("eventsfindresults");
    });
    await frame.waitForURL(/eventsfindresults/); // the page before shows the same event among others
    await dialog.getByText("Zz found 55").waitFor();
    assert.equal(await dialog.locator(".chooser button").count(), 2);
    await axe(page);
    await page.getByRole("button", { name: "Back" }).click();
    await dialog.getByLabel("Words of the name").waitFor();
    await page.keyboard.press("Escape");
    await page.locator("dialog.window").waitFor({ state: "detached" });
    assert.match(page.url(), /host\/home$/);
});
