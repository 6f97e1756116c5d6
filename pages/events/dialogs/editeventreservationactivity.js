// One line of a reservation, edited in memory: the line is the command's and comes by reference.

import { App, list } from "../../lib/app.js";
import { startDialogPage } from "../../lib/dialog_page.js";
import { bindKey } from "../../lib/keys.js";
import { guardUnsaved } from "../../lib/unsaved.js";
import { readOffer } from "../activity_offer.js";
import { lineEditor } from "../line_editor.js";
import { readLine, writeLine } from "../line_records.js";
import { givenKey, givenObject } from "./given.js";

const byId = (id) => document.getElementById(id);

startDialogPage(async ({ format, heading, close, setTitle }) => {
    const [action, eventId, reservationId, held] = await Promise.all([
        App.Shell.Dialog("action"),
        givenKey("eventid"),
        givenKey("reservationid"),
        givenObject("eventreservationactivity", "Quantity"),
    ]);
    setTitle(action === "edit" ? "Edit the Reservation Activity" : "Add a Reservation Activity");
    if (heading) byId("heading").textContent = heading;
    if (!held) {
        byId("gone").hidden = false;
        return;
    }
    const [line, offer, others] = await Promise.all([
        readLine(held),
        readOffer(eventId, reservationId),
        linesOfReservation(),
    ]);
    const taken = takenByOthers(others, action === "edit" ? line : undefined);
    const editor = lineEditor(line, { offer, format, withNotes: true, onChange: update });
    byId("line").replaceChildren(editor.element);
    byId("line-form").hidden = false;
    update();
    const before = editor.state;
    const unguard = guardUnsaved(() => editor.state !== before);
    editor.focus();

    function update() {
        editor.showLeft(taken);
    }

    let isClosing = false;
    async function confirm() {
        if (isClosing) return;
        const read = editor.read(taken(editor.activityId));
        if (!read) return editor.focus();
        isClosing = true;
        try {
            await writeLine(held, read);
            unguard();
            await close(true);
        } finally {
            isClosing = false;
        }
    }
    byId("line-form").addEventListener("submit", (event) => {
        event.preventDefault();
        confirm();
    });
    bindKey("Ctrl+Enter", "Use this line", confirm);
});

/** The lines that the reservation has in memory, the one edited among them. */
async function linesOfReservation() {
    const given = await givenObject("eventreservationactivities", "TotalExpected");
    if (!given) return [];
    const { rows } = await list(given, ["Id", "FKActivityId", "Quantity"]);
    return rows;
}

/** How many units of an activity the reservation's other lines take. */
function takenByOthers(lines, edited) {
    const own = lines.findIndex(
        (line) =>
            edited &&
            line.Id === edited.id &&
            line.FKActivityId === edited.activityId &&
            line.Quantity === edited.quantity,
    );
    const others = lines.filter((_, index) => index !== own);
    return (activityId) =>
        others
            .filter((line) => line.FKActivityId === activityId)
            .reduce((sum, line) => sum + line.Quantity, 0);
}
