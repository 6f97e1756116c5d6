// A new reservation field of an activity. The command adds it with what is entered here.

import { App, set } from "../../lib/app.js";
import { startDialogPage } from "../../lib/dialog_page.js";
import { submitOnce } from "../../lib/submit_once.js";
import { guardUnsaved } from "../../lib/unsaved.js";
import { readFields } from "../held_fields.js";
import { reservationFieldForm } from "./reservation_field_form.js";

const byId = (id) => document.getElementById(id);
const outputs = {
    type: "FieldType",
    name: "Name",
    description: "Description",
    defaultvalue: "DefaultValue",
};

startDialogPage(async ({ format, close }) => {
    const activity = await App.Shell.Dialog("eventactivity");
    const fields = activity ? await readFields(activity) : [];
    const empty = { name: "", type: 1, description: "", defaultValue: "", choices: [] };
    const taken = fields.map(({ name }) => name);
    const form = reservationFieldForm(byId("record"), empty, { format, taken });
    byId("record").hidden = false;
    form.focus();
    const unguard = guardUnsaved(form.isChanged);

    submitOnce(byId("record"), byId("save"), async () => {
        const values = form.values();
        if (!values) return;
        for (const [output, name] of Object.entries(outputs)) {
            await set(App.Shell.Dialog(output), values[name]);
        }
        unguard();
        await close(true);
    });
});
