import assert from "node:assert/strict";
import { browserTest } from "./harness.mjs";
import {
    dateAndTime, dialogPage, expectTable, faultAt, makeEvent, openTab, savedFile, signIn,
} from "./steps.mjs";

/** Adds a reservation field through its dialog; `more` enters what its kind asks for. */
async function addField(page, name, kind, more) {
    const dialog = dialogPage(page);
    await page.getByRole("button", { name: "Add field" }).click();
    await dialog.getByLabel("Field name").fill(name);
    await dialog.getByLabel("Kind").selectOption({ label: kind });
    await more?.(dialog);
    await dialog.getByRole("button", { name: "Add field" }).click();
}

/** Enters the choices that the dialog asks for after a list was added; "-" hides one. */
async function addChoices(page, choices) {
    const dialog = dialogPage(page);
    for (const [index, choice] of choices.entries()) {
        const name = dialog.getByRole("textbox", { name: `Choice ${index + 1}` });
        await name.waitFor();
        await name.fill(choice.replace("-", ""));
        if (choice.startsWith("-")) await dialog.getByLabel("Offered").nth(index).uncheck();
        if (index < choices.length - 1) await name.press("Enter");
    }
    await page.keyboard.press("Control+Enter");
    await page.locator("dialog.window").waitFor({ state: "detached" });
}

