// The form of one item of a lookup list. The page that opened the dialog stores what is entered.

import { App, list, set } from "../../lib/app.js";
import { startDialogPage } from "../../lib/dialog_page.js";
import { createForm } from "../../lib/form.js";
import { submitOnce } from "../../lib/submit_once.js";
import { guardUnsaved } from "../../lib/unsaved.js";
import { listItemFields } from "../lookup_lists.js";

const byId = (id) => document.getElementById(id);

/**
 * Sets up the page for an item called `thing` with `more` fields beside those of every list; its
 * dialog value `listName` holds the whole list.
 */
export function startListItemDialog({ thing, listName, more = [] }) {
    startDialogPage(async ({ format, heading, close, setTitle }) => {
        const fields = listItemFields(more);
        const names = fields.map(({ name }) => name);
        const [action, editId, items, ...given] = await Promise.all(
            ["action", "editid", listName, ...names].map((name) => App.Shell.Dialog(name)),
        );
        const isEdit = action === "edit";
        setTitle(isEdit ? `Edit the ${thing}` : `Add ${article(thing)} ${thing}`);
        byId("heading").textContent = heading || document.title;
        byId("save").textContent = isEdit ? `Save ${thing}` : `Add ${thing}`;

        const others = items ? await namesIn(items, isEdit ? editId : undefined) : [];
        const form = createForm(byId("record"), [{ fields }], { format });
        const values = Object.fromEntries(names.map((name, index) => [name, given[index] ?? ""]));
        form.show({ ...values, visible: values.visible === "" ? true : values.visible });
        byId("record").hidden = false;
        form.fields.get("name").focus();
        const unguard = guardUnsaved(form.isChanged);

        submitOnce(byId("record"), byId("save"), async () => {
            form.clear();
            const entered = form.values();
            if (!entered) return;
            const name = entered.name.trim();
            if (!name) return form.fail("A name is required.", "name");
            if (others.includes(name.toLowerCase())) {
                return form.fail(`There is another ${thing} called “${name}”.`, "name");
            }
            for (const [key, value] of Object.entries({ ...entered, name })) {
                await set(App.Shell.Dialog(key), value);
            }
            unguard();
            await close(true);
        });
    });
}

/** The names of all items but the one with the id `own`, in lower case. */
async function namesIn(items, own) {
    const { rows } = await list(items, ["Id", "Name"]);
    return rows.filter(({ Id }) => Id !== own).map(({ Name }) => Name.trim().toLowerCase());
}

function article(thing) {
    return /^[aeiou]/.test(thing) ? "an" : "a";
}
