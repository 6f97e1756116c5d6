// The lines of a report: flat in the order of printing, here in groups and as a file.

/** Whether a line begins a group, and with it a part of the table of its own. */
export function beginsGroup({ Kind }) {
    return Kind === "head";
}

/** Whether a line begins one of the outermost groups, which may have pages of their own. */
export function beginsOutermost({ Kind, Level }) {
    return Kind === "head" && Level === 0;
}

/**
 * Where a line of sums has its words: how many cells from the left, up to the first with a figure,
 * its caption takes. At least one.
 */
export function captionSpan({ Cells }) {
    const first = Cells.findIndex((cell) => cell !== null && cell !== undefined && cell !== "");
    if (first < 0) return Math.max(Cells.length, 1);
    return Math.max(first, 1);
}

/**
 * A report as a file for a spreadsheet: { columns, rows } for lib/csv.js. Each line carries the
 * captions of its groups in columns of their own, so that it can be sorted and added up anew;
 * subtotals and totals are left out, as a sum over the column would count them again.
 */
export function tableForFile(columns, lines) {
    const heads = lines.filter(beginsGroup);
    const depth = heads.reduce((most, { Level }) => Math.max(most, Level + 1), 0);
    const captions = Array(depth).fill("");
    const rows = [];
    for (const { Kind, Level, Caption, Cells } of lines) {
        if (Kind === "head") {
            captions.fill("", Level);
            captions[Level] = Caption;
        } else if (Kind === "row") {
            rows.push([...captions, ...Cells]);
        }
    }
    const labels = [
        ...captions.map((_, level) => (level === 0 ? "Group" : `Group ${level + 1}`)),
        ...columns.map(({ Caption }) => Caption),
    ];
    return {
        columns: labels.map((label, index) => ({ label, value: (row) => row[index] })),
        rows,
    };
}
