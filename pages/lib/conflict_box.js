// Lets the user choose between their own values and those that someone else has saved meanwhile.

import { confirmBox } from "./message_box.js";

/**
 * Shows `conflicts` (see conflicts.js) of the fields in `form`, with `saved`, who and when. Gives
 * the chosen value by field name, or undefined when the user goes on editing.
 */
export async function chooseBetween(conflicts, form, saved) {
    const content = document.createElement("div");
    content.className = "conflicts";
    const intro = document.createElement("p");
    intro.textContent = `${saved} What differs is listed here: choose what to keep.`;
    content.append(intro, ...conflicts.map((conflict) => fieldChoice(conflict, form)));

    const answer = await confirmBox({
        title: "Changed by someone else",
        content,
        buttons: [
            ["save", "Save with these choices"],
            ["edit", "Go on editing"],
        ],
    });
    if (answer !== "save") return undefined;
    return Object.fromEntries(
        conflicts.map((conflict) => {
            const { value } = content.querySelector(
                `input[name="conflict-${conflict.name}"]:checked`,
            );
            return [conflict.name, value];
        }),
    );
}

function fieldChoice({ name, mine, theirs, isMineChanged }, form) {
    const field = form.fields.get(name);
    const set = document.createElement("fieldset");
    const legend = document.createElement("legend");
    legend.textContent = field.label;
    set.append(legend);
    const offers = [
        { value: "theirs", label: "Take theirs", shown: theirs, chosen: !isMineChanged },
        {
            value: "mine",
            label: isMineChanged ? "Keep mine" : "Keep it as it was",
            shown: mine,
            chosen: isMineChanged,
        },
    ];
    for (const { value, label, shown, chosen } of offers) {
        const choice = document.createElement("label");
        choice.className = "option";
        const radio = document.createElement("input");
        Object.assign(radio, {
            type: "radio",
            name: `conflict-${name}`,
            value,
            defaultChecked: chosen,
        });
        const words = document.createElement("span");
        words.textContent = label;
        const text = document.createElement("span");
        text.className = "lines value";
        text.textContent = field.text(shown) || "(blank)";
        choice.append(radio, words, text);
        set.append(choice);
    }
    return set;
}
