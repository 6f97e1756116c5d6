// The short form for a new event. The event itself is the command's: it comes by reference.

import { App, read } from "../../lib/app.js";
import { startDialogPage } from "../../lib/dialog_page.js";
import { createForm } from "../../lib/form.js";
import { bindKey } from "../../lib/keys.js";
import { recordEditor } from "../../lib/record_editor.js";
import { guardUnsaved } from "../../lib/unsaved.js";
import { manage } from "../addin.js";
import { fieldNames, shortEventGroups } from "../event_fields.js";
import { fieldOfRefusal } from "../event_rules.js";
import { loadLookups } from "../lookups.js";

const names = fieldNames(shortEventGroups);
const byId = (id) => document.getElementById(id);

startDialogPage(async ({ format, heading, description, close }) => {
    if (heading) byId("heading").textContent = heading;
    byId("description").textContent = description ?? "";

    const choices = await loadLookups(names);
    const form = createForm(byId("event"), shortEventGroups, { format, choices });
    const editor = recordEditor({
        form,
        open: () => App.Shell.Dialog("EventInfo"),
        save: (event) => manage().UpdateEvent(event, true, true),
        fieldOf: fieldOfRefusal,
        format,
    });
    editor.show(await read(App.Shell.Dialog("EventInfo"), names));
    byId("event").hidden = false;
    form.fields.get("Name").focus();
    const unguard = guardUnsaved(form.isChanged);

    async function submit() {
        byId("save").disabled = true;
        try {
            const { outcome } = await editor.submit();
            if (outcome !== "saved") return;
            unguard();
            await close(true);
        } finally {
            byId("save").disabled = false;
        }
    }

    byId("event").addEventListener("submit", (event) => {
        event.preventDefault();
        submit();
    });
    bindKey("Ctrl+Enter", "Save", submit);
});
