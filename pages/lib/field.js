// One field of a form: label, controls, hint and what is wrong with it.

import { kinds } from "./field_kinds.js";

let fields = 0;

/**
 * The field that `description` tells of: { name, label, kind, hint, required, ... }. `choices` are
 * those of a choice.
 */
export function createField(description, format, choices) {
    fields += 1;
    const id = `field-${fields}`;
    const kind = kinds[description.kind](description, format, choices);
    const controls = kind.parts.map(({ control }) => control);
    const element = layOut(description, kind.parts, id);
    const fault = element.querySelector(".fault-text");
    let loaded;
    let shownAs = "";
    const typed = () => controls.map(({ value }) => value).join("\n");

    function clear() {
        fault.textContent = "";
        element.classList.remove("wrong");
        for (const control of controls) control.removeAttribute("aria-invalid");
    }
    element.addEventListener("input", clear);

    return {
        name: description.name,
        label: description.label,
        element,
        clear,
        text: kind.text,

        /** Shows what is stored: what follows counts as the user's change. */
        show(value) {
            loaded = value;
            kind.display(value);
            shownAs = typed();
            clear();
        },

        /** Takes `stored` for what is stored and leaves what the controls show. */
        rebase(stored) {
            const kept = controls.map(({ value }) => value);
            kind.display(stored);
            loaded = stored;
            shownAs = typed();
            controls.forEach((control, index) => {
                control.value = kept[index];
            });
        },

        /** Shows `value` as if the user had entered it. */
        fill(value) {
            kind.display(value);
            clear();
        },

        get isChanged() {
            return typed() !== shownAs;
        },

        /** { value } or { problem, part }. An untouched field gives exactly what was loaded. */
        read: () =>
            typed() === shownAs && loaded !== undefined ? { value: loaded } : kind.parse(),

        /** Shows the host's refusal to convert what was typed. */
        refuse(error) {
            const { problem, part } = kind.wrong(typed(), error);
            this.fail(problem, part);
        },

        fail(problem, part = 0) {
            fault.textContent = problem;
            element.classList.add("wrong");
            controls[part].setAttribute("aria-invalid", "true");
        },

        focus: () => (controls.find((one) => one.ariaInvalid === "true") ?? controls[0]).focus(),
    };
}

function layOut({ label, kind, hint, required, wide }, parts, id) {
    const compound = parts.length > 1;
    const element = document.createElement(compound ? "fieldset" : "div");
    element.className = wide ? `field ${kind} wide` : `field ${kind}`;

    const name = document.createElement(compound ? "legend" : "label");
    name.textContent = label;
    if (required) name.append(" ", words("span", "required", "(required)"));
    element.append(name);

    const row = document.createElement("div");
    row.className = "controls";
    for (const [index, { control, label: partLabel, extra }] of parts.entries()) {
        control.id = index > 0 ? `${id}-${index}` : id;
        control.setAttribute("aria-describedby", `${hint ? `${id}-hint ` : ""}${id}-fault`);
        if (compound) {
            const part = words("label", "part", partLabel);
            part.htmlFor = control.id;
            row.append(part);
        }
        const holder = document.createElement("span");
        holder.className = "control";
        holder.append(control, ...(extra ? [extra] : []));
        row.append(holder);
    }
    if (!compound) name.htmlFor = id;
    element.append(row);
    if (hint) element.append(words("p", "hint", hint, `${id}-hint`));
    element.append(words("p", "fault-text", "", `${id}-fault`));
    return element;
}

function words(tag, className, text, id) {
    const element = document.createElement(tag);
    element.className = className;
    element.textContent = text;
    if (id) element.id = id;
    return element;
}
