// What a list shows: a box for each column there is, by groups.

import { build } from "../lib/build.js";

/**
 * Sets up the boxes in `element` for `fields` ({ Name, Caption, Group }); `onChange()` hears of every
 * change. Gives { show(names), read() }. Columns keep the order in which they are offered; the ones
 * shown that are no longer offered are kept behind.
 */
export function columnBoxes(element, { fields, onChange }) {
    const boxes = new Map();
    let others = [];
    const groups = new Map();
    for (const { Name, Caption, Group } of fields) {
        const box = build("input", { type: "checkbox", value: Name });
        boxes.set(Name.toLowerCase(), box);
        if (!groups.has(Group)) groups.set(Group, []);
        groups.get(Group).push(
            build("label", { className: "column" }, box, build("span", { text: Caption })),
        );
    }
    element.replaceChildren(...[...groups].map(([group, labels]) =>
        build("fieldset", {}, build("legend", { text: group || "Other" }), ...labels)));
    element.addEventListener("change", () => onChange());

    return {
        show(names) {
            const shown = new Set(names.map((name) => name.toLowerCase()));
            for (const [name, box] of boxes) box.checked = shown.has(name);
            others = names.filter((name) => !boxes.has(name.toLowerCase()));
        },
        read: () => [
            ...fields.map(({ Name }) => Name)
                .filter((name) => boxes.get(name.toLowerCase()).checked),
            ...others,
        ],
    };
}
