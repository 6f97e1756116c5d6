// Copies what belongs to an event, one kind after the other.

import { all, ask, list, release } from "../lib/app.js";
import { shifted } from "../lib/days.js";
import { manage } from "./addin.js";

const chunk = 100;
const activityColumns = [
    "Name",
    "Description",
    "ListPrice",
    "Cost",
    "QuantityAvailable",
    "QuantityType",
    "Sponsorship",
    "FKFundId",
    "FKCampaignId",
    "FKAppealId",
];

/**
 * Each kind of record: how it is named and counted, whether it comes along unless the user says
 * otherwise, which other kind it needs, and `copy(from, to, { days, onProgress })`, which gives how
 * many were copied. A kind whose copying failed can be tried again: it goes on after the last one.
 */
export function copySteps({ withGroups }) {
    return [
        {
            key: "activities",
            label: "Activities with their reservation fields",
            words: ["activity", "activities"],
            count: "Activities.Count",
            isUsual: true,
            copy: copier({
                columns: activityColumns,
                read: (from) => manage().GetEventActivities(from),
                make: (to) => manage().GetNewEventActivity(to),
                save: (activity) => manage().UpdateEventActivity(activity, true),
                prepare: copyFields,
            }),
        },
        {
            key: "tasks",
            label: "Tasks, due as long before the event as now",
            words: ["task", "tasks"],
            count: "Tasks.Count",
            isUsual: true,
            copy: copier({
                columns: ["Name", "Notes", "DueDateTime", "FKAssignedToId"],
                dates: ["DueDateTime"],
                read: (from) => manage().GetEventTasks(from),
                make: (to) => manage().GetNewEventTask(to),
                save: (task) => manage().UpdateEventTask(task, true),
            }),
        },
        {
            key: "expenses",
            label: "Expenses",
            words: ["expense", "expenses"],
            count: "Expenses.Count",
            isUsual: true,
            copy: copier({
                columns: ["Description", "ExpenseDate", "Amount"],
                dates: ["ExpenseDate"],
                read: (from) => manage().GetEventExpenses(from),
                make: (to) => manage().GetNewEventExpense(to),
                save: (expense) => manage().UpdateEventExpense(expense, true),
            }),
        },
        {
            key: "participants",
            label: "Participants, as not invited yet",
            words: ["participant", "participants"],
            count: "NumberParticipants",
            copy: participantCopier(withGroups),
        },
        {
            key: "groups",
            label: "The participants’ invitation groups",
            words: ["membership of a group", "memberships of groups"],
            count: "ParticipantInvitationGroups.Count",
            needs: "participants",
        },
    ];
}

/** Copies records one by one, so that a refusal says which one it is about. */
function copier({ columns, dates = [], read, make, save, prepare }) {
    let done = 0;
    return async (from, to, { days }) => {
        const sources = await read(from);
        const { rows } = await list(sources, columns);
        for (; done < rows.length; done += 1) {
            const values = { ...rows[done] };
            for (const name of dates) values[name] = shifted(values[name], days);
            const record = await make(to);
            const [failed] = await all([ask.write(record, values)]);
            const [fault] = Object.values(failed);
            if (fault) throw new Error(fault.description);
            await prepare?.(sources.Item(done + 1), record);
            if (!(await save(record))) throw new Error(`“${rows[done][columns[0]]}” was refused.`);
            release(record);
        }
        release(sources);
        return done;
    };
}

/** Gives the held `activity` copies of the reservation fields of `source`. */
async function copyFields(source, activity) {
    const held = await source;
    const count = await held.ReservationFields.Count;
    const made = await all(
        Array.from({ length: count }, () =>
            ask.call(manage().GetNewEventActivityReservationField()),
        ),
    );
    const masters = await all(
        made.map((_, index) => ask.call(held.ReservationFields.Item(index + 1))),
    );
    await all(
        made.flatMap((field, index) => [
            ask.call(field.CopyFrom(masters[index])),
            ask.call(activity.ReservationFields.Add(field)),
        ]),
    );
    release(held, ...made, ...masters);
}

/** Copies participants a hundred at a time, with their groups where `withGroups()`. */
function participantCopier(withGroups) {
    let done = 0;
    return async (from, to, { onProgress }) => {
        const people = manage().GetEventParticipants(from);
        const memberships = manage().GetEventParticipantInvitationGroups(from);
        const [{ rows }, { rows: groups }] = await all([
            ask.list(people, ["FKdonorId", "Notes"], { count: 50000 }),
            ask.list(memberships, ["FKdonorId", "FKInvitationGroupId", "Name"], {
                count: 50000,
            }),
        ]);
        while (done < rows.length) {
            const some = rows.slice(done, done + chunk);
            await addParticipants(some, withGroups() ? groups : [], to);
            done += some.length;
            onProgress(done, rows.length);
        }
        return done;
    };
}

async function addParticipants(rows, groups, to) {
    const [collection, ...made] = await all([
        ask.call(manage().GetNewEventParticipants()),
        ...rows.map(({ FKdonorId }) => ask.call(manage().GetNewEventParticipant(to, FKdonorId))),
    ]);
    await all(
        made.flatMap((participant, index) => [
            ask.write(participant, { Notes: rows[index].Notes }),
            ...groups
                .filter(({ FKdonorId }) => FKdonorId === rows[index].FKdonorId)
                .map(({ FKInvitationGroupId, Name }) =>
                    ask.call(participant.AddInvitationGroup(FKInvitationGroupId, Name)),
                ),
            ask.call(collection.Add(participant, 0)),
        ]),
    );
    const wasAdded = await manage().AddEventParticipants(to, collection);
    release(collection, ...made);
    if (!wasAdded) throw new Error("Some participants were refused.");
}
