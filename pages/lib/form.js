// A form made of described fields: values in, what the user changed out, faults at their fields.

import { createField } from "./field.js";

/**
 * Fills `element` with `groups`, each { title, fields }; `choices[name]` are those of a choice
 * field. Faults without a field of their own stand at the top.
 */
export function createForm(element, groups, { format, choices = {} }) {
    element.noValidate = true;
    const summary = document.createElement("div");
    summary.className = "summary";
    summary.setAttribute("role", "alert");
    const fields = new Map();
    const sections = groups.map(({ title, fields: described }, index) => {
        const section = document.createElement("section");
        section.className = "group";
        if (title) {
            const heading = document.createElement("h2");
            heading.id = `group-${index}`;
            heading.textContent = title;
            section.setAttribute("aria-labelledby", heading.id);
            section.append(heading);
        }
        const grid = document.createElement("div");
        grid.className = "fields";
        for (const description of described) {
            const field = createField(description, format, choices[description.name] ?? []);
            fields.set(description.name, field);
            grid.append(field.element);
        }
        section.append(grid);
        return section;
    });
    element.prepend(summary, ...sections);

    const all = [...fields.values()];
    const changed = () => all.filter((field) => field.isChanged);

    /** After faults were shown: how many, and the first one's field. */
    function pointOut(count) {
        const first = all.find((field) => field.element.classList.contains("wrong"));
        first?.focus();
        if (count > 1) summary.textContent = `${count} fields need your attention.`;
    }

    return {
        fields,
        names: [...fields.keys()],
        isChanged: () => changed().length > 0,

        /** Shows a record's values; `get(name)` gives what is stored. */
        show(values) {
            for (const field of all) field.show(values[field.name]);
            this.clear();
        },

        /** Shows `values` as if the user had entered them. */
        fill(values) {
            for (const [name, value] of Object.entries(values)) fields.get(name)?.fill(value);
        },

        clear() {
            summary.textContent = "";
            for (const field of all) field.clear();
        },

        /**
         * What the user changed, by name; undefined after showing the faults of what is surely
         * wrong.
         */
        changes() {
            return this.values(changed());
        },

        /** The same of all fields, or of those named in `some`. */
        values(some = all) {
            const readings = some.map((field) => [field, field.read()]);
            const wrong = readings.filter(([, { problem }]) => problem);
            for (const [field, { problem, part }] of wrong) field.fail(problem, part);
            if (wrong.length > 0) {
                pointOut(wrong.length);
                return undefined;
            }
            return Object.fromEntries(readings.map(([{ name }, { value }]) => [name, value]));
        },

        /** Shows the host's errors of the fields that it could not convert. */
        refuse(failed) {
            const names = Object.keys(failed).filter((name) => fields.has(name));
            for (const name of names) fields.get(name).refuse(failed[name]);
            pointOut(names.length);
        },

        /** Shows a message at the field called `name`, or at the top of the form. */
        fail(message, name) {
            const field = fields.get(name);
            if (!field) {
                summary.textContent = message;
                summary.scrollIntoView({ block: "center" });
                return;
            }
            field.fail(message);
            pointOut(1);
        },
    };
}
