// One line of a reservation, edited in memory: the line is the command's and comes by reference.

import { all, App, ask } from "../../lib/app.js";
import { startDialogPage } from "../../lib/dialog_page.js";
import { bindKey } from "../../lib/keys.js";
import { guardUnsaved } from "../../lib/unsaved.js";
import { readOffer } from "../activity_offer.js";
import { lineEditor } from "../line_editor.js";
import { readLine, writeLine } from "../line_records.js";

const byId = (id) => document.getElementById(id);

startDialogPage(async ({ format, heading, close, setTitle }) => {
    const values = await all(
        ["action", "eventid", "reservationid", "eventreservationactivity"].map((name) =>
            ask.call(App.Shell.Dialog(name)),
        ),
    );
    const [action, eventId, reservationId, held] = values;
    setTitle(action === "edit" ? "Edit the Reservation Activity" : "Add a Reservation Activity");
    if (heading) byId("heading").textContent = heading;
    if (!held) {
        byId("gone").hidden = false;
        return;
    }
    const [line, offer, others] = await Promise.all([
        readLine(held),
        readOffer(eventId || 0, reservationId || 0),
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
    if (!(await App.Shell.Dialog("eventreservationactivities"))) return [];
    const columns = ["Id", "FKActivityId", "Quantity"];
    const [{ rows }] = await all([
        ask.list(App.Shell.Dialog("eventreservationactivities"), columns),
    ]);
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
