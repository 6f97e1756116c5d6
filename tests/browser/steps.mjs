// What the browser tests do over and over: signing in, making events, opening dialogs.

import assert from "node:assert/strict";
import { readFile } from "node:fs/promises";

/** The demonstration's users: anna may do all, ben may not delete, viewer only looks. */
export const users = {
    anna: "harbour lights",
    ben: "paper boats",
    viewer: "just looking",
};

export async function signIn(page, user) {
    await page.goto("/");
    await page.getByLabel("User name").fill(user);
    await page.getByLabel("Password").fill(users[user]);
    await page.getByRole("button", { name: "Sign in" }).click();
    await page.getByRole("heading", { name: `Welcome, ${user}` }).waitFor();
}

/**
 * Makes an event as a script would and gives its id. Texts of `values` that look like date-times
 * or end in "$" become such values.
 */
export function makeEvent(page, values) {
    return page.evaluate(async (texts) => {
        const { manage } = await import("/events/addin.js");
        const { write } = await import("/lib/app.js");
        const { Currency, DateTime } = await import("/lib/values.js");
        const typed = ([name, text]) => {
            if (/^\d{4}-\d\d-\d\dT/.test(text)) return [name, new DateTime(text)];
            if (/^\d.*\$$/.test(text)) return [name, Currency.parse(text.slice(0, -1))];
            return [name, text];
        };
        const event = await manage().GetNewEvent();
        await write(event, Object.fromEntries(Object.entries(texts).map(typed)));
        await manage().UpdateEvent(event, true, false);
        return event.Id;
    }, { StartDateTime: "2031-05-09T18:30:00", ...values });
}

/** Adds an expense to an event, so that it has money recorded. */
export function addExpense(page, eventId, amount) {
    return page.evaluate(async ([id, cost]) => {
        const { App } = await import("/lib/app.js");
        const { Currency, DateTime } = await import("/lib/values.js");
        const date = await App.Provider.VToSQL(DateTime.of("2031-05-01"), 1);
        const price = await App.Provider.VToSQL(Currency.parse(cost), 3);
        const text = await App.Provider.VToSQL("Hall", 5);
        await App.Document.Execute("INSERT INTO events_event_expenses " +
            "(FKEventId, ExpenseDate, Description, Amount, CreateUser, CreateDate) " +
            `VALUES (${id}, ${date}, ${text}, ${price}, 1, ${date})`);
    }, [eventId, amount]);
}

/** Opens an event's full edit page. */
export async function openEdit(page, id) {
    await page.goto(`/events/event-fulledit?id=${id}&action=edit`);
    await page.getByRole("button", { name: "Save event" }).waitFor();
}

/** The two controls of a date and time field. */
export function dateAndTime(root, label) {
    const group = root.getByRole("group", { name: label });
    return { date: group.getByLabel("Date", { exact: true }), time: group.getByLabel("Time") };
}

/** The page in the dialog window in front. */
export function dialogPage(page) {
    return page.frameLocator("dialog.window iframe");
}

/** The fault that stands at the field whose control is `control`. */
export async function faultAt(control, expected) {
    const field = control.locator("xpath=ancestor::*[contains(@class, 'field ')][1]");
    const fault = field.locator(".fault-text");
    await fault.filter({ hasText: /\S/ }).waitFor();
    assert.equal(await fault.textContent(), expected);
    assert.equal(await control.getAttribute("aria-invalid"), "true");
}

/** Checks that `list`'s row links read `names`, in this order, once they do or time is up. */
export async function expectRows(page, names) {
    const read = () => page.locator("tbody a.row-link").allTextContents();
    // A page that the browser had kept is loaded anew, perhaps just now.
    const readIfThere = () => read().catch(() => undefined);
    for (let attempt = 0; attempt < 200; attempt += 1) {
        if (JSON.stringify(await readIfThere()) === JSON.stringify(names)) return;
        await page.waitForTimeout(50);
    }
    assert.deepEqual(await read(), names);
}

/** The text of the file that pressing `button` saves, without its mark; and what it is called. */
export async function savedFile(page, button) {
    const [download] = await Promise.all([page.waitForEvent("download"), button.click()]);
    const text = await readFile(await download.path(), "utf8");
    assert.equal(text[0], "\uFEFF");
    return { name: download.suggestedFilename(), lines: text.slice(1).trimEnd().split("\r\n") };
}

/** Opens a tab of an event's details page. */
export async function openTab(page, id, title) {
    await page.goto(`/events/event-details?id=${id}`);
    await page.getByRole("tab", { name: title }).click();
    await page.getByRole("tab", { name: title, selected: true }).waitFor();
}

/** Checks that the rows of the table in sight match `patterns`, once they do or time is up. */
export async function expectTable(page, patterns) {
    const read = () => page.locator("tbody:visible tr").allTextContents();
    const matches = (rows) => rows?.length === patterns.length &&
        rows.every((row, index) => patterns[index].test(row));
    for (let attempt = 0; attempt < 200; attempt += 1) {
        if (matches(await read().catch(() => undefined))) return;
        await page.waitForTimeout(50);
    }
    assert.fail(`${JSON.stringify(await read())} are not the rows ${patterns.join(" ")}`);
}
