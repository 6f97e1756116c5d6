// A small form in a native modal dialog.

import { build } from "./build.js";
import { createForm } from "./form.js";
import { reportFailure } from "./notice.js";

/**
 * Asks for `fields` (see lib/field.js), which show `values` at first, under a button called
 * `action`. `save(values)` gives what is wrong, as a text or as { problem, name } of a field, and
 * then the form stays; an empty text closes it. Resolves to what was saved, or to nothing when the
 * user cancels.
 */
export function formBox({ title, hint, fields, values = {}, choices, action, format, save }) {
    const heading = build("h2", { id: "form-box-title", text: title });
    const element = build("form", { className: "record" });
    const saveButton = build("button", { type: "submit", className: "primary", text: action });
    const cancelButton = build("button", { type: "button", text: "Cancel" });
    element.append(build("div", { className: "actions" }, saveButton, cancelButton));
    const form = createForm(element, [{ fields }], { format, choices });
    form.show(values);
    const box = build("dialog", { className: "box form-box", "aria-labelledby": heading.id },
        heading, hint && build("p", { className: "hint", text: hint }), element);

    const asker = document.activeElement;
    let saved;
    let isSaving = false;
    cancelButton.addEventListener("click", () => box.close());
    element.addEventListener("submit", (event) => {
        event.preventDefault();
        submit().catch(reportFailure);
    });
    async function submit() {
        const entered = isSaving ? undefined : form.values();
        if (!entered) return;
        isSaving = true;
        try {
            form.clear();
            const wrong = await save(entered);
            if (wrong) return form.fail(wrong.problem ?? wrong, wrong.name);
            saved = entered;
            box.close();
        } finally {
            isSaving = false;
        }
    }
    document.body.append(box);
    box.showModal();
    return new Promise((resolve) => {
        box.addEventListener("close", () => {
            box.remove();
            asker?.focus?.();
            resolve(saved);
        });
    });
}
