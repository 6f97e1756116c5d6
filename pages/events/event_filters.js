// What the list of events is narrowed down by: a choice for each field, and a chip for each that
// is in force.

import { createField } from "../lib/field.js";
import { eventGroups } from "./event_fields.js";
import { filterFields } from "./event_search.js";

const labels = new Map(
    eventGroups.flatMap(({ fields }) => fields.map(({ name, label }) => [name, label])),
);
// A choice of 0 is shown as none, which is no filter here; events without a choice hold 0.
const any = 0;
const without = -1;

/**
 * Sets up the filters of `parts` ({ panel, toggle, chips }) with the choices of `lookups`;
 * `onChange(filters)` hears of every change. Gives a function that shows the filters in force.
 */
export function eventFilters({ panel, toggle, chips }, { lookups, format, onChange }) {
    let filters = {};
    const fields = Object.values(filterFields).map((name) => {
        const label = labels.get(name);
        const none = { id: without, name: `Without ${label.toLowerCase()}`, visible: true };
        const description = { name, label, kind: "choice", none: `Any ${label.toLowerCase()}` };
        const field = createField(description, format, [none, ...lookups[name]]);
        field.element.addEventListener("change", () => change(name, filterOf(field.read().value)));
        return field;
    });
    panel.replaceChildren(...fields.map(({ element }) => element));

    toggle.addEventListener("click", () => {
        panel.hidden = !panel.hidden;
        toggle.setAttribute("aria-expanded", String(!panel.hidden));
        if (!panel.hidden) fields[0].focus();
    });

    function change(name, value) {
        const { [name]: former, ...others } = filters;
        filters = value === undefined ? others : { ...others, [name]: value };
        show(filters);
        onChange(filters);
    }

    function show(now) {
        filters = now;
        for (const field of fields) field.show(choiceOf(filters[field.name]));
        const active = fields.filter(({ name }) => filters[name] !== undefined);
        chips.replaceChildren(...active.map(chip));
        if (active.length > 1) chips.append(clearAll());
        chips.hidden = active.length === 0;
        toggle.textContent = active.length > 0 ? `Filters (${active.length})` : "Filters";
    }

    function chip(field) {
        const name = `${field.label}: ${field.text(choiceOf(filters[field.name]))}`;
        return chipButton(name, `Remove the filter ${name}`, "chip", () =>
            change(field.name, undefined),
        );
    }

    function clearAll() {
        return chipButton("Clear all", "Remove all filters", "quiet", () => {
            show({});
            onChange({});
        });
    }

    function chipButton(text, label, className, run) {
        const button = document.createElement("button");
        button.type = "button";
        button.className = className;
        button.textContent = text;
        button.setAttribute("aria-label", label);
        button.addEventListener("click", () => {
            run();
            (chips.querySelector("button") ?? toggle).focus();
        });
        const item = document.createElement("li");
        item.append(button);
        return item;
    }

    return show;
}

function filterOf(choice) {
    if (choice === any) return undefined;
    return choice === without ? 0 : choice;
}

function choiceOf(filter) {
    if (filter === undefined) return any;
    return filter === 0 ? without : filter;
}
