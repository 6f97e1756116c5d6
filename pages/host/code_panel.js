// One code list on its page.

import { App, list } from "../lib/app.js";
import { build } from "../lib/build.js";
import { formBox } from "../lib/form_box.js";
import { confirmBox } from "../lib/message_box.js";
import { announce, reportFailure } from "../lib/notice.js";
import { rowFrom } from "../lib/table.js";
import { deletionQuestion } from "./code_words.js";

const codes = () => App.Modules.Quillmere.Codes;
const fields = [
    { name: "name", label: "Name", kind: "text", required: true, most: 100 },
    { name: "description", label: "Description", kind: "multiline", rows: 2 },
];

/** Sets up a list in `panel`; gives a function that reads and shows it anew. */
export function codePanel(panel, description, format) {
    const { key, thing, title } = description;
    panel.append(document.getElementById("panel").content.cloneNode(true));
    const find = (selector) => panel.querySelector(selector);
    const body = find("tbody");
    const addButton = find("[data-add]");
    find("caption").textContent = title;
    find(".empty").textContent = `No ${title.toLowerCase()} yet.`;
    addButton.textContent = `Add ${thing}`;
    addButton.addEventListener("click", () => run(() => enter(), () => addButton.focus()));
    let isRunning = false;

    async function update() {
        const columns = ["Id", "Name", "Description", "Visible"];
        const { rows } = await list(codes().Items(key), columns);
        body.replaceChildren(...rows.map((item, place) => rowOf(item, place, rows.length)));
        find("table").hidden = rows.length === 0;
        find(".empty").hidden = rows.length > 0;
        const hidden = rows.filter(({ Visible }) => !Visible).length;
        find(".count").textContent =
            `${format.whole(rows.length)} in all` + (hidden > 0 ? `, ${hidden} not offered` : "");
    }

    /** Runs one change at a time and shows what is stored then. */
    async function run(change, focus) {
        if (isRunning) return;
        isRunning = true;
        try {
            await change();
        } catch (error) {
            reportFailure(error);
        } finally {
            await update().catch(reportFailure);
            isRunning = false;
        }
        focus();
    }

    function rowOf(item, place, count) {
        const row = rowFrom(document.getElementById("item-row"), {
            name: item.Name,
            description: item.Description,
            state: item.Visible ? "Offered" : "Not offered",
        });
        row.dataset.id = item.Id;
        row.querySelector('[data-cell="state"]').className = item.Visible ? "" : "settled";
        const offers = [
            ["Up", () => move(item, -1, place), place === 0],
            ["Down", () => move(item, 1, place), place === count - 1],
            [item.Visible ? "Hide" : "Offer", () => show(item)],
            ["Rename", () => enter(item)],
            ["Delete", () => remove(item)],
        ];
        row.querySelector(".row-actions").append(
            ...offers.map(([label, change, isOff], index) =>
                build("button", {
                    type: "button",
                    className: "quiet",
                    text: label,
                    disabled: Boolean(isOff),
                    "aria-label": `${label} ${item.Name}`,
                    on: { click: () => run(change, () => focusOn(item.Id, place, index)) },
                }),
            ),
        );
        return row;
    }

    function focusOn(id, place, index) {
        const row = body.querySelector(`tr[data-id="${id}"]`) ?? body.rows[place] ?? body.rows[0];
        const buttons = [...(row?.querySelectorAll("button") ?? [])];
        const wanted = buttons[index]?.disabled
            ? buttons.find(({ disabled }) => !disabled)
            : buttons[index];
        (wanted ?? addButton).focus();
    }

    async function move({ Id, Name }, step, place) {
        await codes().Move(key, Id, step);
        announce(`${Name} moved to place ${place + step + 1}`);
    }

    async function show({ Id, Name, Visible }) {
        await codes().SetVisible(key, Id, !Visible);
        announce(Visible ? `${Name} is not offered any more` : `${Name} is offered again`);
    }

    /** Asks for the words of a new item, or of the one given. */
    async function enter(item) {
        const entered = await formBox({
            title: item ? `Rename ${item.Name}` : `Add ${thing}`,
            fields,
            values: { name: item?.Name ?? "", description: item?.Description ?? "" },
            action: item ? "Save" : `Add ${thing}`,
            format,
            async save({ name, description: words }) {
                const problem = await (item
                    ? codes().Rename(key, item.Id, name, words)
                    : codes().Add(key, name, words));
                const isName = !problem.startsWith("A description");
                return problem && { problem, name: isName ? "name" : "description" };
            },
        });
        if (entered) announce(`${entered.name} saved`);
    }

    async function remove({ Id, Name }) {
        const { rows: uses } = await list(codes().Uses(key, Id), ["Table", "Count"]);
        const answer = await confirmBox({
            title: `Delete ${thing}`,
            text: deletionQuestion(description, Name, uses, format),
            buttons: [
                ["delete", "Delete"],
                ["keep", "Cancel"],
            ],
            danger: true,
        });
        if (answer !== "delete") return;
        try {
            await codes().Delete(key, Id);
        } catch (error) {
            await confirmBox({
                title: `“${Name}” was not deleted`,
                text: `Nothing has been changed. ${error.message}`,
                buttons: [["ok", "OK"]],
            });
            return;
        }
        announce(`${Name} deleted`);
    }

    return update;
}
