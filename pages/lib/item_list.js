// Lists whose items stand in an order, can be hidden from choosing, changed and deleted: funds,
// categories and their like, each on a tab of its own.

import { build } from "./build.js";
import { bindKey } from "./keys.js";
import { reportFailure } from "./notice.js";
import { sayOff } from "./press.js";
import { tabRow } from "./tabs.js";

/**
 * Shows each of `lists`, { key, title }, on a tab; the address keeps which. `setUp(panel, one)`
 * fills a tab's panel and gives a function that shows its list anew.
 */
export async function itemTabs(lists, setUp) {
    const tabs = lists.map((one) => {
        const panel = document.createElement("div");
        document.getElementById("panels").append(panel);
        return { key: one.key, title: one.title, panel, update: setUp(panel, one) };
    });
    let shown;
    const choose = tabRow(document.getElementById("tabs"), tabs, (tab) => {
        shown = tab;
        history.replaceState(null, "", `?list=${tab.key}`);
        return tab.update();
    });
    if (tabs[0].panel.querySelector("[data-add]")) {
        bindKey("n", "Add to the list shown", () =>
            shown.panel.querySelector("[data-add]").click(),
        );
    }
    document.addEventListener("hostrefresh", () => shown?.update().catch(reportFailure));
    await choose(new URLSearchParams(location.search).get("list"));
}

/**
 * Sets up a list in `panel`:
 * - `thing` and `title`: what an item and the list are called;
 * - `read()`: its items, each { id, name, description, visible };
 * - `add()`: adds an item; without it none can be added;
 * - `offers(item, place, count)`: the buttons of an item, each { label, run, isOff }.
 *
 * Gives a function that reads and shows it anew.
 */
export function itemPanel(panel, { thing, title, read, add, offers, format }) {
    const count = build("p", { className: "count", role: "status" });
    const body = build("tbody");
    const table = build("table", { className: "cards", hidden: true },
        build("caption", { className: "visually-hidden", text: title }), tableHead(), body);
    const empty = build("p", {
        className: "empty", hidden: true, text: `No ${title.toLowerCase()} yet.`,
    });
    const addButton = build("button", {
        type: "button", className: "primary", text: `Add ${thing}`, data: { add: "" },
    });
    addButton.addEventListener("click", () => run(add, () => addButton.focus()));
    const actions = build("div", { className: "actions" }, add ? addButton : undefined);
    panel.append(build("div", { className: "list-head" }, count, actions), table, empty);
    let isRunning = false;

    async function update() {
        const items = await read();
        body.replaceChildren(...items.map((item, place) => rowOf(item, place, items.length)));
        table.hidden = items.length === 0;
        empty.hidden = items.length > 0;
        const hidden = items.filter(({ visible }) => !visible).length;
        count.textContent =
            `${format.whole(items.length)} in all` + (hidden > 0 ? `, ${hidden} not offered` : "");
    }

    /** Runs one change at a time, shows what is stored then, and puts the focus where it was. */
    async function run(change, focus) {
        if (isRunning) return;
        isRunning = true;
        sayOff(addButton, true);
        body.inert = true; // its places are about to change
        try {
            await change();
        } catch (error) {
            reportFailure(error);
        } finally {
            await update().catch(reportFailure);
            isRunning = false;
            sayOff(addButton, false);
            body.inert = false;
        }
        focus();
    }

    function rowOf(item, place, of) {
        const buttons = offers(item, place, of).map(({ label, isOff, run: change }, index) =>
            build("button", {
                type: "button",
                className: "quiet",
                text: label,
                disabled: Boolean(isOff),
                "aria-label": `${label} ${item.name}`,
                on: { click: () => run(change, () => focusOn(item.id, place, index)) },
            }),
        );
        const { name, description, visible } = item;
        return build("tr", { data: { id: item.id } },
            build("th", { scope: "row", text: name }),
            build("td", { data: { label: "Description" } },
                build("span", { className: "lines", text: description })),
            build("td", { data: { label: "State" } },
                build("span", {
                    className: visible ? "" : "settled",
                    text: visible ? "Offered" : "Not offered",
                })),
            build("td", { className: "row-actions" }, ...buttons));
    }

    function focusOn(id, place, index) {
        const row =
            body.querySelector(`tr[data-id="${id}"]`) ?? body.rows[place] ?? [...body.rows].at(-1);
        const buttons = [...(row?.querySelectorAll("button") ?? [])];
        const wanted = buttons[index];
        const button = wanted?.disabled ? buttons.find(({ disabled }) => !disabled) : wanted;
        (button ?? addButton).focus();
    }

    return update;
}

function tableHead() {
    const titles = ["Name", "Description", "State"].map((text) =>
        build("th", { scope: "col", text }),
    );
    const actions = build("th", { scope: "col" },
        build("span", { className: "visually-hidden", text: "Actions" }));
    return build("thead", {}, build("tr", {}, ...titles, actions));
}
