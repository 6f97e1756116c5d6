// Asks whether several participants may be removed from an event, and removes them.

import { build } from "../../lib/build.js";
import { startDialogPage } from "../../lib/dialog_page.js";
import { bindKey } from "../../lib/keys.js";
import { readByRange } from "../../lib/long_list.js";
import { withProgress } from "../bulk_run.js";
import { donorsOfEvent } from "../donors.js";
import { resultLine } from "../participant_list.js";
import { readStandings, removeParticipants } from "../participants.js";
import { givenKey, givenObject } from "./given.js";

const mostNamed = 12;
const byId = (id) => document.getElementById(id);

startDialogPage(async ({ format, close, setTitle }) => {
    setTitle("Remove Participants");
    const given = await givenObject("eventparticipants", "TotalInvited");
    const chosen = given ? await readByRange(given, ["Id", "FKdonorId", "FKEventId"]) : [];
    if (chosen.length === 0) {
        byId("gone").hidden = false;
        return;
    }
    const eventId = (await givenKey("eventid")) || chosen[0].FKEventId;
    await show(chosen, eventId, format);

    async function submit() {
        byId("confirm").disabled = true;
        try {
            const ids = chosen.map(({ Id }) => Id);
            const result = await withProgress("Removing participants", (options) =>
                removeParticipants(eventId, ids, options),
            );
            if (!result) return;
            if (result.skipped.size === 0) return await close(true);
            byId("delete").hidden = true;
            byId("result").hidden = false;
            byId("result-text").textContent = resultLine(
                result.done, "removed", result.skipped, format,
            );
            byId("done").focus();
        } finally {
            byId("confirm").disabled = false;
        }
    }
    byId("delete").addEventListener("submit", (event) => {
        event.preventDefault();
        submit();
    });
    byId("done").addEventListener("click", () => close(true));
    bindKey("Ctrl+Enter", "Remove", () => byId("delete").hidden || submit());
});

async function show(chosen, eventId, format) {
    const [donors, standings] = await Promise.all([
        donorsOfEvent("events_event_participants", eventId),
        readStandings(eventId),
    ]);
    const count = chosen.length;
    byId("question").textContent =
        count === 1
            ? "Remove 1 participant from the list?"
            : `Remove ${format.whole(count)} participants from the list?`;
    const names = chosen
        .slice(0, mostNamed)
        .map(({ FKdonorId }) => donors.get(FKdonorId)?.Display ?? "(deleted donor)");
    byId("names").append(...names.map((text) => build("li", { text })));
    if (count > mostNamed) {
        const text = `and ${format.whole(count - mostNamed)} more`;
        byId("names").append(build("li", { className: "faint", text }));
    }
    const reserved = chosen.filter(({ FKdonorId }) => standings.has(FKdonorId)).length;
    byId("reserved").textContent =
        reserved === 0
            ? "Their notes and groups at this event go with them; the donors stay."
            : `${format.whole(reserved)} of them have reservations, which stay with their payments.`;
    byId("delete").hidden = false;
    document.querySelector("[data-cancel]").focus();
}
