// One list: what it is filtered by, what it shows, its records. The address names a saved list
// (`id`) or what a new one holds (`type`).

import { all, App, ask, list, read, release } from "../lib/app.js";
import { coalesced } from "../lib/coalesced.js";
import { confirmBox } from "../lib/message_box.js";
import { announce, notice, reportFailure } from "../lib/notice.js";
import { startPage } from "../lib/page.js";
import { onPress } from "../lib/press.js";
import { collectRefusals } from "../lib/refusals.js";
import { guardUnsaved } from "../lib/unsaved.js";
import { columnBoxes } from "./list_columns.js";
import { filterRows } from "./list_filters.js";
import { listReportsMenu } from "./list_reports.js";
import { listRows, readResult, textsOf } from "./list_rows.js";

const mostPrinted = 5000;
const permissionDenied = 70;
const byId = (id) => document.getElementById(id);
const smartLists = () => App.Modules.Quillmere.Smartlists;
const nouns = {
    donors: ["donor", "donors"],
    donations: ["gift", "gifts"],
    pledges: ["pledge", "pledges"],
};
const properties = ["Id", "Name", "ListType", "MatchAny", "Columns", "Sort", "Descending", "Owner",
    "ChangedBy", "ChangedDate"];

startPage("Lists", async ({ format, allowed }) => {
    const mayEdit = allowed("events/edit");
    let held; // the list as the host holds it
    let state;
    let saved = "";
    let parts;
    let shown = { count: 0, asked: "" };
    const rows = listRows(byId("rows"), byId("more"), { format, onSort: sortBy });
    const current = () => ({
        name: byId("name").value,
        matchAny: byId("match").value === "any",
        columns: parts.columns.read(),
        filters: parts.filters.read(),
        sort: state.sort,
        descending: state.descending,
    });
    const asked = ({ matchAny, filters }) => JSON.stringify([matchAny, filters]);
    const isChanged = () => Boolean(parts) && mayEdit && JSON.stringify(current()) !== saved;
    guardUnsaved(isChanged);

    /** Takes `opened`, a list that the host holds, for the one of the page. */
    async function open(opened) {
        const values = await read(opened, properties);
        const { rows: filters } = await list(opened.Filters, ["Key", "Caption", "Operator",
            "Values"]);
        const schema = await smartLists().GetSchema(values.ListType);
        const [{ rows: fields }, { rows: criteria }, warnings] = await Promise.all([
            list(schema.Fields, ["Name", "Caption", "Group"]),
            list(schema.Criteria, ["Key", "Caption", "Kind", "Group"]),
            textsOf(schema.Warnings),
        ]);
        if (held) release(held, parts.schema);
        held = opened;
        state = { type: values.ListType, sort: values.Sort, descending: values.Descending };
        const onChange = () => showState();
        parts = {
            schema,
            warnings,
            filters: filterRows(byId("filters"), {
                criteria, choicesOf: choicesOf(schema), format, onChange,
            }),
            columns: columnBoxes(byId("columns"), {
                fields,
                onChange: () => {
                    showState();
                    show().catch(reportFailure);
                },
            }),
        };
        byId("name").value = values.Name;
        byId("match").value = values.MatchAny ? "any" : "all";
        parts.filters.show(filters);
        parts.columns.show(values.Columns);
        saved = JSON.stringify(current());
        showHead(values);
    }

    function showHead({ Id, Name, Owner, ChangedBy, ChangedDate }) {
        const [one, several] = nouns[state.type];
        byId("title").textContent = Id ? Name : `New list of ${several}`;
        document.title = `${Id ? Name : "New list"} - Quillmere`;
        const changed = Id ? `changed by ${ChangedBy} on ${format.dateTime(ChangedDate)}` : "";
        byId("made").textContent = Id
            ? [`${one[0].toUpperCase()}${one.slice(1)} list of ${Owner}`, changed].join(", ")
            : "";
        byId("types").hidden = Boolean(Id);
        byId("types").querySelector(`[value="${state.type}"]`).checked = true;
        byId("copy").hidden = !mayEdit || !Id;
        byId("save").hidden = !mayEdit;
        showState();
        if (Id) offerReports(Id).catch(reportFailure);
    }

    async function offerReports(id) {
        const menu = await listReportsMenu(id, state.type, allowed);
        byId("reports").replaceChildren(...(menu ? [menu] : []));
        byId("reports").hidden = !menu;
    }

    /** What depends on what is entered: whether the records shown are still those asked for. */
    function showState() {
        const now = current();
        const isStale = asked(now) !== shown.asked;
        byId("match-line").hidden = now.filters.length < 2;
        byId("column-count").textContent = `(${now.columns.length})`;
        const [one, several] = nouns[state.type];
        const count = `${format.whole(shown.count)} ${shown.count === 1 ? one : several}`;
        byId("count").textContent = isStale
            ? `${count}, before the filters changed`
            : count;
        const mayDelete = state.type === "donors" && allowed("events/delete");
        const isExact = !isStale && !shown.isWidened && shown.count > 0;
        byId("delete-donors").hidden = !mayDelete || !isExact;
        byId("delete-donors").textContent =
            shown.count === 1 ? "Delete this donor" : `Delete these ${count}`;
    }

    /** Hands what is entered to the host's list. */
    function apply(target, now) {
        const { name, matchAny, columns, filters } = now;
        return all([
            ask.write(target, {
                Name: name,
                MatchAny: matchAny,
                Columns: columns,
                Sort: state.sort,
                Descending: state.descending,
            }),
            ask.call(target.ClearFilters()),
            ...filters.map(({ Key, Operator, Values }) =>
                ask.call(target.AddFilter(Key, Operator, Values)),
            ),
        ]);
    }

    // Readings follow each other, as the host's list that they fill in is shared.
    let typeWanted;
    const show = coalesced(async () => {
        if (typeWanted) await beginAnew();
        await readRows();
    });

    /** Reads the list as it is entered and shows its records. */
    async function readRows() {
        const now = current();
        byId("show").disabled = true;
        try {
            await apply(held, now);
            const result = await smartLists().Run(held);
            const { columns, faults, warnings } = await readResult(result);
            parts.filters.fail(faults);
            showWarnings([...parts.warnings, ...warnings]);
            if (faults.length > 0) return release(result);
            const { Count, IsWidened } = await read(result, ["Count", "IsWidened"]);
            shown = { count: Count, asked: asked(now), isWidened: IsWidened };
            byId("scroller").hidden = Count === 0;
            byId("empty").hidden = Count > 0;
            byId("empty").textContent = "Nothing matches these filters.";
            showState();
            await rows.show(result, Count, columns, { key: state.sort, descending: state.descending });
        } finally {
            byId("show").disabled = false;
        }
    }

    function showWarnings(texts) {
        const items = [...new Set(texts)].map((text) => {
            const item = document.createElement("li");
            item.textContent = text;
            return item;
        });
        byId("warnings").replaceChildren(...items);
        byId("warnings").hidden = items.length === 0;
    }

    function sortBy(name) {
        const again = state.sort.toLowerCase() === name.toLowerCase();
        state.descending = again ? !state.descending : false;
        state.sort = name;
        show().catch(reportFailure);
    }

    /** Saves `target`; what the host refuses stands at the name, other users' changes ask. */
    async function save(target) {
        byId("name-fault").textContent = "";
        byId("name").removeAttribute("aria-invalid");
        await apply(target, current());
        const changed = await smartLists().ChangedMeanwhile(target);
        if (changed && !(await confirmOverwriting(changed))) return false;
        const { result, refusals } = await collectRefusals(() =>
            smartLists().Save(target, Boolean(changed)),
        );
        if (!result) {
            byId("name-fault").textContent = refusals.join("\n");
            byId("name").setAttribute("aria-invalid", "true");
            byId("name").focus();
            return false;
        }
        const values = await read(target, properties);
        byId("name").value = values.Name;
        saved = JSON.stringify(current());
        history.replaceState(null, "", `/host/list?id=${values.Id}`);
        showHead(values);
        notice("List saved.");
        return true;
    }

    /** Saves what is entered as a list of its own. */
    async function saveCopy() {
        const copy = await smartLists().GetNewList(state.type);
        if (!(await save(copy))) return release(copy);
        release(held);
        held = copy;
    }

    const confirmOverwriting = async (changed) =>
        (await confirmBox({
            title: "Save over it?",
            text: `${changed}\nWhat you entered is still here.`,
            buttons: [
                ["save", "Save mine"],
                ["keep", "Keep editing"],
            ],
        })) === "save";

    async function deleteDonors() {
        const deleted = await rows.result().DeleteDonors();
        if (!deleted) return;
        notice("Donors deleted.");
        await show();
    }

    async function exportAll() {
        const name = byId("name").value.trim() || byId("title").textContent;
        const count = await rows.exportAll(name, shown.count);
        announce(`${format.whole(count)} ${nouns[state.type][1]} exported`);
    }

    /** Prints the records, not only those that were looked at. */
    async function printAll() {
        await rows.reach(mostPrinted);
        if (shown.count > mostPrinted) {
            notice(`The first ${format.whole(mostPrinted)} are printed. Export takes all of them.`);
        }
        print();
    }

    /** What was put together for another kind of list is given up only on purpose. */
    async function changeType(type) {
        const hasFilters = parts.filters.read().length > 0;
        if (hasFilters && !(await confirmDiscarding())) return;
        typeWanted = type;
        await show();
    }

    /** Opens a new list of the kind wanted, under the name entered. */
    async function beginAnew() {
        const type = typeWanted;
        typeWanted = undefined;
        const { value } = byId("name");
        await open(await smartLists().GetNewList(type));
        byId("name").value = value;
    }

    const confirmDiscarding = async () =>
        (await confirmBox({
            title: "Begin anew?",
            text: "The filters that you entered are for another kind of list.",
            buttons: [
                ["new", "Begin anew"],
                ["keep", "Keep them"],
            ],
        })) === "new";

    byId("definition").addEventListener("submit", (submission) => {
        submission.preventDefault();
        show().catch(reportFailure);
    });
    byId("match").addEventListener("change", () => showState());
    byId("add-filter").addEventListener("click", () => parts.filters.add());
    byId("name").addEventListener("input", () => {
        byId("name-fault").textContent = "";
        byId("name").removeAttribute("aria-invalid");
    });
    byId("types").addEventListener("change", async ({ target }) => {
        await changeType(target.value).catch(reportFailure);
        byId("types").querySelector(`[value="${state.type}"]`).checked = true;
    });
    onPress(byId("save"), () => save(held));
    onPress(byId("copy"), saveCopy);
    onPress(byId("export"), exportAll);
    onPress(byId("delete-donors"), deleteDonors);
    onPress(byId("print"), printAll);

    const address = new URLSearchParams(location.search);
    let opened;
    try {
        opened = address.has("id")
            ? await smartLists().GetList(Number(address.get("id")) || 0)
            : await smartLists().GetNewList(address.get("type") ?? "donors");
    } catch (error) {
        if (error.number !== permissionDenied) throw error;
        return showNothing("List not shown", "You may not see gifts.");
    }
    if (!opened) {
        return showNothing("List not found",
            "This list no longer exists. It may have been deleted by another user.");
    }
    await open(opened);
    for (const type of ["donations", "pledges"]) {
        byId("types").querySelector(`[value="${type}"]`).disabled = !allowed("donations/view");
    }
    byId("actions").hidden = false;
    byId("definition").hidden = false;
    await show();
});

function showNothing(title, why) {
    document.title = `${title} - Quillmere`;
    byId("title").textContent = title;
    byId("made").textContent = why;
}

/** The choices of a criterion, read once. */
function choicesOf(schema) {
    const known = new Map();
    return (key) => {
        if (!known.has(key)) {
            const found = list(schema.Choices(key), ["Id", "Name"]).then(({ rows }) => rows);
            known.set(key, found);
        }
        return known.get(key);
    };
}
