// The participants of an event: read by range, changed many at a time, added and removed.

import { all, App, ask, list, release } from "../lib/app.js";
import { HostError } from "../lib/chain.js";
import { readByRange } from "../lib/long_list.js";
import { standingOfAll } from "../lib/money_words.js";
import { collectRefusals } from "../lib/refusals.js";
import { lists, manage } from "./addin.js";
import { donorsOfEvent } from "./donors.js";
import { rowOf, statusText } from "./participant_list.js";
import { readReservations } from "./reservations.js";

const columns = ["Id", "FKdonorId", "Status", "Attended", "ParticipantName",
    "InvitationGroupsString"];
const chunkSize = 50;
const deletedMeanwhile = "no longer on the list";

/** All participants of the event as rows (see participant_list.js); `onRange` as in long_list.js. */
export async function readParticipants(eventId, { onRange } = {}) {
    const [held, donors] = await Promise.all([
        manage().GetEventParticipants(eventId),
        donorsOfEvent("events_event_participants", eventId),
    ]);
    const found = await readByRange(held, columns, { onRange });
    release(held);
    return found.map((participant) => rowOf(participant, donors.get(participant.FKdonorId)));
}

/** How each donor's reservations at the event stand together, and who has one: by donor id. */
export async function readStandings(eventId) {
    const byDonor = new Map();
    for (const one of await readReservations(eventId)) {
        const known = byDonor.get(one.donorId);
        byDonor.set(one.donorId, {
            donorId: one.donorId,
            name: one.donor,
            sortName: one.sortName,
            reservations: [...(known?.reservations ?? []), one],
        });
    }
    for (const donor of byDonor.values()) donor.stands = standingOfAll(donor.reservations);
    return byDonor;
}

/** The invitation groups, { id, name, visible }, in their order. */
export async function readGroups() {
    const { rows } = await list(lists().GetEventInvitationGroups(true), ["Id", "Name", "Visible"]);
    return rows.map(({ Id, Name, Visible }) => ({ id: Id, name: Name, visible: Visible }));
}

/** Who belongs to which group at the event: { donorId, groupId } each. */
export async function readMemberships(eventId) {
    const names = ["FKdonorId", "FKInvitationGroupId"];
    const held = await manage().GetEventParticipantInvitationGroups(eventId);
    const rows = await readByRange(held, names);
    release(held);
    return rows.map(({ FKdonorId, FKInvitationGroupId }) => ({
        donorId: FKdonorId,
        groupId: FKInvitationGroupId,
    }));
}

/**
 * Changes the participants with `ids`, each as it is stored now: `change` may hold a `status`,
 * whether they `attended`, and `joins` and `leaves`, groups { id, name }. The event is held
 * meanwhile. `onProgress(done, total)` hears of every piece; once `isCancelled()` the rest is left
 * as it is. Gives { done, skipped }: how many were changed and why the others were not, or
 * undefined when someone else holds the event, which the host has told.
 */
export function changeParticipants(eventId, ids, change, { onProgress, isCancelled } = {}) {
    const each = async (some, skip) => {
        const held = await all(some.map((id) => ask.call(manage().GetEventParticipant(id))));
        const found = held.filter((one) => one || skip(deletedMeanwhile));
        const done = await changeSome(found, change, skip);
        release(...found);
        return done;
    };
    return inPieces(eventId, ids, each, { onProgress, isCancelled });
}

/** Removes the participants with `ids`; the rest is as for changeParticipants. */
export function removeParticipants(eventId, ids, options = {}) {
    const each = async (some, skip) => {
        let done = 0;
        for (const id of some) {
            if (!(await manage().GetEventParticipant(id))) {
                skip(deletedMeanwhile);
                continue;
            }
            const { result, refusals } = await collectRefusals(() =>
                manage().DeleteEventParticipant(eventId, id, true, true),
            );
            if (result) done += 1;
            else skip(refusals[0] ?? "not removed");
        }
        return done;
    };
    return inPieces(eventId, ids, each, options);
}

/**
 * Adds donors to the event with a `status` and the `groups` { id, name }; those who are there
 * already are skipped. The rest is as for changeParticipants.
 */
export function addParticipants(eventId, donorIds, { status = 0, groups = [] }, options = {}) {
    let there;
    const each = async (some, skip) => {
        there ??= await donorsThere(eventId);
        const missing = some.filter((id) => !there.has(id) || skip("already on the list"));
        if (missing.length === 0) return 0;
        const collection = await manage().GetNewEventParticipants();
        const made = await all(
            missing.map((id) => ask.call(manage().GetNewEventParticipant(eventId, id))),
        );
        await all(
            made.flatMap((one) => [
                ask.write(one, { Status: status }),
                ...groups.map(({ id, name }) => ask.call(one.AddInvitationGroup(id, name))),
                ask.call(collection.Add(one)),
            ]),
        );
        const { result, refusals } = await collectRefusals(() =>
            manage().AddEventParticipants(eventId, collection),
        );
        const isNew = await all(made.map((one) => ask.read(one, ["IsNew"])));
        const added = isNew.filter(({ IsNew }) => !IsNew).length;
        release(collection, ...made);
        missing.forEach((id) => there.add(id));
        for (let left = added; left < missing.length && !result; left += 1) {
            skip(refusals[0] ?? "not added");
        }
        return added;
    };
    return inPieces(eventId, donorIds, each, options);
}

