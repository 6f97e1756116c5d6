// One report of the host: opened, asked, run and read.

import { all, App, ask, list, read } from "../lib/app.js";
import { readByRange } from "../lib/long_list.js";
import { filterValue } from "./report_values.js";

const filterColumns = ["Key", "Caption", "Kind", "Value", "Required", "Problem"];
const columnColumns = ["Key", "Caption", "Kind", "Width", "Align"];
const lineColumns = ["Kind", "Level", "Caption", "Cells", "Link"];

/** What the host answers by key of a filter. */
const asked = (run, key) => run.Filters(key);
const rangeSize = 1000;
const withChoices = new Set(["event", "activity", "choice", "list"]);

/** The report that an address asks for, held by the host. */
export function openReport({ folder, key, id, listId }) {
    const { Reports } = App.Modules.Quillmere;
    return listId ? Reports.Open(folder, key, id, listId) : Reports.Open(folder, key, id);
}

export const readHead = (run) => read(run, ["Title", "Description", "Orientation"]);

/**
 * The filters that the user is asked for, each with its `choices`. `texts`, by key, are given to
 * the host first.
 */
export async function readFilters(run, texts = new Map()) {
    let { rows: filters } = await list(run.Filters, filterColumns);
    const given = filters.filter(({ Key }) => texts.has(Key));
    if (given.length > 0) {
        const valueOf = (filter) => filterValue(filter, texts.get(filter.Key));
        await all(given.map((one) => ask.write(asked(run, one.Key), { Value: valueOf(one) })));
        filters = (await list(run.Filters, filterColumns)).rows;
    }
    const choosing = filters.filter(({ Kind }) => withChoices.has(Kind));
    const answers = await all(
        choosing.map(({ Key }) => ask.list(asked(run, Key).Choices, ["Id", "Name"])),
    );
    const choices = new Map(
        choosing.map(({ Key }, index) => [
            Key,
            answers[index].rows.map(({ Id, Name }) => ({ id: Id, name: Name })),
        ]),
    );
    return filters.map((filter) => ({ ...filter, choices: choices.get(filter.Key) ?? [] }));
}

/** Runs the report; "" or why it did not run. */
export async function runReport(run) {
    if (await run.Run()) return "";
    return (await run.Problem) || "The report could not be made.";
}

/** What stands around the lines: { columns, notes, made, chart }. */
export async function readFrame(run) {
    const [{ rows: columns }, { Notes: notes, Made: made, Chart: chart }] = await Promise.all([
        list(run.Columns, columnColumns),
        read(run, ["Notes", "Made", "Chart"]),
    ]);
    return { columns, notes, made, chart: chart && (await readChart(chart)) };
}

/** All lines; `onRange(count, total, lines)` hears of each range as it comes. */
export async function readLines(run, onRange) {
    return readByRange(await run.Lines, lineColumns, { size: rangeSize, onRange });
}

async function readChart(chart) {
    const [{ Kind, Title, Categories }, { rows }] = await Promise.all([
        read(chart, ["Kind", "Title", "Categories"]),
        list(chart.Series, ["Name", "Values"]),
    ]);
    return {
        kind: Kind,
        title: Title,
        categories: Categories,
        series: rows.map(({ Name, Values }) => ({ name: Name, values: Values })),
    };
}
