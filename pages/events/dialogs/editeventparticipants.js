// Changes several participants at once. They come in a collection; each is read again before it is
// changed, so that nothing else of it is touched.

import { startDialogPage } from "../../lib/dialog_page.js";
import { bindKey } from "../../lib/keys.js";
import { readByRange } from "../../lib/long_list.js";
import { withProgress } from "../bulk_run.js";
import { groupChoices } from "../group_box.js";
import { resultLine, statuses } from "../participant_list.js";
import { changeParticipants, readGroups } from "../participants.js";
import { givenKey, givenObject } from "./given.js";

const byId = (id) => document.getElementById(id);

startDialogPage(async ({ format, heading, close, setTitle }) => {
    setTitle("Change Several Participants");
    if (heading) byId("heading").textContent = heading;
    const eventId = await givenKey("eventid");
    const given = await givenObject("eventparticipants", "TotalInvited");
    const chosen = given ? await readByRange(given, ["Id", "FKEventId"]) : [];
    if (chosen.length === 0) {
        byId("gone").hidden = false;
        return;
    }
    const ids = chosen.map(({ Id }) => Id);
    byId("who").textContent =
        ids.length === 1 ? "1 participant" : `${format.whole(ids.length)} participants`;
    byId("status").append(...statuses.map((text, value) => new Option(text, value)));
    const { element, read } = groupChoices(await readGroups());
    byId("groups").append(element);
    byId("change").hidden = false;
    byId("status").focus();

    async function submit() {
        const change = changeOf(read());
        byId("fault").textContent = change ? "" : "Choose something to change.";
        if (!change) return byId("status").focus();
        byId("confirm").disabled = true;
        try {
            const result = await withProgress("Changing participants", (options) =>
                changeParticipants(eventId || chosen[0].FKEventId, ids, change, options),
            );
            if (!result) return;
            if (result.skipped.size === 0) return await close(true);
            byId("change").hidden = true;
            byId("result").hidden = false;
            byId("result-text").textContent = resultLine(
                result.done, "changed", result.skipped, format,
            );
            byId("done").focus();
        } finally {
            byId("confirm").disabled = false;
        }
    }
    byId("change").addEventListener("submit", (event) => {
        event.preventDefault();
        submit();
    });
    byId("done").addEventListener("click", () => close(true));
    bindKey("Ctrl+Enter", "Change", () => byId("change").hidden || submit());
});

/** What the page asks for, or undefined when that is nothing. */
function changeOf({ joins, leaves }) {
    const change = { joins, leaves };
    if (byId("status").value) change.status = Number(byId("status").value);
    if (byId("attended").value) change.attended = byId("attended").value === "yes";
    const isAny = "status" in change || "attended" in change || joins.length || leaves.length;
    return isAny ? change : undefined;
}
