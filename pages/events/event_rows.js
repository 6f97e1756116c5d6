// The rows of the list of events.

import { reportFailure } from "../lib/notice.js";
import { rowFrom } from "../lib/table.js";
import { commands } from "./addin.js";
import { nameIn } from "./lookups.js";

const byId = (id) => document.getElementById(id);

/** What a row shows of an event; the figures take longer to count. */
export const rowColumns = [
    "Id",
    "Name",
    "StartDateTime",
    "FKStatusId",
    "FKLocationId",
    "MaxCapacity",
];
export const figureColumns = ["Id", "NumberAccepted", "NumberReservations"];

/** Makes rows of `body`, and adds their figures; `onLeave(id)` hears that a row leads elsewhere. */
export function eventRows(body, { format, allowed, lookups, onLeave }) {
    const template = byId("event-row");
    const actions = [
        { label: "Edit", right: "events/edit", run: (id) => commands().EditEvent(id) },
        { label: "Copy", right: "events/edit", run: (id) => commands().CopyEvent(id) },
        { label: "Delete", right: "events/delete", run: (id) => commands().DeleteEvent(id) },
    ].filter(({ right }) => allowed(right));

    function make(event) {
        const { FKStatusId, FKLocationId } = lookups;
        const row = rowFrom(template, {
            name: event.Name,
            start: format.longDate(event.StartDateTime),
            time: format.time(event.StartDateTime) || "no time set",
            status: nameIn(FKStatusId, event.FKStatusId),
            location: nameIn(FKLocationId, event.FKLocationId),
            capacity: event.MaxCapacity ? `up to ${format.whole(event.MaxCapacity)}` : "",
        });
        row.dataset.id = event.Id;
        row.dataset.capacity = event.MaxCapacity;
        const link = row.querySelector("a.row-link");
        link.href = `/events/event-details?id=${event.Id}`;
        link.addEventListener("click", (click) => {
            if (click.ctrlKey || click.metaKey || click.shiftKey) return;
            click.preventDefault();
            onLeave(event.Id);
            commands().ViewEvent(event.Id);
        });
        row.querySelector(".row-actions").append(
            ...actions.map((action) => actionButton(action, event)),
        );
        return row;
    }

    function actionButton({ label, run }, { Id, Name }) {
        const button = document.createElement("button");
        button.type = "button";
        button.className = "quiet";
        button.textContent = label;
        button.setAttribute("aria-label", `${label} ${Name}`);
        button.addEventListener("click", () => {
            onLeave(Id);
            run(Id).catch(reportFailure);
        });
        return button;
    }

    /** Accepted and reserved per event. */
    function addFigures(counted) {
        for (const { Id, NumberAccepted, NumberReservations } of counted) {
            const row = body.querySelector(`tr[data-id="${Id}"]`);
            if (!row) continue;
            const most = Number(row.dataset.capacity);
            row.querySelector('[data-cell="capacity"]').textContent = acceptedText(
                format,
                NumberAccepted,
                most,
            );
            row.querySelector('[data-cell="reserved"]').textContent = reservationsText(
                format,
                NumberReservations,
            );
        }
    }

    return { make, addFigures };
}

function acceptedText(format, accepted, most) {
    if (most) return `${format.whole(accepted)} of ${format.whole(most)} accepted`;
    return accepted ? `${format.whole(accepted)} accepted` : "";
}

function reservationsText(format, count) {
    if (count === 0) return "";
    return count === 1 ? "1 reservation" : `${format.whole(count)} reservations`;
}
