// The host's saved lists of donors, as a source of people.

import { App, list, read, release, write } from "../../lib/app.js";

const rangeSize = 5000;
const keyCount = 3; // of record, donor and event, which stand before the columns of a row
const smartLists = () => App.Modules.Quillmere.Smartlists;

/** The saved lists of donors, { Id, Name }. */
export async function donorLists() {
    const { rows } = await list(smartLists().Lists, ["Id", "Name", "ListType"]);
    return rows.filter(({ ListType }) => ListType === "donors");
}

/**
 * Who stands on a list, as donors for the matching; or, as a text, why it cannot be used: without
 * one of its filters it would hold others than were meant.
 */
export async function donorsOfList(id) {
    const saved = await smartLists().GetList(id);
    if (!saved) return "The list no longer exists. It may have been deleted by another user.";
    await write(saved, { Columns: ["donorname"] });
    const result = await smartLists().Run(saved);
    try {
        const [{ Count, IsWidened }, { rows: faults }] = await Promise.all([
            read(result, ["Count", "IsWidened"]),
            list(result.Faults, ["Text"]),
        ]);
        if (faults.length > 0) return `The list cannot be used. ${faults[0].Text}`;
        if (IsWidened) return `The list cannot be used. ${await result.Warnings.Item(1)}`;
        const donors = [];
        while (donors.length < Count) {
            const rows = await result.Rows(donors.length, rangeSize);
            if (rows.length === 0) break;
            donors.push(...rows.map((row) => donorOf(row[0], row[keyCount])));
        }
        return donors;
    } finally {
        release(saved, result);
    }
}

function donorOf(Id, Display) {
    return { Id, Display: Display ?? "", FirstName: "", LastName: "", Email: "", City: "" };
}
