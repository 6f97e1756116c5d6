// Saves what a form holds into a record of the host, so that nothing typed is lost on the way and
// nothing that someone else saved meanwhile is overwritten unseen.

import { App, HostError, read, release, write } from "./app.js";
import { chooseBetween } from "./conflict_box.js";
import { changesBetween } from "./conflicts.js";
import { collectRefusals } from "./refusals.js";

const audit = ["LastUpdateDate", "LastUpdateUser"];

/**
 * An editor of the record whose fields `form` shows.
 * - `open()` gives the record as it is stored now: a held object, or null when it is gone;
 * - `save(record)` stores it and gives whether the host did;
 * - `fieldOf(message)` names the field that a refusal is about;
 * - `lock()` takes the record's lock, so that nobody saves between the last look and the saving; a
 *   record without one is new and has nobody else's changes to look for;
 * - `letGo(record)` is done with a record that was not saved; without it the host forgets it;
 * - `format` writes dates.
 *
 * `submit()` gives "saved" with the held `record`, "refused" after showing why, or "gone".
 */
export function recordEditor({ form, open, save, fieldOf, lock, format, letGo = release }) {
    let loaded = {};
    let begun;

    async function submit() {
        form.clear();
        for (;;) {
            // A new record may still hold what an earlier attempt has written, so it is given all.
            const changes = lock ? form.changes() : form.values();
            if (!changes) return { outcome: "refused" };
            const { outcome, record, conflicts, stored } = await attempt(changes);
            if (!conflicts) return { outcome, record };
            if (!(await settle(conflicts, stored))) return { outcome: "refused" };
        }
    }

    /** Saves `changes` unless someone else's changes are in the way; then gives those. */
    async function attempt(changes) {
        if (!lock) return store(await open(), changes);
        const held = await lock().catch(hostHasToldWhy);
        if (!held) return { outcome: "refused" };
        try {
            const record = await open();
            if (!record) return { outcome: "gone" };
            const stored = await read(record, [...form.names, ...audit]);
            const conflicts = changesBetween(loaded, pick(stored, form.names), changes);
            if (conflicts.length === 0) return await store(record, changes);
            letGo(record);
            return { conflicts, stored };
        } finally {
            release(held);
        }
    }

    async function store(record, changes) {
        const outcome = await put(record, changes);
        if (outcome === "saved") return { outcome, record };
        letGo(record);
        return { outcome };
    }

    async function put(record, changes) {
        const failed = await write(record, changes);
        if (Object.keys(failed).length > 0) {
            form.refuse(failed);
            return "refused";
        }
        const { result, refusals } = await collectRefusals(() => save(record));
        if (result) return "saved";
        for (const message of refusals) form.fail(message, fieldOf(message));
        return "refused";
    }

    /** Lets the user settle `conflicts`; what is stored then counts as loaded. */
    async function settle(conflicts, stored) {
        const choices = await chooseBetween(conflicts, form, await savedBy(stored));
        if (!choices) return false;
        for (const { name, theirs } of conflicts) {
            const field = form.fields.get(name);
            if (choices[name] === "mine") field.rebase(theirs);
            else field.show(theirs);
        }
        loaded = pick(stored, form.names);
        return true;
    }

    async function savedBy({ LastUpdateUser, LastUpdateDate }) {
        const name = await App.Security.Users.FromId(LastUpdateUser).Name.catch(() => "Someone");
        const when = format.dateTime(LastUpdateDate);
        return `${name} saved this record on ${when}, after you opened it.`;
    }

    return {
        /** Shows `values` as the record that is stored. */
        show(values) {
            loaded = pick(values, form.names);
            form.show(values);
        },

        /** Runs one submission at a time; a second one meanwhile is the first one's. */
        submit() {
            begun ??= submit().finally(() => {
                begun = undefined;
            });
            return begun;
        },
    };
}

/** The host itself says who holds a record. */
function hostHasToldWhy(error) {
    if (!(error instanceof HostError)) throw error;
}

function pick(values, names) {
    return Object.fromEntries(names.map((name) => [name, values[name]]));
}