browserTest("Activities are planned with every kind of reservation field", async (tools) => {
    const { page, axe, shot } = tools;
    await signIn(page, "anna");
    const id = await makeEvent(page, { Name: "Zz dinner" });
    await openTab(page, id, "Activities");
    await page.getByText("No activities yet.").waitFor();
    await page.getByRole("button", { name: "Add activity" }).click();
    await page.getByRole("heading", { name: "New activity" }).waitFor();
    const save = page.getByRole("button", { name: "Save activity" });
    await save.click();
    await faultAt(page.getByLabel("Activity name"), "A valid activity name is required.");
    await page.getByLabel("Price", { exact: true }).fill("1.234,50");
    await page.getByLabel("Units on offer").fill("ten");
    await page.getByLabel("Activity name").fill("<b>".repeat(100));
    await save.click();
    await faultAt(page.getByLabel("Activity name"), "At most 255 characters fit; these are 300.");
    await page.getByLabel("Activity name").fill("Dinner <i>& wine");
    await save.click();
    await faultAt(page.getByLabel("Price", { exact: true }), "“1.234,50” is not an amount of money.");
    await faultAt(page.getByLabel("Units on offer"), "“ten” is not a whole number.");
    await page.getByLabel("Price", { exact: true }).fill("45");
    await page.getByLabel("Units on offer").fill("20");

    await addField(page, "Seat", "Text box", (dialog) => dialog.getByLabel("Default").fill("any"));
    await page.getByRole("row", { name: /Seat/ }).waitFor();
    await addField(page, "seat", "Date", (dialog) => dialog.getByLabel("Default").fill("3/1/2031"));
    await faultAt(dialogPage(page).getByLabel("Field name"),
        "There is a field called “seat” already.");
    await axe(page);
    await dialogPage(page).getByLabel("Field name").fill("Arrival");
    await page.keyboard.press("Control+Enter");
    await page.getByRole("row", { name: /Arrival.*3\/1\/2031/ }).waitFor();
    await addField(page, "Meal", "Drop-down list");
    await addChoices(page, ["Beef", "-Veal", "Fish"]);
    await addField(page, "Wine", "Drop-down list or typed text");
    await addChoices(page, ["Red", "White"]);
    await addField(page, "Wheelchair", "Check box");
    await page.getByRole("row", { name: /Wheelchair/ }).waitFor();

    await page.getByRole("button", { name: "Edit Meal" }).click();
    await dialogPage(page).getByLabel("Default").selectOption("Fish");
    await page.keyboard.press("Control+Enter");
    await page.getByRole("row", { name: /Meal Drop-down list Beef, Veal \(hidden\), Fish Fish/ })
        .waitFor();
    await page.getByRole("button", { name: "Up Wheelchair" }).click();
    await page.getByRole("button", { name: "Delete Wine" }).click();
    await page.getByRole("row", { name: /Wine/ }).waitFor({ state: "detached" });
    await axe(page);
    await shot(page, "activity");
    await save.click();
    await page.getByText("Activity saved.").waitFor();
    await expectTable(page, [/^Dinner <i>& wineAsks for Seat, Arrival, Meal, Wheelchair/]);

    await page.getByRole("button", { name: /^Copy Dinner/ }).click();
    await page.getByRole("heading", { name: "New activity" }).waitFor();
    assert.equal(await page.getByLabel("Activity name").inputValue(), "Copy of Dinner <i>& wine");
    await page.getByRole("row", { name: /Meal .* Fish / }).waitFor();
    await page.getByLabel("This is a sponsorship").check();
    await page.getByLabel("Quantity", { exact: true }).selectOption("Unlimited");
    await page.keyboard.press("Control+Enter");
    await expectTable(page, [/^Copy of Dinner.*Sponsorship.*Unlimited/, /^Dinner/]);

    await page.getByRole("button", { name: /^Delete Copy of/ }).click();
    await page.getByText("Are you sure you want to delete this event activity?").waitFor();
    await page.getByRole("button", { name: "Yes" }).click();
    await expectTable(page, [/^Dinner/]);
    const { name, lines } = await savedFile(page, page.getByRole("button", { name: "Export" }));
    assert.equal(name, "Zz dinner - activities.csv");
    assert.match(lines[1], /^\d+,Dinner <i>& wine,Activity,45\.00,/);

    // What somebody else does to the fields meanwhile is not overwritten unseen.
    await page.getByRole("button", { name: "Dinner <i>& wine", exact: true }).click();
    await page.getByRole("button", { name: "Delete Seat" }).click();
    await page.getByRole("row", { name: /Seat/ }).waitFor({ state: "detached" });
    await page.evaluate(async (event) => {
        const { manage } = await import("/events/addin.js");
        const activity = await manage().GetEventActivities(event).Item(1);
        await activity.ReservationFields.Remove(2);
        await manage().UpdateEventActivity(activity, true);
    }, id);
    await page.getByLabel("Activity name").fill("Supper");
    await save.click();
    await page.getByText("Someone else changed the reservation fields").waitFor();
    await page.getByRole("button", { name: "Keep their fields" }).click();
    await expectTable(page, [/^SupperAsks for Seat, Meal, Wheelchair/]);

    // Nor is anything lost when somebody deletes it meanwhile.
    await page.getByRole("button", { name: "Supper", exact: true }).click();
    await page.getByLabel("Description").fill("kept words");
    await page.evaluate(async (event) => {
        const { manage } = await import("/events/addin.js");
        const activity = await manage().GetEventActivities(event).Item(1).Id;
        await manage().DeleteEventActivity(event, activity);
    }, id);
    await save.click();
    await page.getByText("deleted by another user meanwhile").waitFor();
    await page.getByRole("button", { name: "Save as a new activity" }).click();
    await expectTable(page, [/^SupperAsks for /]);
    await page.getByRole("button", { name: "Supper", exact: true }).click();
    await page.getByRole("heading", { name: "Edit activity" }).waitFor();
    assert.equal(await page.getByLabel("Description").inputValue(), "kept words");

    // An address typed by hand finds the activity that was edited last, or says what is missing.
    await page.getByRole("button", { name: "Sign out" }).click();
    await page.waitForURL("**/host/signin");
    await signIn(page, "anna");
    await page.goto("/events/eventactivity-fulledit?action=edit&persist=eventactivity");
    await page.getByRole("heading", { name: "Activity not found" }).waitFor();
});

