// What an event's activities offer to a reservation: prices, what is left, what they ask.

import { all, ask, release } from "../lib/app.js";
import { manage } from "./addin.js";
import { readFields } from "./held_fields.js";

const columns = ["Id", "Name", "ListPrice", "QuantityAvailable", "QuantityType", "Sponsorship",
    "ReservationFields.Count"];
const limited = 0;

/**
 * The activities of the event by id. `remaining` is what all reservations but `reservationId` leave
 * of one, undefined where units are only counted.
 */
export async function readOffer(eventId, reservationId) {
    const held = await manage().GetEventActivities(eventId);
    const [{ rows }] = await all([ask.list(held, columns)]);
    const taken = await all(
        rows.map(({ Id }) =>
            ask.call(held.ItemByKey(Id).QuantityInUse(undefined, reservationId || undefined)),
        ),
    );
    const asking = rows.filter((row) => row["ReservationFields.Count"] > 0);
    const fields = new Map(
        await Promise.all(
            asking.map(async ({ Id }) => [Id, await readFields(held.ItemByKey(Id))]),
        ),
    );
    release(held);
    return new Map(
        rows.map((row, index) => [
            row.Id,
            {
                id: row.Id,
                name: row.Name,
                price: row.ListPrice,
                isSponsorship: row.Sponsorship,
                remaining:
                    row.QuantityType === limited
                        ? Math.max(0, row.QuantityAvailable - taken[index])
                        : undefined,
                fields: fields.get(row.Id) ?? [],
            },
        ]),
    );
}
