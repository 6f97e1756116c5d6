// One participant of an event: status, attendance, groups and notes. The participant is the
// command's and comes by reference; the page saves it itself, so that a refusal finds what was
// entered still there.

import { all, App, ask, read } from "../../lib/app.js";
import { build } from "../../lib/build.js";
import { startDialogPage } from "../../lib/dialog_page.js";
import { createForm } from "../../lib/form.js";
import { bindKey } from "../../lib/keys.js";
import { recordEditor } from "../../lib/record_editor.js";
import { guardUnsaved } from "../../lib/unsaved.js";
import { manage } from "../addin.js";
import { participantGroups, statusChoices } from "../participant_fields.js";
import { putGroups, readGroups } from "../participants.js";
import { givenObject } from "./given.js";

const byId = (id) => document.getElementById(id);
const given = () => App.Shell.Dialog("eventparticipant");

startDialogPage(async ({ format, heading, close, setTitle }) => {
    setTitle("Edit the Participant");
    if (heading) byId("heading").textContent = heading;
    if (!(await givenObject("eventparticipant", "Attended"))) {
        byId("gone").hidden = false;
        return;
    }
    const names = participantGroups[0].fields.map(({ name }) => name);
    const [values, memberships, groups] = await Promise.all([
        read(given(), [...names, "FKdonorId", "FKEventId"]),
        all([ask.list(given().InvitationGroups, ["FKInvitationGroupId"])]),
        readGroups(),
    ]);
    const donor = await App.Modules.donor.DonorManage.GetSmallDonor(values.FKdonorId);
    byId("who").textContent = donor ? await donor.Display : "The donor no longer exists.";
    const belongs = new Set(memberships[0].rows.map((row) => row.FKInvitationGroupId));
    const boxes = groups
        .filter(({ id, visible }) => visible || belongs.has(id))
        .map((group) => ({
            group,
            box: build("input", { type: "checkbox", checked: belongs.has(group.id) }),
        }));
    byId("groups").hidden = boxes.length === 0;
    byId("groups").append(
        ...boxes.map(({ group, box }) =>
            build("label", { className: "option" }, box, build("span", { text: group.name })),
        ),
    );

    const form = createForm(byId("record"), participantGroups, {
        format,
        choices: { Status: statusChoices },
    });
    const editor = recordEditor({ form, format, open: () => given(), save, fieldOf: () => {} });
    editor.show(values);
    byId("record").hidden = false;
    form.fields.get("Status").focus();
    const chosen = () => boxes.filter(({ box }) => box.checked).map(({ group }) => group);
    const areGroupsChanged = () =>
        boxes.some(({ group, box }) => box.checked !== belongs.has(group.id));
    const unguard = guardUnsaved(() => form.isChanged() || areGroupsChanged());

    async function save(participant) {
        await putGroups(participant, chosen());
        return manage().UpdateEventParticipant(participant);
    }

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
    byId("record").addEventListener("submit", (event) => {
        event.preventDefault();
        submit();
    });
    bindKey("Ctrl+Enter", "Save", submit);
});
