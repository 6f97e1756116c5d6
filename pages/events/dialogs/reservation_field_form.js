// The form of a reservation field. What its default is entered with depends on its type.

import { createField } from "../../lib/field.js";
import { createForm } from "../../lib/form.js";
import { longestName } from "../event_fields.js";
import { fieldType, fieldTypes } from "../reservation_fields.js";

const groups = [
    {
        fields: [
            {
                name: "Name",
                label: "Field name",
                kind: "text",
                most: longestName,
                required: true,
                wide: true,
                hint: "Stands beside what is entered, as “Meal” or “Seat”.",
            },
            { name: "FieldType", label: "Kind", kind: "choice", none: "Text box" },
            {
                name: "Description",
                label: "Help text",
                kind: "multiline",
                rows: 2,
                wide: true,
                hint: "Tells whoever takes the reservation what to enter.",
            },
        ],
    },
];

/**
 * Fills `element` with the form of `field` ({ name, type, description, defaultValue, choices });
 * `taken` are the names of other fields. Gives { values(), isChanged(), focus() }: `values` gives
 * what was entered, or undefined after showing what is wrong with it.
 */
export function reservationFieldForm(element, field, { format, taken = [] }) {
    const form = createForm(element, groups, { format, choices: { FieldType: fieldTypes } });
    form.show({ Name: field.name, FieldType: field.type, Description: field.description });
    const typeControl = form.fields.get("FieldType").element.querySelector("select");
    // Every type has a number here, so that none is left out.
    typeControl.querySelector('option[value="0"]')?.remove();
    typeControl.value = String(field.type);
    let standard = defaultField(field.type);
    standard.show(field.defaultValue);
    element.querySelector(".fields").append(standard.element);
    typeControl.addEventListener("change", () => {
        const { value } = standard.read();
        const next = defaultField(Number(typeControl.value));
        next.fill(value ?? "");
        standard.element.replaceWith(next.element);
        standard = next;
    });

    function defaultField(type) {
        const { kind, hasChoices } = fieldType(type);
        const isBare = hasChoices && field.choices.length === 0;
        const description = {
            name: "DefaultValue",
            label: type === 6 ? "Ticked at first" : "Default",
            kind,
            none: "No default",
            hint: isBare ? "The choices are entered next." : "Filled in for a new reservation.",
        };
        return createField(description, format, field.choices);
    }

    return {
        focus: () => form.fields.get("Name").focus(),
        isChanged: () => form.isChanged() || standard.isChanged,

        values() {
            form.clear();
            const entered = form.values();
            if (!entered) return undefined;
            const name = entered.Name.trim();
            const same = (other) => other.trim().toLowerCase() === name.toLowerCase();
            if (!name) return refuse("A field needs a name.");
            if (taken.some(same)) return refuse(`There is a field called “${name}” already.`);
            const { value, problem } = standard.read();
            if (problem) {
                standard.fail(problem);
                standard.focus();
                return undefined;
            }
            return {
                Name: name,
                FieldType: entered.FieldType,
                Description: entered.Description,
                DefaultValue: value,
            };
        },
    };

    function refuse(problem) {
        form.fail(problem, "Name");
        return undefined;
    }
}
