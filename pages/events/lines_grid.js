// The lines of a reservation, edited in one grid.

import { lineEditor } from "./line_editor.js";
import { leftOf, linesTotal, whyTooMany } from "./line_rules.js";

/**
 * A grid in `element`. `onChange()` hears of every change; `onDetails(editor)` opens a line's
 * dialog. Gives what follows.
 */
export function linesGrid(element, { format, onChange, onDetails }) {
    let offer = new Map();
    let editors = [];

    const takenBy = (others) => (activityId) =>
        others
            .filter((one) => one.activityId === activityId)
            .reduce((taken, one) => taken + one.wanted, 0);
    const others = (editor) => editors.filter((one) => one !== editor);

    function update() {
        for (const editor of editors) editor.showLeft(takenBy(others(editor)));
        onChange();
    }

    function editorOf(line) {
        const editor = lineEditor(line, { offer, format, onChange: update });
        const buttons = document.createElement("div");
        buttons.className = "line-buttons";
        buttons.append(
            button("Details", () => onDetails(editor)),
            button("Remove", () => {
                const next = editors[editors.indexOf(editor) + 1] ?? editors.at(-2);
                editors = others(editor);
                editor.element.remove();
                update();
                (next ?? document.querySelector("#add-line")).focus();
            }),
        );
        editor.element.append(buttons);
        editor.element.setAttribute("role", "group");
        nameLines();
        return editor;
    }

    function nameLines() {
        queueMicrotask(() => {
            for (const [index, { element: one }] of editors.entries()) {
                one.setAttribute("aria-label", `Line ${index + 1}`);
            }
        });
    }

    return {
        /** Shows `lines` over the activities of `offered`. */
        show(lines, offered) {
            offer = offered;
            editors = lines.map(editorOf);
            element.replaceChildren(...editors.map((editor) => editor.element));
            update();
        },

        add(line = {}) {
            const editor = editorOf(line);
            editors.push(editor);
            element.append(editor.element);
            update();
            return editor;
        },

        /** Shows `line` in place of what `editor` shows. */
        replace(editor, line) {
            const made = editorOf({ ...line, stored: editor.stored });
            editors[editors.indexOf(editor)] = made;
            editor.element.replaceWith(made.element);
            update();
            made.focus();
        },

        /** All lines, or undefined after showing what is wrong with them. */
        read() {
            const lines = editors.map((one) => one.read(takenBy(others(one))(one.activityId)));
            if (lines.every(Boolean)) return lines;
            editors[lines.indexOf(undefined)].focus();
            return undefined;
        },

        /**
         * After a refusal: shows at each line that asks for more than `fresh` offers how many are
         * left. Gives whether there was one.
         */
        placeRefusal(fresh) {
            offer = fresh;
            let first;
            for (const editor of editors.filter((one) => !one.isAsStored())) {
                const activity = fresh.get(editor.activityId);
                const taken = takenBy(others(editor))(editor.activityId);
                const reason = activity
                    ? whyTooMany(editor.wanted, leftOf(activity, taken), format)
                    : "This activity no longer exists.";
                if (!reason) continue;
                editor.fail(reason);
                first ??= editor;
            }
            first?.focus();
            return Boolean(first);
        },

        indexOf: (editor) => editors.indexOf(editor),
        expected: () => linesTotal(editors.map((one) => one.typed()), format),
        get state() {
            return JSON.stringify(editors.map((one) => [one.id, one.state]));
        },
        get isEmpty() {
            return editors.length === 0;
        },
    };
}

function button(label, run) {
    const made = document.createElement("button");
    made.type = "button";
    made.className = "quiet";
    made.textContent = label;
    made.addEventListener("click", run);
    return made;
}
