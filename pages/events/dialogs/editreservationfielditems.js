// The choices of a reservation field: their names, their order, which are offered.

import { all, App, ask, list } from "../../lib/app.js";
import { startDialogPage } from "../../lib/dialog_page.js";
import { announce } from "../../lib/notice.js";
import { submitOnce } from "../../lib/submit_once.js";
import { guardUnsaved } from "../../lib/unsaved.js";
import { choiceFault } from "../reservation_fields.js";

const byId = (id) => document.getElementById(id);
const rows = () => [...byId("list").children];
const part = (row, name) => row.querySelector(`[data-part="${name}"]`);

startDialogPage(async ({ heading, close }) => {
    const field = await App.Shell.Dialog("reservationfield");
    if (heading) byId("heading").textContent = heading;
    if (!field) {
        byId("lead").textContent = "There is nothing to edit. Close this and try again.";
        return;
    }
    byId("lead").textContent = `Choices of “${await field.Name}”`;
    const { rows: items } = await list(field.ListItems, ["Name", "Visible"]);
    for (const { Name, Visible } of items) addRow(Name, Visible);
    if (items.length === 0) addRow("", true);
    showPlaces();
    const atFirst = JSON.stringify(entered());
    const unguard = guardUnsaved(() => JSON.stringify(entered()) !== atFirst);

    byId("list").addEventListener("click", ({ target }) => {
        const row = target.closest("li");
        if (target.dataset.move) moveRow(row, Number(target.dataset.move), target);
        if ("remove" in target.dataset) removeRow(row);
    });
    byId("list").addEventListener("keydown", (event) => {
        // Enter in the last name asks for one more; anywhere else it would save too soon.
        if (event.key !== "Enter" || event.ctrlKey || event.target.dataset.part !== "name") return;
        event.preventDefault();
        if (event.target.value.trim()) byId("add").click();
    });
    byId("add").addEventListener("click", () => {
        part(addRow("", true), "name").focus();
        showPlaces();
    });
    byId("items").hidden = false;
    part(rows().at(-1), "name").focus();

    submitOnce(byId("items"), byId("save"), async () => {
        const choices = entered().filter(({ name }) => name);
        const fault = choiceFault(choices);
        byId("fault").textContent = fault?.text ?? "";
        for (const row of rows()) {
            const isWrong = part(row, "name").value.trim() === fault?.name;
            part(row, "name").setAttribute("aria-invalid", String(isWrong));
        }
        if (fault) return;
        await all([
            ...items.map(() => ask.call(field.ListItems.Remove(1))),
            ...choices.map(({ name, visible }) => ask.call(field.AddListItem(name, visible))),
        ]);
        unguard();
        await close(true);
    });
});

function entered() {
    return rows().map((row) => ({
        name: part(row, "name").value.trim(),
        visible: part(row, "visible").checked,
    }));
}

function addRow(name, visible) {
    const row = byId("item").content.firstElementChild.cloneNode(true);
    part(row, "name").value = name;
    part(row, "visible").checked = visible;
    byId("list").append(row);
    return row;
}

function moveRow(row, step, button) {
    const other = step < 0 ? row.previousElementSibling : row.nextElementSibling;
    if (!other) return;
    if (step < 0) other.before(row);
    else other.after(row);
    showPlaces();
    (button.disabled ? part(row, "name") : button).focus();
    announce(`Moved to place ${rows().indexOf(row) + 1} of ${rows().length}`);
}

function removeRow(row) {
    const next = row.nextElementSibling ?? row.previousElementSibling;
    row.remove();
    showPlaces();
    (next ? part(next, "name") : byId("add")).focus();
}

/** Names the controls of each row by its place; those at the ends cannot go further. */
function showPlaces() {
    for (const [index, row] of rows().entries()) {
        part(row, "name").setAttribute("aria-label", `Choice ${index + 1}`);
        for (const button of row.querySelectorAll("button")) {
            button.setAttribute("aria-label", `${button.textContent} choice ${index + 1}`);
        }
        row.querySelector('[data-move="-1"]').disabled = index === 0;
        row.querySelector('[data-move="1"]').disabled = index === rows().length - 1;
    }
}
