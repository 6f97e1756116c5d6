// A dialog with the form of one record. The record is the command's: it comes by reference. The
// page saves it itself, so that a refusal finds what was typed still there; the command's own
// saving afterwards writes the same again.

import { App, read } from "../../lib/app.js";
import { startDialogPage } from "../../lib/dialog_page.js";
import { createForm } from "../../lib/form.js";
import { recordEditor } from "../../lib/record_editor.js";
import { submitOnce } from "../../lib/submit_once.js";
import { guardUnsaved } from "../../lib/unsaved.js";
import { fieldNames } from "../event_fields.js";

const byId = (id) => document.getElementById(id);

/**
 * Sets up the page around the form "record" with its button "save".
 * - `value`: the dialog value that holds the record;
 * - `groups`: the form's fields; `loadChoices()` gives those of its choices;
 * - `save(record)` stores it; `fieldOf(message)` names the field that a refusal is about;
 * - `words`: { add, edit }, each { title, button }, by the dialog value "action".
 */
export function startRecordDialog({ value, groups, loadChoices, save, fieldOf, words }) {
    startDialogPage(async ({ format, heading, description, close, setTitle }) => {
        const action = (await App.Shell.Dialog("action")) === "edit" ? "edit" : "add";
        const { title, button } = words[action];
        setTitle(title);
        byId("heading").textContent = heading || title;
        byId("description").textContent = description ?? "";
        byId("save").textContent = button;

        if (!(await App.Shell.Dialog(value))) {
            byId("description").textContent = "There is nothing to edit. Close this and try again.";
            return;
        }
        const names = fieldNames(groups);
        const [choices, values] = await Promise.all([
            loadChoices?.(),
            read(App.Shell.Dialog(value), names),
        ]);
        const form = createForm(byId("record"), groups, { format, choices });
        const open = () => App.Shell.Dialog(value);
        const editor = recordEditor({ form, open, save, fieldOf, format });
        editor.show(values);
        byId("record").hidden = false;
        form.fields.get(names[0]).focus();
        // The window grows with its page a moment later; until then the focus would scroll it.
        scrollTo(0, 0);
        const unguard = guardUnsaved(form.isChanged);

        submitOnce(byId("record"), byId("save"), async () => {
            const { outcome } = await editor.submit();
            if (outcome !== "saved") return;
            unguard();
            await close(true);
        });
    });
}
