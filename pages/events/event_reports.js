// The reports about one event, offered on its page.

import { menuButton } from "../lib/menu.js";
import { reportFailure } from "../lib/notice.js";
import { commands } from "./addin.js";

/** What each is called, and the command that shows it of an event. */
const reports = [
    ["Participant list", "ShowParticipantReport"],
    ["Reservation list by activity", "ShowReservationByActivityReport"],
    ["Reservation list", "ShowReservationReport"],
    ["Reservations for an activity", "ShowActivityReservationReport"],
    ["Activity summary", "ShowActivitySummaryReport"],
    ["Event summary", "ShowSummaryReport"],
];

/** A menu of the reports about the event `id`. */
export function reportsMenu(id) {
    return menuButton("Reports", reports.map(([label, command]) => ({
        label,
        run: () => commands()[command](id).catch(reportFailure),
    })));
}
