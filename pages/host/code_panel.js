// One code list on its page.

import { App, list } from "../lib/app.js";
import { formBox } from "../lib/form_box.js";
import { itemPanel } from "../lib/item_list.js";
import { confirmBox } from "../lib/message_box.js";
import { announce } from "../lib/notice.js";
import { deletionQuestion } from "./code_words.js";

const codes = () => App.Modules.Quillmere.Codes;
const fields = [
    { name: "name", label: "Name", kind: "text", required: true, most: 100 },
    { name: "description", label: "Description", kind: "multiline", rows: 2 },
];

/** Sets up a list in `panel`; gives a function that reads and shows it anew. */
export function codePanel(panel, description, format) {
    const { key, thing, title } = description;

    async function read() {
        const { rows } = await list(codes().Items(key), ["Id", "Name", "Description", "Visible"]);
        return rows.map(({ Id, Name, Description, Visible }) => ({
            id: Id, name: Name, description: Description, visible: Visible,
        }));
    }

    const offers = (item, place, count) => [
        { label: "Up", isOff: place === 0, run: () => move(item, -1, place) },
        { label: "Down", isOff: place === count - 1, run: () => move(item, 1, place) },
        { label: item.visible ? "Hide" : "Offer", run: () => show(item) },
        { label: "Rename", run: () => enter(item) },
        { label: "Delete", run: () => remove(item) },
    ];

    async function move({ id, name }, step, place) {
        await codes().Move(key, id, step);
        announce(`${name} moved to place ${place + step + 1}`);
    }

    async function show({ id, name, visible }) {
        await codes().SetVisible(key, id, !visible);
        announce(visible ? `${name} is not offered any more` : `${name} is offered again`);
    }

    /** Asks for the words of a new item, or of the one given. */
    async function enter(item) {
        const entered = await formBox({
            title: item ? `Rename ${item.name}` : `Add ${thing}`,
            fields,
            values: { name: item?.name ?? "", description: item?.description ?? "" },
            action: item ? "Save" : `Add ${thing}`,
            format,
            async save({ name, description: words }) {
                const problem = await (item
                    ? codes().Rename(key, item.id, name, words)
                    : codes().Add(key, name, words));
                const isName = !problem.startsWith("A description");
                return problem && { problem, name: isName ? "name" : "description" };
            },
        });
        if (entered) announce(`${entered.name} saved`);
    }

    async function remove({ id, name }) {
        const { rows: uses } = await list(codes().Uses(key, id), ["Table", "Count"]);
        const answer = await confirmBox({
            title: `Delete ${thing}`,
            text: deletionQuestion(description, name, uses, format),
            buttons: [
                ["delete", "Delete"],
                ["keep", "Cancel"],
            ],
            danger: true,
        });
        if (answer !== "delete") return;
        try {
            await codes().Delete(key, id);
        } catch (error) {
            await confirmBox({
                title: `“${name}” was not deleted`,
                text: `Nothing has been changed. ${error.message}`,
                buttons: [["ok", "OK"]],
            });
            return;
        }
        announce(`${name} deleted`);
    }

    return itemPanel(panel, { thing, title, read, add: () => enter(), offers, format });
}