browserTest("Expenses and tasks are entered, changed, done and deleted", async (tools) => {
    const { page, newPage, axe, shot } = tools;
    await signIn(page, "anna");
    const id = await makeEvent(page, { Name: "Zz fair" });
    const dialog = dialogPage(page);
    await openTab(page, id, "Expenses");
    await page.getByRole("button", { name: "Add expense" }).click();
    const add = dialog.getByRole("button", { name: "Add expense" });
    const [what, date, amount] = [/^What it was for/, /^Date/, /^Amount/]
        .map((name) => dialog.getByRole("textbox", { name }));
    await add.click();
    await dialog.getByText("A valid expense date is required.").waitFor();
    await date.fill("31/31/2031");
    await amount.fill("12,50");
    await add.click();
    await faultAt(date, "“31/31/2031” is not a date.");
    await axe(page);
    await date.fill("3/1/2031");
    await add.click();
    await faultAt(amount, "“12,50” is not an amount of money.");
    await amount.fill("0");
    await add.click();
    await faultAt(amount, "A valid expense amount is required.");
    await amount.fill("-12.50");
    await what.fill("=HYPERLINK(\"x\")");
    await page.keyboard.press("Control+Enter");
    await expectTable(page, [/^=HYPERLINK.*-\$12\.50/]);
    await page.getByRole("button", { name: "Add expense" }).click();
    await what.fill(`Hall ${"x".repeat(400)}`);
    await date.fill("2/1/2031");
    await amount.fill("100");
    await page.keyboard.press("Control+Enter");
    await expectTable(page, [/^=HYPERLINK/, /^Hall x/]);
    await page.getByRole("row", { name: /^Total \$87\.50/ }).waitFor();
    await page.getByRole("button", { name: "Amount" }).click();
    await page.getByRole("button", { name: "Amount" }).click();
    await expectTable(page, [/^Hall x/, /^=HYPERLINK/]);
    await shot(page, "expenses");
    const { lines } = await savedFile(page, page.getByRole("button", { name: "Export" }));
    assert.equal(lines[0], "Id,What it was for,Date,Amount");
    assert.match(lines[2], /^\d+,"'=HYPERLINK\(""x""\)",2031-03-01,-12\.50$/);
    await page.reload();
    await expectTable(page, [/^Hall x/, /^=HYPERLINK/]);
    await page.getByRole("button", { name: /^Delete Hall/ }).click();
    await page.getByRole("button", { name: "No" }).click();
    await page.getByRole("button", { name: /^Delete Hall/ }).click();
    await page.getByRole("button", { name: "Yes" }).click();
    await expectTable(page, [/^=HYPERLINK/]);

    await openTab(page, id, "Tasks");
    await page.getByRole("button", { name: "Add task" }).click();
    const due = dateAndTime(dialog, "Due");
    await dialog.getByLabel("Task").fill("Order tents");
    await dialog.getByRole("button", { name: "Add task" }).click();
    await faultAt(due.date, "A valid due date/time is required.");
    await due.date.fill("3/1/2020");
    await dialog.getByLabel("Assigned to").selectOption({ index: 1 });
    await axe(page);
    await page.keyboard.press("Control+Enter");
    await expectTable(page, [/^Order tents.*Sun, Mar 1, 2020.*Overdue/]);
    await page.getByText("1 task, 1 overdue").waitFor();
    await page.getByRole("button", { name: "Complete Order tents" }).click();
    await expectTable(page, [/^Order tents.*Done/]);
    assert.equal(await page.getByRole("button", { name: /^Complete/ }).count(), 0);

    // Another user deletes it before it is edited.
    const other = await newPage();
    await signIn(other, "anna");
    await other.evaluate(async (event) => {
        const { manage } = await import("/events/addin.js");
        await manage().DeleteEventTask(event, await manage().GetEventTasks(event).Item(1).Id);
    }, id);
    await page.getByRole("button", { name: "Edit Order tents" }).click();
    await page.getByText("The event task no longer exists.").waitFor();
    await page.getByRole("button", { name: "OK" }).click();
    await page.getByText("Nothing to do yet.").waitFor();
});
