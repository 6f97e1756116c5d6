// All fields of an event, new or stored.

import { App, read, release } from "../lib/app.js";
import { createForm } from "../lib/form.js";
import { bindKey } from "../lib/keys.js";
import { noticeLater } from "../lib/notice.js";
import { startPage } from "../lib/page.js";
import { recordEditor } from "../lib/record_editor.js";
import { guardUnsaved } from "../lib/unsaved.js";
import { commands, manage } from "./addin.js";
import { eventGroups, fieldNames } from "./event_fields.js";
import { fieldOfRefusal } from "./event_rules.js";
import { loadLookups } from "./lookups.js";
import { deletedEvent, showMissing } from "./missing_event.js";

const query = new URLSearchParams(location.search);
const id = Number(query.get("id"));
const isNewPage = query.get("action") === "new";
const names = fieldNames(eventGroups);
const byId = (name) => document.getElementById(name);

startPage("Events", async ({ format, allowed }) => {
    const [values, choices] = await Promise.all([startValues(), loadLookups(names)]);
    if (!values) return showMissing(deletedEvent);

    const form = createForm(byId("event"), eventGroups, { format, choices });
    const save = (record) => manage().UpdateEvent(record, true, true);
    const common = { form, save, fieldOf: fieldOfRefusal, format };
    const newEditor = () => recordEditor({ ...common, open: () => manage().GetNewEvent() });
    const storedEditor = () =>
        recordEditor({
            ...common,
            open: () => manage().GetEvent(id),
            lock: () => App.Document.GetLock("event", id),
        });
    let editor = isNewPage ? newEditor() : storedEditor();
    editor.show(isNewPage ? await read(manage().GetNewEvent(), names) : values);
    if (isNewPage) form.fill(values);

    showHead(values);
    byId("event").hidden = false;
    if (isNewPage) form.fields.get("Name").focus();
    const unguard = guardUnsaved(form.isChanged);

    async function submit() {
        setSaving(true);
        try {
            const { outcome, record } = await editor.submit();
            if (outcome === "gone") showGone();
            if (outcome === "saved") await leaveFor(record);
        } finally {
            setSaving(false);
        }
    }

    async function leaveFor(record) {
        const savedId = await record.Id;
        release(record);
        unguard();
        noticeLater("Event saved.");
        await commands().ViewEvent(savedId);
    }

    /** The event has been deleted meanwhile: what was typed can still become a new one. */
    function showGone() {
        byId("banner-text").textContent =
            "This event was deleted by another user meanwhile. What you entered is still here.";
        byId("banner").hidden = false;
        byId("save-as-new").hidden = false;
        byId("save").hidden = true;
        byId("save-as-new").focus();
    }

    byId("save-as-new").addEventListener("click", async () => {
        const typed = form.values();
        if (!typed) return;
        editor = newEditor();
        editor.show(await read(manage().GetNewEvent(), names));
        form.fill(typed);
        await submit();
    });
    byId("event").addEventListener("submit", (event) => {
        event.preventDefault();
        submit();
    });
    if (allowed("events/edit")) bindKey("Ctrl+Enter", "Save", submit);
    else showReadOnly();
});

/** What the form starts with; nothing when the event is not there. */
async function startValues() {
    if (isNewPage) {
        const given = query.get("persist") === "event" ? await App.Session("event") : null;
        return given ? read(given, names) : {};
    }
    const event = id > 0 ? await manage().GetEvent(id) : null;
    if (!event) return undefined;
    const values = await read(event, names);
    release(event);
    return values;
}

function showHead({ Name }) {
    const isCopy = query.get("actiontype") === "copy";
    const title = isNewPage ? "New event" : isCopy ? "Edit the copied event" : "Edit event";
    byId("title").textContent = title;
    document.title = isNewPage ? "New event - Quillmere" : `Edit ${Name} - Quillmere`;
    if (isNewPage) return;
    byId("crumb").textContent = Name;
    byId("crumb").hidden = false;
    byId("crumb").href = `/events/event-details?id=${id}`;
    byId("cancel").href = byId("crumb").href;
}

function setSaving(isSaving) {
    byId("save").disabled = isSaving;
    byId("save").textContent = isSaving ? "Saving…" : "Save event";
}

function showReadOnly() {
    byId("banner-text").textContent = "You may look at this event, but not change it.";
    byId("banner").hidden = false;
    byId("save").hidden = true;
}
