// A reservation field of an activity, changed where it stands.

import { all, App, ask, write } from "../../lib/app.js";
import { startDialogPage } from "../../lib/dialog_page.js";
import { submitOnce } from "../../lib/submit_once.js";
import { guardUnsaved } from "../../lib/unsaved.js";
import { reservationFieldForm } from "./reservation_field_form.js";

const byId = (id) => document.getElementById(id);

startDialogPage(async ({ format, close }) => {
    const held = await App.Shell.Dialog("reservationfield");
    if (!held) {
        byId("description").textContent = "There is nothing to edit. Close this and try again.";
        return;
    }
    const [values, choices] = await all([
        ask.read(held, ["Name", "FieldType", "Description", "DefaultValue"]),
        ask.list(held.ListItems, ["Name", "Visible"]),
    ]);
    const field = {
        name: values.Name,
        type: values.FieldType,
        description: values.Description,
        defaultValue: values.DefaultValue,
        choices: choices.rows.map(({ Name, Visible }) => ({ name: Name, visible: Visible })),
    };
    const form = reservationFieldForm(byId("record"), field, { format });
    byId("record").hidden = false;
    form.focus();
    const unguard = guardUnsaved(form.isChanged);

    submitOnce(byId("record"), byId("save"), async () => {
        const entered = form.values();
        if (!entered) return;
        await write(held, entered);
        unguard();
        await close(true);
    });
});
