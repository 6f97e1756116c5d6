// Adds one donor to an event's participants. The new participant stands alone in the collection
// that the command hands over.

import { App, read, write } from "../../lib/app.js";
import { build } from "../../lib/build.js";
import { startDialogPage } from "../../lib/dialog_page.js";
import { createForm } from "../../lib/form.js";
import { bindKey } from "../../lib/keys.js";
import { collectRefusals } from "../../lib/refusals.js";
import { guardUnsaved } from "../../lib/unsaved.js";
import { manage } from "../addin.js";
import { accepted, overCapacity } from "../participant_list.js";
import { participantGroups, statusChoices } from "../participant_fields.js";
import { putGroups, readGroups, readParticipants } from "../participants.js";
import { givenKey, givenObject } from "./given.js";

const byId = (id) => document.getElementById(id);

startDialogPage(async ({ format, close }) => {
    const collection = await givenObject("eventparticipants", "TotalInvited");
    const count = collection ? await collection.Count : 0;
    if (count === 0) {
        byId("gone").hidden = false;
        return;
    }
    const participant = await collection.Item(1);
    const names = participantGroups[0].fields.map(({ name }) => name);
    const values = await read(participant, [...names, "FKdonorId", "FKEventId"]);
    const eventId = (await givenKey("eventid")) || values.FKEventId;
    const stored = eventId ? await manage().GetEvent(eventId) : null;
    if (!stored) {
        byId("gone").hidden = false;
        return;
    }
    const [donor, there, groups, event] = await Promise.all([
        App.Modules.donor.DonorManage.GetSmallDonor(values.FKdonorId),
        readParticipants(eventId),
        readGroups(),
        read(stored, ["Name", "MaxCapacity"]),
    ]);
    byId("who").textContent = donor ? await donor.Display : "The donor no longer exists.";
    if (there.some(({ donorId }) => donorId === values.FKdonorId)) {
        byId("there").hidden = false;
        byId("there").textContent = `This donor is on the list of ${event.Name} already.`;
        byId("gone").hidden = false;
        byId("gone-text").hidden = true;
        return document.querySelector("#gone button").focus();
    }

    const boxes = groups
        .filter(({ visible }) => visible)
        .map((group) => ({ group, box: build("input", { type: "checkbox" }) }));
    byId("groups").hidden = boxes.length === 0;
    byId("groups").append(
        ...boxes.map(({ group, box }) =>
            build("label", { className: "option" }, box, build("span", { text: group.name })),
        ),
    );
    const choices = { Status: statusChoices };
    const form = createForm(byId("record"), participantGroups, { format, choices });
    form.show(values);
    byId("record").hidden = false;
    form.fields.get("Status").focus();
    const unguard = guardUnsaved(() => form.isChanged() || boxes.some(({ box }) => box.checked));
    byId("record").addEventListener("input", showRoom);

    function showRoom() {
        const isComing = form.fields.get("Status").read().value === accepted;
        const over = isComing ? overCapacity(there, event.MaxCapacity, 1) : 0;
        byId("over").textContent =
            over > 0
                ? `The event has room for ${format.whole(event.MaxCapacity)}: this is one too many.`
                : "";
        byId("save").textContent = over > 0 ? "Add anyway" : "Add participant";
    }

    async function submit() {
        form.clear();
        const changes = form.values();
        if (!changes) return;
        byId("save").disabled = true;
        try {
            const failed = await write(participant, changes);
            if (Object.keys(failed).length > 0) return form.refuse(failed);
            const chosen = boxes.filter(({ box }) => box.checked).map(({ group }) => group);
            await putGroups(participant, chosen);
            const { result, refusals } = await collectRefusals(() =>
                manage().AddEventParticipants(eventId, collection),
            );
            if (!result) return refusals.forEach((text) => form.fail(text));
            unguard();
            await close(true);
        } finally {
            byId("save").disabled = false;
        }
    }
    byId("record").addEventListener("submit", (submission) => {
        submission.preventDefault();
        submit();
    });
    bindKey("Ctrl+Enter", "Add", submit);
});
