// Reads and changes the lookup lists. Every change starts from the list as it stands now, so that
// nothing that somebody else has just saved is written back as it was.

import { all, App, ask, list, read, release, write } from "../lib/app.js";
import { lists, manage } from "./addin.js";
import { moved } from "./reservation_fields.js";

const itemKey = ({ one }) => one.toLowerCase();
const idOf = ({ id = "Id" }) => id;
const nameOf = ({ name = "Name" }) => name;

/** The held collection of a list, hidden items and all. */
export function heldList(description) {
    return lists()[`Get${description.all}`](true);
}

/** The items of a list in their order, each { id, name, description, visible }. */
export async function readItems(description) {
    const columns = [idOf(description), nameOf(description), "Description", "Visible"];
    const { rows } = await list(heldList(description), columns);
    return rows.map((row) => {
        const [id, name, text, visible] = columns.map((column) => row[column]);
        return { id, name, description: text, visible };
    });
}

/** The held item with an id, or null. */
export function heldItem(description, id) {
    return lists()[`Get${description.one}`](id);
}

export function saveItem(description, item) {
    return lists()[`Update${description.one}`](item);
}

/** Stores a new item with `values` at the end of its list. */
export async function addItem(description, values) {
    const items = await readItems(description);
    const item = await lists().GetNewItem(itemKey(description));
    const [orders] = await all([
        ask.list(heldList(description), ["Order"]),
        ask.write(item, values),
    ]);
    const last = Math.max(0, ...orders.rows.map(({ Order }) => Order));
    await write(item, { Order: items.length === 0 ? 1 : last + 1 });
    await saveItem(description, item);
    release(item);
}

/** Moves the item with an id by `step` places; gives its new place, from 1, and their number. */
export async function moveItem(description, id, step) {
    const held = await heldList(description);
    const { rows } = await list(held, [idOf(description)]);
    const ids = rows.map((row) => row[idOf(description)]);
    const from = ids.indexOf(id);
    const to = from + step;
    if (from < 0 || to < 0 || to >= ids.length) return undefined;
    const order = moved(ids, from, to);
    await all(
        ids.map((one, index) =>
            ask.write(held.Item(index + 1), { Order: order.indexOf(one) + 1 }),
        ),
    );
    await lists()[`Update${description.all}`](held);
    release(held);
    return { place: to + 1, count: ids.length };
}

export async function showItem(description, id, visible) {
    const item = await heldItem(description, id);
    if (!item) return false;
    await write(item, { Visible: visible });
    await saveItem(description, item);
    release(item);
    return true;
}

export async function deleteItem(description, id) {
    const item = await heldItem(description, id);
    if (!item) return;
    await lists()[`Delete${description.one}`](item);
    release(item);
}

/** How many events have the item, or how many participants are in the group. */
export async function countUses({ usedBy }, id) {
    if (usedBy) {
        const criteria = await manage().GetNewEventsCriteria();
        await write(criteria, { [usedBy]: id });
        const { total } = await list(manage().GetEventsBySearch(criteria), ["Id"], { count: 1 });
        release(criteria);
        return total;
    }
    const group = await App.Provider.VToSQL(id, 2);
    const counted = await App.Document.GetDataSet(
        "SELECT COUNT(*) AS Uses FROM events_event_participants_groups " +
            `WHERE FKInvitationGroupId = ${group}`,
    );
    const { Value } = await read(counted.Fields.Item("Uses"), ["Value"]);
    release(counted);
    return Value;
}
