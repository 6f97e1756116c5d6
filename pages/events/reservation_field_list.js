// The reservation fields of an activity as rows that can be edited, moved and deleted. They live in
// the held activity until that is saved.

import { announce, reportFailure } from "../lib/notice.js";
import { sayOff } from "../lib/press.js";
import { rowFrom } from "../lib/table.js";
import { commands } from "./addin.js";
import { moveField, readFields } from "./held_fields.js";
import { choicesText, defaultText, fieldType } from "./reservation_fields.js";

const byId = (id) => document.getElementById(id);

/**
 * Shows the fields of the held `activity`; `onChange(fields)` hears of them whenever they have been
 * read. Gives a function that reads and shows them anew.
 */
export function fieldList(activity, { format, mayEdit, onChange }) {
    const table = byId("fields");
    let fields = [];
    let running = false;

    async function update() {
        fields = await readFields(activity);
        const rows = fields.map((field, index) => rowOf(field, index));
        table.tBodies[0].replaceChildren(...rows);
        table.hidden = rows.length === 0;
        byId("no-fields").hidden = rows.length > 0;
        onChange(fields);
    }

    /** Runs `change` unless another is under way, and shows what came of it. */
    async function run(change, focus) {
        if (running) return;
        running = true;
        sayOff(byId("add-field"), true);
        // Rows are known by their places, which are about to change.
        table.inert = true;
        try {
            await change();
            await update();
        } catch (error) {
            reportFailure(error);
        } finally {
            running = false;
            sayOff(byId("add-field"), false);
            table.inert = false;
        }
        focus?.();
    }

    async function add() {
        const before = fields.length;
        await commands().AddEventActivityReservationField(activity);
        await update();
        const added = fields[before];
        if (added && fieldType(added.type).hasChoices) await editChoices(before);
    }

    async function edit(index) {
        const field = await activity.ReservationFields.Item(index + 1);
        await commands().EditEventActivityReservationField(field);
    }

    async function editChoices(index) {
        const field = await activity.ReservationFields.Item(index + 1);
        await commands().EditEventActivityReservationFieldItems(field, activity);
    }

    const remove = (index) => commands().DeleteEventActivityReservationField(index + 1, activity);

    async function move(index, to) {
        await moveField(activity, index, to);
        announce(`${fields[index].name} moved to place ${to + 1} of ${fields.length}`);
    }

    function rowOf(field, index) {
        const type = fieldType(field.type);
        const row = rowFrom(byId("field-row"), {
            name: field.name,
            description: field.description,
            kind: type.name,
            choices: type.hasChoices ? choicesText(field.choices) || "none yet" : "",
            default: defaultText(field, format),
        });
        if (!mayEdit) return row;
        const offers = [
            { label: "Up", to: index - 1, run: () => move(index, index - 1) },
            { label: "Down", to: index + 1, run: () => move(index, index + 1) },
            { label: "Edit", run: () => edit(index) },
            type.hasChoices && { label: "Choices", run: () => editChoices(index) },
            { label: "Delete", run: () => remove(index) },
        ].filter(Boolean);
        row.querySelector(".row-actions").append(
            ...offers.map(({ label, to, run: change }) => {
                const button = document.createElement("button");
                button.type = "button";
                button.className = "quiet";
                button.textContent = label;
                button.setAttribute("aria-label", `${label} ${field.name}`);
                button.disabled = to < 0 || to >= fields.length;
                const place = to ?? index;
                button.addEventListener("click", () => run(change, () => focusOn(place, label)));
                return button;
            }),
        );
        return row;
    }

    byId("add-field").hidden = !mayEdit;
    byId("add-field").addEventListener("click", () => run(add, () => byId("add-field").focus()));
    return update;
}

/** Keeps the focus on the button called `label` of the row at `place`, or near it. */
function focusOn(place, label) {
    const rows = [...byId("fields").tBodies[0].rows];
    const buttons = [...(rows[Math.min(place, rows.length - 1)]?.querySelectorAll("button") ?? [])];
    const usable = buttons.filter(({ disabled }) => !disabled);
    const same = usable.find((button) => button.textContent === label);
    (same ?? usable[0] ?? byId("add-field")).focus();
}
