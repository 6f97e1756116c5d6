// One report: what it is asked, then its chart and its lines; printed and exported as shown.

import { fileName, saveCsv } from "../lib/csv.js";
import { announce } from "../lib/notice.js";
import { startPage } from "../lib/page.js";
import { DateTime } from "../lib/values.js";
import { showMissing } from "../events/missing_event.js";
import { addressOf, askedBy } from "./report_address.js";
import { showChart } from "./report_chart.js";
import { reportFilters } from "./report_filters.js";
import { tableForFile } from "./report_groups.js";
import {
    openReport,
    readFilters,
    readFrame,
    readHead,
    readLines,
    runReport,
} from "./report_run.js";
import { reportTable } from "./report_table.js";

const byId = (id) => document.getElementById(id);

startPage("Reports", async ({ session, format }) => {
    const asked = askedBy(location.search);
    const run = await openReport(asked).catch(showRefusal);
    if (!run) return;
    const head = await readHead(run);
    byId("title").textContent = head.Title;
    byId("description").textContent = head.Description;
    document.title = `${head.Title} - Quillmere`;

    const filters = await readFilters(run, asked.values);
    const form = reportFilters(byId("filters"), {
        format,
        onAsk: (values) => location.assign(addressOf({ ...asked, values })),
        onChoice: (texts) => readFilters(run, texts),
    });
    byId("defaults").addEventListener("click", () => {
        location.assign(addressOf({ ...asked, values: undefined }));
    });
    // Nobody is told what is still to be entered before being asked for it.
    form.show(filters, ({ Problem, Value }) => Problem && (asked.values || Value));
    byId("filters").open = true;
    // A report of one record, or one without questions, says at once what it has to say.
    const isAsked = Boolean(asked.values) || asked.id > 0 || filters.length === 0;
    if (!isAsked || filters.some(({ Problem }) => Problem)) return;

    const problem = await runReport(run);
    byId("problem").textContent = problem;
    if (problem) return;
    byId("filters").open = false;
    await showReport(run, head, { session, format });
});

/** What the host will not open: the layout is at fault, or the user may not see it. */
function showRefusal(error) {
    if (error.name !== "HostError") throw error;
    showMissing(error.message, {
        title: "This report cannot be shown",
        back: { href: "/host/reports", text: "Back to the reports" },
    });
}

async function showReport(run, { Title, Orientation }, context) {
    const { session, format } = context;
    const orientation = String(Orientation).toLowerCase();
    const { columns, notes, made, chart } = await readFrame(run);
    const when = format.dateTime(new DateTime(made.text.replace(/\d\d$/, "00")), format.longDate);
    showNotes([...notes, `Made on ${when} by ${session.user.name}`]);
    setPaper(orientation, Title);
    document.querySelector("main").classList.add(orientation);
    if (chart) showChart(byId("chart"), chart, { format, orientation });

    const table = reportTable(byId("lines"), columns, { title: Title, format });
    byId("lines").hidden = false;
    const lines = await readLines(run, (count, total, found) => {
        table.add(found);
        byId("progress").textContent =
            count < total ? `${format.whole(count)} of ${format.whole(total)} lines` : "";
    });
    const rows = lines.filter(({ Kind }) => Kind === "row").length;
    byId("lines").hidden = lines.length === 0;
    byId("empty").hidden = lines.length > 0;
    byId("actions").hidden = lines.length === 0;
    byId("progress").textContent = rows === 1 ? "1 line" : `${format.whole(rows)} lines`;

    byId("paging").hidden = table.groups() < 2;
    byId("paging").addEventListener("change", ({ target }) => {
        byId("lines").classList.toggle("paged", target.checked);
    });
    byId("print").addEventListener("click", () => print());
    byId("export").addEventListener("click", () => {
        const file = tableForFile(columns, lines);
        saveCsv(fileName(Title), file.columns, file.rows);
        announce(`${format.whole(file.rows.length)} lines exported`);
    });
}

function showNotes(notes) {
    byId("notes").replaceChildren(
        ...notes.map((text) => {
            const note = document.createElement("p");
            note.textContent = text;
            return note;
        }),
    );
}

/** Lays the paper as the report wants it, with its title at the foot of every page. */
function setPaper(orientation, title) {
    const paper = new CSSStyleSheet();
    const size = orientation === "landscape" ? "landscape" : "portrait";
    const quoted = CSS.escape(title).replaceAll("\\ ", " ");
    paper.replaceSync(
        `@page { size: ${size}; @bottom-left { content: "${quoted}"; font: 9pt sans-serif; } }`,
    );
    document.adoptedStyleSheets = [...document.adoptedStyleSheets, paper];
}