/** Brings the memberships of the held `participant` to `groups`. */
export async function putGroups(participant, groups) {
    const column = "FKInvitationGroupId";
    const [{ rows }] = await all([ask.list(participant.InvitationGroups, [column])]);
    const wanted = new Set(groups.map(({ id }) => id));
    const there = rows.map((row) => row[column]);
    const gone = there.flatMap((id, at) => (wanted.has(id) ? [] : [at + 1])).reverse();
    const steps = [
        ...gone.map((at) => ask.call(participant.InvitationGroups.Remove(at))),
        ...groups
            .filter(({ id }) => !there.includes(id))
            .map(({ id, name }) => ask.call(participant.AddInvitationGroup(id, name))),
    ];
    if (steps.length > 0) await all(steps);
}

/** The donors who are participants now. */
export async function donorsThere(eventId) {
    const held = await manage().GetEventParticipants(eventId);
    const rows = await readByRange(held, ["FKdonorId"], { size: 10000 });
    release(held);
    return new Set(rows.map(({ FKdonorId }) => FKdonorId));
}

/** Runs `each(some, skip)` over `keys` piece by piece while the event is held. */
async function inPieces(eventId, keys, each, { onProgress, isCancelled = () => false }) {
    const lock = await App.Document.GetLock("event", eventId).catch(hostHasToldWhy);
    if (!lock) return undefined;
    const skipped = new Map();
    const skip = (reason) => {
        skipped.set(reason, (skipped.get(reason) ?? 0) + 1);
        return false;
    };
    let done = 0;
    try {
        for (let at = 0; at < keys.length; at += chunkSize) {
            if (isCancelled()) {
                skipped.set("cancelled", keys.length - at);
                break;
            }
            done += await each(keys.slice(at, at + chunkSize), skip);
            onProgress?.(Math.min(at + chunkSize, keys.length), keys.length);
        }
    } finally {
        release(lock);
    }
    return { done, skipped };
}

/** Changes the held `participants` in two requests, however many they are; gives how many. */
async function changeSome(participants, change, skip) {
    const stored = await all(
        participants.flatMap((one) => [
            ask.read(one, ["Status", "Attended"]),
            ask.list(one.InvitationGroups, ["FKInvitationGroupId"]),
        ]),
    );
    const calls = [];
    const savings = [];
    for (const [index, participant] of participants.entries()) {
        const [values, { rows }] = [stored[2 * index], stored[2 * index + 1]];
        const groups = rows.map((row) => row.FKInvitationGroupId);
        const steps = stepsFor(participant, values, groups, change);
        if (steps.length === 0) {
            skip(alreadySo(change));
            continue;
        }
        calls.push(...steps, ask.call(manage().UpdateEventParticipant(participant)));
        savings.push(calls.length - 1);
    }
    if (calls.length === 0) return 0;
    const { result, refusals } = await collectRefusals(() => all(calls));
    const refused = savings.filter((at) => !result[at]);
    refused.forEach((_, index) => skip(refusals[index] ?? "not saved"));
    return savings.length - refused.length;
}

/** What brings a participant with `values` and `groups` (ids) to what `change` wants. */
function stepsFor(participant, values, groups, { status, attended, joins = [], leaves = [] }) {
    const changes = {};
    if (status !== undefined && values.Status !== status) changes.Status = status;
    if (attended !== undefined && values.Attended !== attended) changes.Attended = attended;
    const left = leaves.map(({ id }) => groups.indexOf(id)).filter((at) => at >= 0);
    const joined = joins.filter(({ id }) => !groups.includes(id));
    return [
        ...(Object.keys(changes).length > 0 ? [ask.write(participant, changes)] : []),
        // From the last on, so that the places of the others stay what they are.
        ...left
            .sort((one, other) => other - one)
            .map((at) => ask.call(participant.InvitationGroups.Remove(at + 1))),
        ...joined.map(({ id, name }) => ask.call(participant.AddInvitationGroup(id, name))),
    ];
}

function alreadySo({ status, attended }) {
    if (status !== undefined) return `already ${statusText(status).toLowerCase()}`;
    if (attended !== undefined) return attended ? "already here" : "not here anyway";
    return "nothing to change";
}

/** The host itself says who holds a record. */
function hostHasToldWhy(error) {
    if (!(error instanceof HostError)) throw error;
}
