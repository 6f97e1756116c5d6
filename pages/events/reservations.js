// The reservations of an event with their lines, and how each stands.

import { all, ask, list, release } from "../lib/app.js";
import { standing } from "../lib/money_words.js";
import { manage } from "./addin.js";
import { donorsOfEvent, listName } from "./donors.js";

const columns = ["Id", "FKdonorId", "ReservationDate", "Description", "AmountPaid",
    "DonationPaymentsAmount", "Activities.TotalExpected"];
const lineColumns = ["Id", "FKReservationId", "FKActivityId", "Price", "Quantity", "Notes"];
const deleted = { Display: "(deleted donor)", LastName: "", FirstName: "" };

/** All reservations of the event, each { Id, donorId, donor, sortName, date, ..., lines }. */
export async function readReservations(eventId) {
    const held = await manage().GetEventReservations(eventId);
    // Asking for the sum first has the lines of all reservations read at once.
    const [, found, lines, activities] = await all([
        ask.read(held, ["TotalExpected"]),
        ask.list(held, columns, { count: 1000000 }),
        ask.list(manage().GetEventReservationActivities(undefined, eventId), lineColumns, {
            count: 1000000,
        }),
        ask.list(manage().GetEventActivities(eventId), ["Id", "Name", "Sponsorship"]),
    ]);
    release(held);
    const donors = await donorsOfEvent("events_event_reservations", eventId);
    const names = new Map(activities.rows.map(({ Id, Name }) => [Id, Name]));
    const byReservation = grouped(lines.rows);
    return found.rows.map((row) => {
        const donor = donors.get(row.FKdonorId) ?? deleted;
        return {
            Id: row.Id,
            donorId: row.FKdonorId,
            donor: donor.Display,
            sortName: listName(donor),
            date: row.ReservationDate,
            description: row.Description,
            lines: (byReservation.get(row.Id) ?? []).map((line) => ({
                ...line,
                activity: names.get(line.FKActivityId) ?? "(deleted activity)",
            })),
            ...standingOf(row),
        };
    });
}

/** How a reservation with the host's figures stands. */
export function standingOf(row) {
    return standing({
        expected: row["Activities.TotalExpected"],
        direct: row.AmountPaid,
        gifts: row.DonationPaymentsAmount,
    });
}

/** "2 × Dinner, 1 × Table". */
export function linesText(lines, format) {
    return lines
        .map(({ Quantity, activity }) => `${format.whole(Quantity)} × ${activity}`)
        .join(", ");
}

/** What was answered to the reservation fields of `lines`: by line id, { name, value } each. */
export async function readAnswers(lines) {
    const answers = await all(
        lines.map(({ Id }) =>
            ask.list(manage().GetEventReservationActivity(Id).ReservationFieldValues, [
                "Name",
                "Value",
                "FieldType",
            ]),
        ),
    );
    return new Map(lines.map(({ Id }, index) => [Id, answers[index].rows]));
}

/** What was paid for a reservation by gifts, the latest first. */
export async function readPayments(reservationId) {
    const held = await manage().GetEventReservation(reservationId);
    if (!held) return [];
    const payments = ["PaymentId", "DonationAmount", "ActualDate", "ExpectedAmount",
        "ExpectedDate", "Pledge", "Note"];
    const { rows } = await list(held.Payments, payments);
    release(held);
    return rows;
}

function grouped(lines) {
    const groups = new Map();
    for (const line of lines) {
        const key = line.FKReservationId;
        if (groups.has(key)) groups.get(key).push(line);
        else groups.set(key, [line]);
    }
    return groups;
}
