// All of an activity, new or stored, with its reservation fields. The command leaves the activity
// in the session; what is done to its fields happens there until it is saved.

import { App, read, release, set } from "../lib/app.js";
import { createForm } from "../lib/form.js";
import { bindKey } from "../lib/keys.js";
import { confirmBox } from "../lib/message_box.js";
import { noticeLater, reportFailure } from "../lib/notice.js";
import { startPage } from "../lib/page.js";
import { recordEditor } from "../lib/record_editor.js";
import { guardUnsaved } from "../lib/unsaved.js";
import { activityGroups, quantityTypes } from "./activity_fields.js";
import { commands, manage } from "./addin.js";
import { fieldNames } from "./event_fields.js";
import { readFields } from "./held_fields.js";
import { loadLookups } from "./lookups.js";
import { deletedEvent, showMissing } from "./missing_event.js";
import { fieldOfRefusalOf } from "./record_rules.js";
import { fieldList } from "./reservation_field_list.js";
import { faultOfFields } from "./reservation_fields.js";

const query = new URLSearchParams(location.search);
const names = fieldNames(activityGroups);
const byId = (name) => document.getElementById(name);

startPage("Events", async ({ format, allowed }) => {
    const held = await App.Session("eventactivity");
    if (!held) {
        return showMissing("Which activity to edit is not known here: open it from its event.", {
            title: "Activity not found",
        });
    }
    const [values, choices, event] = await Promise.all([
        read(held, [...names, "Id", "IsNew", "FKEventId", "QuantityInUse"]),
        loadLookups(names),
        held.FKEventId.then((id) => manage().GetEvent(id)),
    ]);
    if (!event) return showMissing(deletedEvent);
    const { Id, IsNew, FKEventId } = values;
    const tabName = query.get("tabname") || "events_activities";

    const form = createForm(byId("activity"), activityGroups, {
        format,
        choices: { ...choices, QuantityType: quantityTypes },
    });
    const common = { form, fieldOf: fieldOfRefusalOf("activity"), format };
    const store = (record) => manage().UpdateEventActivity(record, true);
    let fields = [];
    let fieldsAtFirst;
    const fieldsAreChanged = () => JSON.stringify(fields) !== fieldsAtFirst;

    const storedEditor = () =>
        recordEditor({
            ...common,
            open: () => manage().GetEventActivity(Id),
            save: async (record) => (await handFieldsTo(record)) && store(record),
            lock: () => App.Document.GetLock("event", FKEventId),
        });
    // The new activity is the one that stays in the session, fields and all.
    const newEditor = () =>
        recordEditor({ ...common, open: () => held, save: store, letGo: () => {} });
    let editor = IsNew ? newEditor() : storedEditor();
    if (IsNew) {
        editor.show(await read(manage().GetNewEventActivity(FKEventId), names));
        form.fill(values);
    } else {
        editor.show(values);
    }

    const mayEdit = allowed("events/edit");
    const updateFields = fieldList(held, {
        format,
        mayEdit,
        onChange: (now) => {
            fields = now;
            fieldsAtFirst ??= JSON.stringify(now);
        },
    });
    await updateFields();
    document.addEventListener("hostrefresh", () => updateFields().catch(reportFailure));
    await showHead(values, event, format);
    byId("activity").hidden = false;
    if (IsNew) form.fields.get("Name").focus();
    const unguard = guardUnsaved(() => form.isChanged() || fieldsAreChanged());

    /** Gives the stored `record` the fields of this page, unless somebody else changed them too. */
    async function handFieldsTo(record) {
        if (!fieldsAreChanged()) return true;
        const stored = JSON.stringify(await readFields(record));
        if (stored !== fieldsAtFirst && stored !== JSON.stringify(fields)) {
            const answer = await confirmBox({
                title: "Changed by someone else",
                text: "Someone else changed the reservation fields after you opened them.",
                buttons: [
                    ["mine", "Save my fields"],
                    ["theirs", "Keep their fields"],
                    ["edit", "Go on editing"],
                ],
            });
            if (answer === "edit") return false;
            if (answer === "theirs") return true;
        }
        await set(record.ReservationFields, await held.ReservationFields);
        return true;
    }

    async function submit() {
        const fault = faultOfFields(fields);
        if (fault) return form.fail(fault);
        setSaving(true);
        try {
            const { outcome, record } = await editor.submit();
            if (outcome === "gone") showGone();
            if (outcome === "saved") await leave(record);
        } finally {
            setSaving(false);
        }
    }

    async function leave(record) {
        release(record);
        unguard();
        noticeLater("Activity saved.");
        await commands().ViewEvent(FKEventId, tabName);
    }

    /** The activity has been deleted meanwhile: what was typed can still become a new one. */
    function showGone() {
        byId("banner-text").textContent =
            "This activity was deleted by another user meanwhile. What you entered is still here.";
        byId("banner").hidden = false;
        byId("save-as-new").hidden = false;
        byId("save").hidden = true;
        byId("save-as-new").focus();
    }

    byId("save-as-new").addEventListener("click", async () => {
        const typed = form.values();
        if (!typed) return;
        const made = await manage().GetNewEventActivity(FKEventId);
        await set(made.ReservationFields, await held.ReservationFields);
        editor = recordEditor({ ...common, open: () => made, save: store, letGo: () => {} });
        editor.show(await read(manage().GetNewEventActivity(FKEventId), names));
        form.fill(typed);
        await submit();
    });
    byId("activity").addEventListener("submit", (submission) => {
        submission.preventDefault();
        submit();
    });
    if (mayEdit) bindKey("Ctrl+Enter", "Save", submit);
    else showReadOnly();
});

async function showHead({ Name, IsNew, FKEventId, QuantityInUse }, event, format) {
    const eventName = await event.Name;
    release(event);
    const title = IsNew ? "New activity" : "Edit activity";
    byId("title").textContent = title;
    document.title = `${IsNew ? title : `Edit ${Name}`} - Quillmere`;
    byId("reserved").textContent =
        QuantityInUse > 0 ? `${format.whole(QuantityInUse)} reserved so far` : "";
    const address = `/events/event-details?id=${FKEventId}&tab=activities`;
    byId("crumb").textContent = eventName;
    byId("crumb").href = address;
    byId("crumb").hidden = false;
    byId("cancel").href = address;
}

function setSaving(isSaving) {
    byId("save").disabled = isSaving;
    byId("save").textContent = isSaving ? "Saving…" : "Save activity";
}

function showReadOnly() {
    byId("banner-text").textContent = "You may look at this activity, but not change it.";
    byId("banner").hidden = false;
    byId("save").hidden = true;
}
