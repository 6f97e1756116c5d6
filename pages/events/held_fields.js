// Reads and moves the reservation fields of an activity that the host holds.

import { all, ask, list, release } from "../lib/app.js";
import { moved } from "./reservation_fields.js";

const columns = ["Name", "FieldType", "Description", "DefaultValue"];

/** The fields of the held `activity` in their order, each { name, type, ..., choices }. */
export async function readFields(activity) {
    const { rows } = await list(activity.ReservationFields, columns);
    const choices = await all(
        rows.map((_, index) =>
            ask.list(activity.ReservationFields.Item(index + 1).ListItems, ["Name", "Visible"]),
        ),
    );
    return rows.map(({ Name, FieldType, Description, DefaultValue }, index) => ({
        name: Name,
        type: FieldType,
        description: Description,
        defaultValue: DefaultValue,
        choices: choices[index].rows.map((item) => ({ name: item.Name, visible: item.Visible })),
    }));
}

/** Moves the field at the place `from` of the held `activity` to the place `to`, from 0. */
export async function moveField(activity, from, to) {
    const { rows } = await list(activity.ReservationFields, ["Name"]);
    const fields = await all(
        rows.map((_, index) => ask.call(activity.ReservationFields.Item(index + 1))),
    );
    const order = moved(fields, from, to);
    await all([
        ...fields.map(() => ask.call(activity.ReservationFields.Remove(1))),
        ...order.map((field) => ask.call(activity.ReservationFields.Add(field))),
    ]);
    release(...fields);
}
