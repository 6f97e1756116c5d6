// The reservation fields of an activity: what is asked of whoever reserves it.

import { all, ask, list, release } from "../lib/app.js";

/** The types of a field: the host's number, its name, and the kind of control that enters it. */
export const fieldTypes = [
    { id: 1, name: "Text box", kind: "text" },
    { id: 2, name: "Drop-down list", kind: "oneOf", hasChoices: true },
    { id: 3, name: "Drop-down list or typed text", kind: "textOrOneOf", hasChoices: true },
    { id: 4, name: "Date", kind: "isoDate" },
    { id: 6, name: "Check box", kind: "flag" },
].map((type) => ({ ...type, visible: true }));

/** The type with a number; a text box for one that nobody knows. */
export function fieldType(number) {
    return fieldTypes.find(({ id }) => id === number) ?? fieldTypes[0];
}

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

/** `items` with the one at `from` at the place `to`. */
export function moved(items, from, to) {
    const others = items.filter((_, index) => index !== from);
    return [...others.slice(0, to), items[from], ...others.slice(to)];
}

/** What stands in the way of `fields` as a whole, in words; nothing when all is well. */
export function faultOfFields(fields) {
    const names = fields.map(({ name }) => name.trim().toLowerCase());
    const twice = fields.find((_, index) => names.indexOf(names[index]) < index);
    if (twice) return `Two reservation fields are called “${twice.name}”.`;
    const bare = fields.find(
        ({ type, choices }) => type === 2 && !choices.some(({ visible }) => visible),
    );
    return bare ? `The reservation field “${bare.name}” has no choices yet.` : "";
}

/** A field's default as people read it. */
export function defaultText({ type, defaultValue }, format) {
    if (type === 6) return defaultValue === "1" ? "Ticked" : "Not ticked";
    const day = type === 4 ? format.parseDate(defaultValue) : undefined;
    return day ? format.date({ date: day }) : defaultValue;
}

/** "Beef, Fish, Vegetarian (hidden)". */
export function choicesText(choices) {
    return choices.map(({ name, visible }) => (visible ? name : `${name} (hidden)`)).join(", ");
}
