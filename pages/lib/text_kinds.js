// The kinds of fields whose value is a text whatever is entered: what somebody answered to a
// question of their own making. See field_kinds.js for what a kind gives.

import { calendar, checkBox, input } from "./controls.js";
import { DateTime } from "./values.js";

export const textKinds = { oneOf, textOrOneOf, isoDate, flag, pick, password };

/** One of `choices`, { name, visible }; a hidden one is offered only where it is chosen. */
function oneOf({ none = "" }, format, choices) {
    const control = document.createElement("select");
    const labelOf = (name) => {
        const choice = choices.find((one) => one.name === name);
        if (!choice) return `${name} (no longer a choice)`;
        return choice.visible ? name : `${name} (hidden)`;
    };
    return {
        ...asTyped(control),
        display(value) {
            const offered = choices.filter(({ visible }) => visible).map(({ name }) => name);
            if (value && !offered.includes(value)) offered.push(value);
            control.replaceChildren(
                new Option(none, ""),
                ...offered.map((name) => new Option(labelOf(name), name)),
            );
            control.value = value ?? "";
        },
    };
}

let lists = 0;

/** A text for which the visible `choices` are suggested. */
function textOrOneOf(field, format, choices) {
    lists += 1;
    const control = input("text");
    const suggestions = document.createElement("datalist");
    suggestions.id = `suggestions-${lists}`;
    suggestions.append(
        ...choices.filter(({ visible }) => visible).map(({ name }) => new Option(name, name)),
    );
    control.setAttribute("list", suggestions.id);
    return { ...asTyped(control), parts: [{ control, extra: suggestions }] };
}

/** A day, kept as "2026-03-07". What is kept but is no day is shown as it is. */
function isoDate(field, format) {
    const control = input("text", "text", "short");
    control.placeholder = format.dateHint;
    const shown = (text) =>
        /^\d{4}-\d\d-\d\d$/.test(text ?? "") ? format.date(DateTime.of(text)) : (text ?? "");
    return {
        ...asTyped(control),
        parts: [{ control, extra: calendar(control, format) }],
        display: (value) => {
            control.value = shown(value);
        },
        parse() {
            const typed = control.value.trim();
            const day = typed ? format.parseDate(typed) : "";
            return day === undefined ? { problem: `“${typed}” is not a date.` } : { value: day };
        },
        text: shown,
    };
}

/**
 * One of `choices`, { id, name }, whose ids may be numbers or texts; `none` is offered besides. The
 * value is the id, blank for none. One that is no longer offered stays until another is chosen.
 */
function pick({ none = "" }, format, choices) {
    const control = document.createElement("select");
    const isNone = (value) => value === undefined || value === null || value === "" || value === 0;
    const choiceOf = (value) => choices.find(({ id }) => String(id) === String(value));
    const nameOf = (value) => choiceOf(value)?.name ?? "(no longer exists)";
    return {
        ...asTyped(control),
        parts: [{ control }],
        display(value) {
            const offered = isNone(value) || choiceOf(value) ? [] : [new Option(nameOf(value), value)];
            const none0 = choiceOf(0) ? [] : [new Option(none, "")];
            control.replaceChildren(
                ...none0,
                ...choices.map(({ id, name }) => new Option(name, id)),
                ...offered,
            );
            control.value = isNone(value) && !choiceOf(value) ? "" : String(value);
        },
        parse: () => ({ value: choiceOf(control.value)?.id ?? control.value }),
        text: (value) => (isNone(value) && !choiceOf(value) ? none : nameOf(value)),
    };
}

/** A text that nobody reads over a shoulder; it has at least `least` characters. */
function password({ required, least = 0 }) {
    const control = input("password");
    control.autocomplete = "new-password";
    control.required = Boolean(required);
    return {
        ...asTyped(control),
        parse() {
            const { value } = control;
            if (value.length >= least) return { value };
            return { problem: `At least ${least} characters are needed.` };
        },
        text: () => "",
    };
}

/** Yes or no, kept as "1" and "0". */
function flag() {
    const control = checkBox();
    return {
        ...asTyped(control),
        display: (value) => {
            control.checked = value === "1";
        },
        parse: () => ({ value: control.checked ? "1" : "0" }),
        text: (value) => (value === "1" ? "Yes" : "No"),
    };
}

function asTyped(control) {
    return {
        parts: [{ control }],
        display: (value) => {
            control.value = value ?? "";
        },
        parse: () => ({ value: control.value }),
        text: (value) => value ?? "",
        wrong: (typed, error) => ({ problem: error.description }),
    };
}
