// Reservation lines as the add-in holds them: read into plain lines, and written back.

import { all, ask, list, write } from "../lib/app.js";
import { manage } from "./addin.js";
import { sameLine } from "./line_rules.js";

const columns = ["Id", "FKActivityId", "Price", "Quantity", "Notes"];
const answerColumns = ["FieldType", "Name", "Value"];

/** The lines of the held `reservation` as { id, activityId, price, quantity, notes, answers }. */
export async function readLines(reservation) {
    const { rows } = await list(reservation.Activities, columns);
    const answers = await all(
        rows.map((_, index) =>
            ask.list(reservation.Activities.Item(index + 1).ReservationFieldValues, answerColumns),
        ),
    );
    return rows.map((row, index) => lineOf(row, answers[index].rows));
}

/** One held line, read. */
export async function readLine(held) {
    const [values, answers] = await all([
        ask.read(held, columns),
        ask.list(held.ReservationFieldValues, answerColumns),
    ]);
    return lineOf(values, answers.rows);
}

function lineOf({ Id, FKActivityId, Price, Quantity, Notes }, answers) {
    return {
        id: Id,
        activityId: FKActivityId,
        price: Price,
        quantity: Quantity,
        notes: Notes,
        answers: answers.map(({ FieldType, Name, Value }) => ({
            type: FieldType,
            name: Name,
            value: Value,
        })),
    };
}

/**
 * Writes `line` into a held one. Assigning price and quantity alone leaves a line clean, and a clean
 * line is not saved: its notes are assigned last, whether they changed or not.
 */
export async function writeLine(held, line) {
    await write(held, {
        FKActivityId: line.activityId,
        ActivityName: line.activityName ?? "",
        Price: line.price,
        Quantity: line.quantity,
    });
    await writeAnswers(held, line.answers);
    await write(held, { Notes: line.notes ?? "" });
}

async function writeAnswers(held, answers) {
    const { rows } = await list(held.ReservationFieldValues, ["Name"]);
    const names = answers.map(({ name }) => name);
    const place = (name) => rows.findIndex(({ Name }) => Name === name);
    const missing = answers.filter(({ name }) => place(name) < 0);
    const made = await all(
        missing.map(() => ask.call(manage().GetNewEventReservationActivityField())),
    );
    const changes = [
        ...answers
            .filter(({ name }) => place(name) >= 0)
            .map(({ name, value }) =>
                ask.write(held.ReservationFieldValues.Item(place(name) + 1), { Value: value }),
            ),
        ...missing.flatMap(({ name, type, value }, index) => [
            ask.write(made[index], { FieldType: type, Name: name, Value: value }),
            ask.call(held.ReservationFieldValues.Add(made[index])),
        ]),
    ];
    // The last go first, so that the places of the others stay what they are.
    const gone = rows.map(({ Name }, at) => [Name, at + 1]).filter(([name]) => !names.includes(name));
    for (const [, at] of gone.reverse()) {
        changes.push(ask.call(held.ReservationFieldValues.Remove(at)));
    }
    if (changes.length > 0) await all(changes);
}

/**
 * Brings the lines of the held `reservation` to what `lines` say: others go, changed ones are
 * written, new ones (without an id, or with one that is gone by now) are added. Gives the held line
 * of each.
 */
export async function putLines(reservation, lines) {
    const stored = await readLines(reservation);
    const wanted = new Set(lines.map(({ id }) => id));
    for (const { id } of stored.filter((line) => !wanted.has(line.id))) {
        await reservation.Activities.RemoveByKey(id, true);
    }
    const held = [];
    for (const line of lines) {
        const before = line.id ? stored.find(({ id }) => id === line.id) : undefined;
        held.push(await putLine(reservation, line, before));
    }
    return held;
}

async function putLine(reservation, line, before) {
    if (before) {
        const held = await reservation.Activities.ItemByKey(before.id);
        if (!sameLine(before, line)) await writeLine(held, line);
        return held;
    }
    const made = await manage().GetNewEventReservationActivity();
    await writeLine(made, line);
    await reservation.Activities.Add(made, 0);
    return made;
}
